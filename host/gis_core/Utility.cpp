// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/Utility.h"

#include <fmt/args.h>
#include <fmt/format.h>
#include <fmt/printf.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <exception>
#include <limits>

namespace OLMGis::Utility {

namespace {

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

char Upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Whether a literal that from_chars calls out of range is too large (true) or too small (false).
bool IsTooLarge(std::string_view literal) {
    const std::size_t mark = literal.find_first_of("eE");
    const std::string_view mantissa = literal.substr(0, mark);
    long exponent = 0;
    if (mark != std::string_view::npos) {
        std::string_view digits = literal.substr(mark + 1);
        const bool negative = !digits.empty() && digits.front() == '-';
        if (!digits.empty() && (digits.front() == '-' || digits.front() == '+'))
            digits.remove_prefix(1);
        if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec != std::errc())
            exponent = std::numeric_limits<int>::max();
        exponent = negative ? -exponent : exponent;
    }
    const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<long>(std::min(mantissa.find_first_of("123456789"), mantissa.size()));
    return exponent + point - first > 0;
}

/// Reads a decimal literal at the start of text; returns its length, 0 when there is none.
std::size_t ReadPrefix(std::string_view text, double& value) {
    std::size_t sign = !text.empty() && (text.front() == '+' || text.front() == '-') ? 1 : 0;
    std::string_view body = text.substr(sign);
    const bool starts = !body.empty() && (IsDigit(body[0]) || (body[0] == '.' && body.size() > 1 && IsDigit(body[1])));
    if (!starts)
        return 0;
    const auto [end, code] = std::from_chars(body.data(), body.data() + body.size(), value);
    const auto length = static_cast<std::size_t>(end - body.data());
    if (code == std::errc::result_out_of_range)
        value = IsTooLarge(body.substr(0, length)) ? std::numeric_limits<double>::infinity() : 0.0;
    if (sign == 1 && text.front() == '-')
        value = -value;
    return sign + length;
}

/// 64-bit FNV-1a; the seed makes the two halves of a GUID differ.
std::uint64_t Fnv(std::uint64_t hash, std::string_view text) {
    for (const char c : text) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ULL;
    }
    return hash;
}

std::string_view WithoutBraces(std::string_view guid) {
    if (guid.size() >= 2 && guid.front() == '{' && guid.back() == '}')
        return guid.substr(1, guid.size() - 2);
    return guid;
}

/// Length of the well-formed UTF-8 sequence at the start of text, 0 for a malformed one.
std::size_t SequenceLength(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const auto continues = [&](std::size_t count) {
        if (text.size() <= count)
            return false;
        for (std::size_t i = 1; i <= count; ++i)
            if ((byte(i) & 0xC0U) != 0x80U)
                return false;
        return true;
    };
    const unsigned lead = byte(0);
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return continues(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        if (!continues(2) || (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xED && byte(1) > 0x9F))
            return 0;
        return 3;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        if (!continues(3) || (lead == 0xF0 && byte(1) < 0x90) || (lead == 0xF4 && byte(1) > 0x8F))
            return 0;
        return 4;
    }
    return 0;
}

} // namespace

double CUtility::ToDouble(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    double value = 0.0;
    return ReadPrefix(text, value) > 0 ? value : 0.0;
}

bool CUtility::ParseDouble(std::string_view text, double& value) {
    const std::string_view trimmed = Trim(text);
    double found = 0.0;
    const std::size_t length = ReadPrefix(trimmed, found);
    if (length == 0 || length != trimmed.size() || !std::isfinite(found))
        return false;
    value = found;
    return true;
}

std::optional<int> CUtility::ParseInt(std::string_view text) {
    std::string_view trimmed = Trim(text);
    if (trimmed.size() > 1 && trimmed.front() == '+' && IsDigit(trimmed[1]))
        trimmed.remove_prefix(1);
    int value = 0;
    const auto [end, code] = std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), value);
    if (code != std::errc() || end != trimmed.data() + trimmed.size())
        return std::nullopt;
    return value;
}

int CUtility::CutToInt(double value) {
    if (std::isnan(value))
        return 0;
    if (value >= static_cast<double>(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    if (value <= static_cast<double>(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

std::string CUtility::ToText(double value) {
    if (std::isnan(value))
        return "nan";
    return fmt::format("{}", value);
}

std::string CUtility::ToText(int value) {
    return fmt::format_int(value).str();
}

int CUtility::SplitString(std::string_view text, std::vector<std::string>& parts, char separator) {
    int count = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) {
            parts.emplace_back(text.substr(0, end));
            ++count;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return count;
}

std::string_view CUtility::Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool CUtility::EqualIgnoreCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return Lower(x) == Lower(y); });
}

std::string CUtility::ToUpper(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), Upper);
    return result;
}

std::string CUtility::ToLower(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), Lower);
    return result;
}

std::size_t CUtility::CountCharacters(std::string_view text) {
    std::size_t count = 0;
    while (!text.empty()) {
        text.remove_prefix(std::max<std::size_t>(SequenceLength(text), 1));
        ++count;
    }
    return count;
}

bool CUtility::IsUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = SequenceLength(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string CUtility::MakeGuid(std::string_view layer, std::string_view name, std::size_t place) {
    const std::string number = fmt::format_int(place).str();
    const auto half = [&](std::uint64_t seed) {
        std::uint64_t hash = Fnv(seed, layer);
        hash = Fnv(hash, std::string_view("\0", 1));
        hash = Fnv(hash, name);
        hash = Fnv(hash, std::string_view("\0", 1));
        return Fnv(hash, number);
    };
    const std::uint64_t high = (half(14695981039346656037ULL) & ~0xF000ULL) | 0x5000ULL;
    const std::uint64_t low = (half(0x9E3779B97F4A7C15ULL) & ~(0xC0ULL << 56)) | (0x80ULL << 56);
    return fmt::format("{:08x}-{:04x}-{:04x}-{:04x}-{:012x}", high >> 32, (high >> 16) & 0xFFFF, high & 0xFFFF,
                       low >> 48, low & 0xFFFFFFFFFFFFULL);
}

std::string CUtility::FormatValues(std::string_view format, std::initializer_list<CTextValue> values) {
    try {
        fmt::dynamic_format_arg_store<fmt::printf_context> store;
        for (const CTextValue& value : values)
            std::visit([&store](const auto& held) { store.push_back(held); }, value);
        return fmt::vsprintf(fmt::string_view(format.data(), format.size()),
                             fmt::basic_format_args<fmt::printf_context>(store));
    } catch (const std::exception&) {
        return std::string(format);
    }
}

std::size_t GuidHash::operator()(std::string_view guid) const {
    // Eight characters at a time. One bit is all that small and capital letters differ in; that it makes a few other
    // characters alike as well does no harm to a hash.
    constexpr std::uint64_t smallLetters = 0x2020202020202020ULL;
    std::string_view rest = WithoutBraces(guid);
    std::uint64_t hash = rest.size();
    while (!rest.empty()) {
        std::uint64_t word = 0;
        const std::size_t count = std::min(rest.size(), sizeof word);
        std::memcpy(&word, rest.data(), count);
        rest.remove_prefix(count);
        hash = (hash ^ (word | smallLetters)) * 0x9FB21C651E98DF25ULL;
        hash ^= hash >> 32;
    }
    return hash;
}

bool GuidEqual::operator()(std::string_view a, std::string_view b) const {
    return a == b || CUtility::EqualIgnoreCase(WithoutBraces(a), WithoutBraces(b));
}

} // namespace OLMGis::Utility

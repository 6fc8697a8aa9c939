// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ShownText.h"

#include "host/gis_core/NearestText.h"
#include "host/gis_core/ShortName.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Utility::CUtility;

namespace {

struct CRange {
    char32_t m_first;
    char32_t m_last;
};

/// Combining marks and joiners, drawn on the character before them.
constexpr std::array<CRange, 5> WithoutWidth{
    {{0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}}};

/// Blocks whose characters fill two columns (East Asian wide and fullwidth, pictographs).
constexpr std::array<CRange, 10> Wide{{{0x1100, 0x115F},
                                       {0x2E80, 0x303E},
                                       {0x3041, 0xA4CF},
                                       {0xAC00, 0xD7A3},
                                       {0xF900, 0xFAFF},
                                       {0xFE30, 0xFE6F},
                                       {0xFF00, 0xFF60},
                                       {0xFFE0, 0xFFE6},
                                       {0x1F300, 0x1FAFF},
                                       {0x20000, 0x3FFFD}}};

/// Controls beyond ASCII: C1, line and paragraph separators, marks that turn the direction of writing.
constexpr std::array<CRange, 5> Controls{
    {{0x0080, 0x009F}, {0x061C, 0x061C}, {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}}};

template <std::size_t N>
bool IsIn(const std::array<CRange, N>& ranges, char32_t c) {
    return std::any_of(ranges.begin(), ranges.end(), [c](const CRange& r) { return c >= r.m_first && c <= r.m_last; });
}

struct CCharacter {
    std::size_t m_bytes = 1;
    std::size_t m_columns = 1;
    bool m_isControl = false;
};

/// The character at the beginning of a text that is not empty.
CCharacter NextCharacter(std::string_view text) {
    const auto byte = [text](std::size_t place) { return static_cast<unsigned char>(text[place]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return {1, 1, lead < 0x20 || lead == 0x7F};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC0 || length > text.size() || !CUtility::IsUtf8(text.substr(0, length)))
        return {1, 1, true};
    char32_t code = lead & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i)
        code = (code << 6U) | (byte(i) & 0x3FU);
    if (IsIn(Controls, code))
        return {length, 1, true};
    return {length, IsIn(WithoutWidth, code) ? 0U : IsIn(Wide, code) ? 2U : 1U, false};
}

} // namespace

std::size_t DisplayWidth(std::string_view text) {
    std::size_t width = 0;
    while (!text.empty()) {
        const CCharacter next = NextCharacter(text);
        width += next.m_columns;
        text.remove_prefix(next.m_bytes);
    }
    return width;
}

std::string OnOneLine(std::string_view text) {
    return CutToWidth(text, std::string_view::npos);
}

std::string WithoutControls(std::string_view text) {
    std::string shown;
    while (!text.empty()) {
        const CCharacter next = NextCharacter(text);
        const bool isShown = !next.m_isControl || text.front() == '\n' || text.front() == '\t';
        shown += isShown ? text.substr(0, next.m_bytes) : std::string_view("?");
        text.remove_prefix(next.m_bytes);
    }
    return shown;
}

std::string CutToWidth(std::string_view text, std::size_t width) {
    std::string cut;
    while (!text.empty()) {
        const CCharacter next = NextCharacter(text);
        if (next.m_columns > width)
            break;
        width -= next.m_columns;
        if (next.m_isControl)
            cut += '?';
        else
            cut += text.substr(0, next.m_bytes);
        text.remove_prefix(next.m_bytes);
    }
    return cut;
}

std::string ShowValue(const CDataBox& value, int decimals) {
    if (value.GetKind() != CDataBox::enmKind::Double)
        return OnOneLine(value.AsText());
    const double number = value.AsDouble();
    if (std::isnan(number))
        return "NaN";
    if (std::isinf(number))
        return number > 0 ? "Infinity" : "-Infinity";
    if (decimals < 0)
        return CUtility::ToText(number);
    constexpr double Huge = 1e15;
    const double magnitude = std::abs(number);
    const bool showsAsZero = magnitude > 0.0 && magnitude < 0.5 * std::pow(10.0, -decimals);
    return magnitude >= Huge || showsAsZero ? fmt::format("{:.4g}", number) : fmt::format("{:.{}f}", number, decimals);
}

std::string Count(std::size_t count, std::string_view thing) {
    return fmt::format("{} {}{}", count, thing, count == 1 ? "" : "s");
}

std::string FirstNames(const std::vector<std::string_view>& names, std::size_t most) {
    std::string text;
    for (std::size_t i = 0; i < names.size() && i < most; ++i)
        text += fmt::format("{}{}", i == 0 ? "" : ", ", OLMGis::Utility::ShortName(names[i]));
    return names.size() > most ? text + ", ..." : text;
}

std::string Suggest(std::string_view word, const std::vector<std::string>& candidates) {
    const std::string* nearest = OLMGis::Utility::FindNearest(word, candidates);
    return nearest == nullptr ? std::string() : fmt::format(", did you mean {}?", OnOneLine(*nearest));
}

} // namespace Reports

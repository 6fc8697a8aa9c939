// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/ParameterFile.h"

#include "apps/cli/InputFile.h"
#include "apps/cli/ShownText.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <optional>

namespace Cli {

using nlohmann::json; // sorted: an ordered object is searched from its beginning for every key it takes
using OLMGis::Utility::BadInput;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Refused;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

constexpr std::size_t LongestFile = std::size_t{1} << 20;

/// Parameters of the checks stand under this key.
constexpr std::string_view ChecksKey = "checks";

/// What a person would have typed; nothing for what no field takes.
std::optional<std::string> ToTyped(const json& value) {
    if (value.is_string())
        return value.get<std::string>();
    if (value.is_boolean())
        return std::string(value.get<bool>() ? "1" : "0");
    if (value.is_number_unsigned() || value.is_number_integer())
        return value.dump();
    if (value.is_number())
        return CUtility::ToText(value.get<double>());
    return std::nullopt;
}

/// What the parser says, without its own number of the error in front.
std::string_view ReasonOf(const json::exception& error) {
    const std::string_view text = error.what();
    const std::size_t head = text.find("] ");
    return head == std::string_view::npos ? text : text.substr(head + 2);
}

Result<std::vector<CFormWord>> ReadEntry(const json& entry, const std::string& origin, const std::string& folder) {
    if (!entry.is_object())
        return BadInput(fmt::format("{}: found {}, expected an object of tags and values", origin, entry.dump()));
    std::vector<CFormWord> words;
    for (const auto& [tag, value] : entry.items()) {
        const std::optional<std::string> text = ToTyped(value);
        if (!text)
            return BadInput(fmt::format("{}: {}: found {}, expected a number or a text", origin, tag, value.dump()));
        words.push_back({tag, *text, origin, folder});
    }
    return words;
}

/// Where a file's values come from, and where its relative paths begin.
struct COrigin {
    std::string m_path;
    std::string m_folder;
};

/// What keys of one kind name.
struct CKeyKind {
    const std::vector<std::string>& m_known;
    std::string m_noun;
    std::string m_expected;
    std::string m_place; ///< in the file, in front of the key
};

/// Takes the values of one key in.
template <class Words>
Status Enter(Words& words, const std::string& key, const json& entry, const CKeyKind& kind, const COrigin& origin) {
    if (std::find(kind.m_known.begin(), kind.m_known.end(), key) == kind.m_known.end())
        return BadInput(fmt::format("{}: {}found the {} \"{}\", expected {}{}", origin.m_path, kind.m_place,
                                    kind.m_noun, key, kind.m_expected, Suggest(key, kind.m_known)));
    auto read = ReadEntry(entry, fmt::format("{}: {}{}", origin.m_path, kind.m_place, key), origin.m_folder);
    if (!read)
        return read.GetError();
    words.insert_or_assign(key, std::move(read.Value()));
    return Done{};
}

Result<json> ParseJson(std::string_view text, const std::string& path) {
    constexpr int Deepest = 8;
    bool isTooDeep = false;
    const auto isShallow = [&isTooDeep](int depth, json::parse_event_t, json&) {
        isTooDeep = isTooDeep || depth > Deepest;
        return depth <= Deepest; // what lies deeper is dropped before it can grow
    };
    try {
        json file = json::parse(text, isShallow);
        if (isTooDeep || !file.is_object())
            return BadInput(fmt::format("{}: found {}, expected one object of calculators and their values", path,
                                        isTooDeep ? "deeply nested values" : "something else"));
        return file;
    } catch (const json::exception& error) {
        return BadInput(fmt::format("{}: not JSON: {}", path, ReasonOf(error)));
    }
}

} // namespace

Result<CParameterFile> CParameterFile::Read(const std::string& path, const std::vector<std::string>& calculators,
                                            const std::vector<std::string>& checks) {
    auto file = CInputFile::Open(path);
    if (!file)
        return file.GetError();
    std::string text(LongestFile + 1, '\0');
    std::istream& stream = file->GetStream();
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (stream.bad())
        return Refused(fmt::format("{}: cannot be read", path));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return Parse(text, file->GetName(), calculators, checks);
}

Result<CParameterFile> CParameterFile::Parse(std::string_view text, const std::string& path,
                                             const std::vector<std::string>& calculators,
                                             const std::vector<std::string>& checks) {
    if (text.size() > LongestFile)
        return BadInput(
            fmt::format("{}: found a file of more than {} bytes, expected a parameter file", path, LongestFile));
    const Result<json> file = ParseJson(text, path);
    if (!file)
        return file.GetError();
    const COrigin origin{path, std::filesystem::path(path).parent_path().string()};
    const CKeyKind calculatorKind{calculators, "calculator", "one that \"calculators\" lists", ""};
    const CKeyKind checkKind{checks, "check", fmt::format("one of {}", fmt::join(checks, ", ")), "checks: "};
    CParameterFile parameters;
    for (const auto& [key, entry] : file->items()) {
        if (key != ChecksKey) {
            if (const Status status = Enter(parameters.m_words, key, entry, calculatorKind, origin); !status)
                return status.GetError();
            continue;
        }
        if (!entry.is_object())
            return BadInput(fmt::format("{}: {}: found {}, expected an object of checks and their values", path, key,
                                        entry.dump()));
        for (const auto& [check, values] : entry.items())
            if (const Status status = Enter(parameters.m_checks, check, values, checkKind, origin); !status)
                return status.GetError();
    }
    return parameters;
}

} // namespace Cli

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ParameterFile.h"

#include "host/gis_core/Utility.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>

namespace Reports {

using nlohmann::json; // sorted: an ordered object is searched from its beginning for every key it takes
using OLMGis::Utility::BadInput;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Refused;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

constexpr std::size_t LongestFile = std::size_t{1} << 20;

/// The parameters of the checks are under this key.
constexpr std::string_view ChecksKey = "checks";

/// The text for a field of a form; nothing for a value that no field takes.
std::optional<std::string> ToText(const json& value) {
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

/// The parser's message without its own number of the error.
std::string_view ReasonOf(const json::exception& error) {
    const std::string_view text = error.what();
    const std::size_t head = text.find("] ");
    return head == std::string_view::npos ? text : text.substr(head + 2);
}

/// JSON has no comments: members whose names begin so are for the reader of the file.
bool IsRemark(std::string_view name) {
    return name.starts_with('_');
}

Result<std::vector<CFormValue>> ReadEntry(const json& entry, const std::string& origin, const std::string& folder) {
    if (!entry.is_object())
        return BadInput(fmt::format("{}: found {}, expected an object of tags and values", origin, entry.dump()));
    std::vector<CFormValue> values;
    for (const auto& [tag, value] : entry.items()) {
        if (IsRemark(tag))
            continue;
        const std::optional<std::string> text = ToText(value);
        if (!text)
            return BadInput(fmt::format("{}: {}: found {}, expected a number or a text", origin, tag, value.dump()));
        values.push_back({tag, *text, origin, folder});
    }
    return values;
}

/// Where a file's values come from, and where its relative paths begin.
struct COrigin {
    std::string m_path;
    std::string m_folder;
};

/// The keys of one kind, for messages.
struct CKeyKind {
    const std::vector<std::string>& m_known;
    std::string m_noun;
    std::string m_expected;
    std::string m_place; ///< in the file, in front of the key
};

/// Adds the values of one key.
template <class Values>
Status Enter(Values& values, const std::string& key, const json& entry, const CKeyKind& kind, const COrigin& origin) {
    if (std::find(kind.m_known.begin(), kind.m_known.end(), key) == kind.m_known.end())
        return BadInput(fmt::format("{}: {}found the {} \"{}\", expected {}{}", origin.m_path, kind.m_place,
                                    kind.m_noun, key, kind.m_expected, Suggest(key, kind.m_known)));
    auto read = ReadEntry(entry, fmt::format("{}: {}{}", origin.m_path, kind.m_place, key), origin.m_folder);
    if (!read)
        return read.GetError();
    values.insert_or_assign(key, std::move(read.Value()));
    return Done{};
}

/// Finds a member that occurs twice in one object: the parser keeps the last one in silence.
class CRepeatedMember {
public:
    /// An event of the parser at a depth, 0 outside the outermost object.
    void Note(std::size_t depth, json::parse_event_t event, const json& parsed) {
        if (m_names.size() < depth + 2) {
            m_names.resize(depth + 2);
            m_path.resize(depth + 2);
        }
        if (event == json::parse_event_t::object_start)
            m_names[depth + 1].clear();
        if (event != json::parse_event_t::key)
            return;
        m_path[depth] = parsed.get<std::string>();
        if (!IsRemark(m_path[depth]) && !m_names[depth].insert(m_path[depth]).second && m_first.empty())
            m_first =
                fmt::format("{}", fmt::join(m_path.begin() + 1, m_path.begin() + static_cast<int>(depth) + 1, ": "));
    }

    /// The path of the first one, "01_WASTE_PERCENT: PERIOD"; empty for none.
    const std::string& GetFirst() const { return m_first; }

private:
    std::vector<std::set<std::string>> m_names; ///< of the open object at a depth
    std::vector<std::string> m_path;            ///< the present member at a depth
    std::string m_first;
};

Result<json> ParseJson(std::string_view text, const std::string& path) {
    constexpr int Deepest = 8;
    bool isTooDeep = false;
    CRepeatedMember repeated;
    const auto isShallow = [&](int depth, json::parse_event_t event, json& parsed) {
        isTooDeep = isTooDeep || depth > Deepest;
        if (depth <= Deepest)
            repeated.Note(static_cast<std::size_t>(depth), event, parsed);
        return depth <= Deepest; // deeper values are dropped before they can grow
    };
    try {
        json file = json::parse(text, isShallow);
        if (isTooDeep || !file.is_object())
            return BadInput(fmt::format("{}: found {}, expected one object of calculators and their values", path,
                                        isTooDeep ? "deeply nested values" : "something else"));
        if (!repeated.GetFirst().empty())
            return BadInput(fmt::format("{}: found {} twice, expected it once", path, repeated.GetFirst()));
        return file;
    } catch (const json::exception& error) {
        return BadInput(fmt::format("{}: not JSON: {}", path, ReasonOf(error)));
    }
}

} // namespace

Result<CParameterFile> CParameterFile::Read(std::istream& stream, const std::string& path,
                                            const std::vector<std::string>& calculators,
                                            const std::vector<std::string>& checks) {
    std::string text(LongestFile + 1, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (stream.bad())
        return Refused(fmt::format("{}: cannot be read", path));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return Parse(text, path, calculators, checks);
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
        if (IsRemark(key))
            continue;
        if (key != ChecksKey) {
            if (const Status status = Enter(parameters.m_values, key, entry, calculatorKind, origin); !status)
                return status.GetError();
            continue;
        }
        if (!entry.is_object())
            return BadInput(fmt::format("{}: {}: found {}, expected an object of checks and their values", path, key,
                                        entry.dump()));
        for (const auto& [check, values] : entry.items())
            if (IsRemark(check))
                continue;
            else if (const Status status = Enter(parameters.m_checks, check, values, checkKind, origin); !status)
                return status.GetError();
    }
    return parameters;
}

} // namespace Reports

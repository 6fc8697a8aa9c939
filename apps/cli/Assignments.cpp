// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/Assignments.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Utility::BadWords;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Result;

Result<std::vector<CAssignment>> SplitAssignments(const std::vector<std::string>& words, std::string_view shape) {
    std::vector<CAssignment> assignments;
    for (const std::string& word : words) {
        const std::size_t equal = word.find('=');
        if (equal == std::string::npos || equal == 0 || !CUtility::IsUtf8(word))
            return BadWords(
                fmt::format("found \"{}\", expected {}{}", word, shape, CUtility::IsUtf8(word) ? "" : " in UTF-8"));
        assignments.push_back({word.substr(0, equal), word.substr(equal + 1)});
    }
    return assignments;
}

std::vector<std::string> SplitList(std::string_view text) {
    std::vector<std::string> parts;
    CUtility::SplitString(text, parts, ',');
    std::vector<std::string> trimmed;
    for (const std::string& part : parts)
        if (const std::string_view word = CUtility::Trim(part); !word.empty())
            trimmed.emplace_back(word);
    return trimmed;
}

} // namespace Cli

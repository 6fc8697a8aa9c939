// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Assignments.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Utility::BadArguments;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Result;

Result<std::vector<CAssignment>> SplitAssignments(const std::vector<std::string>& arguments, std::string_view shape) {
    std::vector<CAssignment> assignments;
    for (const std::string& argument : arguments) {
        const std::size_t equal = argument.find('=');
        if (equal == std::string::npos || equal == 0 || !CUtility::IsUtf8(argument))
            return BadArguments(fmt::format("found \"{}\", expected {}{}", argument, shape,
                                            CUtility::IsUtf8(argument) ? "" : " in UTF-8"));
        assignments.push_back({argument.substr(0, equal), argument.substr(equal + 1)});
    }
    return assignments;
}

} // namespace Cli

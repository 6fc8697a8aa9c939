// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/FormulaGuard.h"

#include "host/gis_core/Utility.h"

#include <algorithm>

namespace OLMGis::ProjectIo {

bool NeedsGuard(std::string_view field) {
    field.remove_prefix(std::min(field.find_first_not_of('\''), field.size()));
    constexpr std::string_view Beginnings = "=+-@\t\r\n";
    if (field.empty() || Beginnings.find(field.front()) == std::string_view::npos)
        return false;
    return field != "-Infinity" && !Utility::CUtility::ParseDouble(field);
}

std::string_view WithoutGuard(std::string_view field) {
    if (field.starts_with('\'') && NeedsGuard(field))
        field.remove_prefix(1);
    return field;
}

} // namespace OLMGis::ProjectIo

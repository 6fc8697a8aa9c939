// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/NominalDiameter.h"

#include "host/gis_core/Utility.h"
#include "host/network_core/Catalog.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace OLMGis::Topology {

double NominalDiameter(const CCatalogItem& pipe) {
    if (pipe.GetPipeData() == nullptr)
        return 0.0;
    const std::string_view name = pipe.GetName();
    if (const std::size_t found = name.rfind("DN"); found != std::string_view::npos) {
        std::string_view rest = name.substr(found + 2);
        for (const std::string_view kind : {"/OD", "/ID"})
            if (rest.starts_with(kind))
                rest.remove_prefix(kind.size());
        rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
        const auto number = Utility::CUtility::ParseDouble(rest.substr(0, rest.find_first_not_of("0123456789.")));
        if (number && *number > 0.0)
            return *number;
    }
    return pipe.GetPipeData()->m_innerWidth;
}

} // namespace OLMGis::Topology

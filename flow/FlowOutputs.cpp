// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/FlowOutputs.h"

#include "host/gis_core/DataConfiguration.h"

namespace Flow::Outputs {

using OLMGis::Data::CDataDefinition;
using OLMGis::Data::FindDefinition;

std::vector<const CDataDefinition*> Definitions(std::initializer_list<const char*> keys) {
    std::vector<const CDataDefinition*> definitions;
    for (const char* key : keys)
        definitions.push_back(FindDefinition(key));
    return definitions;
}

std::vector<std::pair<const CDataDefinition*, int>> DefinitionsWithKind(std::initializer_list<const char*> keys) {
    std::vector<std::pair<const CDataDefinition*, int>> definitions;
    for (const char* key : keys)
        definitions.emplace_back(FindDefinition(key), Kind);
    return definitions;
}

} // namespace Flow::Outputs

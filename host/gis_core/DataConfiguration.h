// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"

#include <absl/container/flat_hash_map.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Data {

/// All attribute definitions of the installation, from data/definitions. The same for every project.
class CDataConfiguration {
public:
    static CDataConfiguration* Instance();

    /// The definition of a key (plain characters, case counts), null for an unknown one. One hash look-up.
    const CDataDefinition* GetDataDefinitionByID(std::string_view id) const;

    /// All definitions in the order of the data file; the index is m_index. No nulls.
    const std::vector<std::unique_ptr<CDataDefinition>>& GetDataDefinitions() const { return m_definitions; }

    /// Why the definitions could not be read; empty when they could. Without them no attribute has a name.
    const std::string& GetLoadError() const { return m_loadError; }

    /// Reads definitions from JSON text; name is what errors call the source. Replaces nothing: a repeated id is an
    /// error.
    Utility::Status Load(std::string_view json, const std::string& name);

private:
    CDataConfiguration();

    std::vector<std::unique_ptr<CDataDefinition>> m_definitions;
    absl::flat_hash_map<std::string_view, const CDataDefinition*> m_byId;
    std::string m_loadError;
};

/// The definition of a key, null for an unknown one. One hash look-up: loops over entities fetch it once.
inline const CDataDefinition* FindDefinition(std::string_view id) {
    return CDataConfiguration::Instance()->GetDataDefinitionByID(id);
}

} // namespace OLMGis::Data

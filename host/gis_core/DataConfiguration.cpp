// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/DataConfiguration.h"

#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/ValueRangeJson.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace OLMGis::Data {

using Utility::BadInput;
using Utility::Done;
using Utility::Status;

NLOHMANN_JSON_SERIALIZE_ENUM(enmEntityKind, {{enmEntityKind::Node, "node"},
                                             {enmEntityKind::Section, "section"},
                                             {enmEntityKind::Catchment, "catchment"}})
NLOHMANN_JSON_SERIALIZE_ENUM(enmDataType,
                             {{enmDataType::Double, "double"}, {enmDataType::Int, "int"}, {enmDataType::Text, "text"}})

CDataConfiguration::CDataConfiguration() {
    const std::string path = Utility::InstallationPaths::DataFile("definitions/attributes.json");
    const auto text = Utility::InstallationPaths::ReadWholeFile(path);
    if (!text) {
        m_loadError = text.GetError().message;
        return;
    }
    if (const Status status = Load(text.Value(), path); !status)
        m_loadError = status.GetError().message;
}

CDataConfiguration* CDataConfiguration::Instance() {
    static CDataConfiguration instance;
    return &instance;
}

const CDataDefinition* CDataConfiguration::GetDataDefinitionByID(std::string_view id) const {
    const auto found = m_byId.find(id);
    return found == m_byId.end() ? nullptr : found->second;
}

Status CDataConfiguration::Load(std::string_view json, const std::string& name) {
    try {
        for (const auto& item : nlohmann::json::parse(json)) {
            auto definition = std::make_unique<CDataDefinition>();
            item.at("id").get_to(definition->m_id);
            item.at("entity").get_to(definition->m_entityKind);
            item.at("type").get_to(definition->m_type);
            item.at("unit").get_to(definition->m_unit);
            item.at("decimals").get_to(definition->m_decimals);
            item.at("label").get_to(definition->m_labelMessage);
            item.at("editable").get_to(definition->m_isEditable);
            item.get_to(definition->m_range);
            definition->m_index = static_cast<std::uint32_t>(m_definitions.size());
            if (!m_byId.emplace(definition->m_id, definition.get()).second)
                return BadInput(fmt::format("{}: the attribute {} is defined twice", name, definition->m_id));
            m_definitions.push_back(std::move(definition));
        }
    } catch (const nlohmann::json::exception& error) {
        return BadInput(fmt::format("{}: not a list of attribute definitions: {}", name, error.what()));
    }
    return Done{};
}

} // namespace OLMGis::Data

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FormDefinitions.h"

#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/ValueRangeJson.h"
#include "host/network_core/PropertiesEx.h"

#include <fmt/format.h>

namespace OLMGis::Topology {

using Utility::BadInput;
using Utility::Done;
using Utility::Status;

CFormDefinitions::CFormDefinitions() {
    const std::string path = Utility::InstallationPaths::DataFile("definitions/forms.json");
    const auto text = Utility::InstallationPaths::ReadWholeFile(path);
    if (!text)
        m_loadError = text.GetError().message;
    else if (const Status status = Load(text.Value(), path); !status)
        m_loadError = status.GetError().message;
}

const CFormDefinitions& CFormDefinitions::Instance() {
    static const CFormDefinitions instance;
    return instance;
}

const CFieldDefinition* CFormDefinitions::Find(std::string_view form, std::string_view tag) const {
    const auto fields = m_forms.find(form);
    if (fields == m_forms.end())
        return nullptr;
    const auto field = fields->second.find(tag);
    return field == fields->second.end() ? nullptr : &field->second;
}

void CFormDefinitions::Apply(std::string_view form, CPropertiesEx& properties) const {
    for (const auto& property : properties.GetAllProperties())
        property->SetDefinition(Find(form, property->GetTag()));
}

Status CFormDefinitions::Load(std::string_view json, const std::string& name) {
    try {
        const auto forms = nlohmann::json::parse(json);
        for (const auto& [form, fields] : forms.items())
            for (const auto& [tag, item] : fields.items()) {
                CFieldDefinition field;
                item.at("alias").get_to(field.m_alias);
                item.at("unit").get_to(field.m_unit);
                item.get_to(field.m_range);
                m_forms[form].emplace(tag, std::move(field));
            }
    } catch (const nlohmann::json::exception& error) {
        return BadInput(fmt::format("{}: not definitions of fields by form and tag: {}", name, error.what()));
    }
    return Done{};
}

} // namespace OLMGis::Topology

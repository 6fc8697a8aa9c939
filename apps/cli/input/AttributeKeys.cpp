// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/AttributeKeys.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/project_io/base/AttributeText.h"
#include "reports/EntityChoice.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataConfiguration;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::enmEntityKind;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Result;
using Reports::GetKindName;
using Reports::OnOneLine;
using Reports::Suggest;

Result<const CDataDefinition*> FindKey(enmEntityKind kind, std::string_view key) {
    const CDataConfiguration& configuration = *CDataConfiguration::Instance();
    if (!configuration.GetLoadError().empty())
        return OLMGis::Utility::Refused(configuration.GetLoadError());
    const CDataDefinition* const definition = configuration.GetDataDefinitionByID(key);
    if (definition != nullptr && definition->m_entityKind == kind)
        return definition;
    if (definition != nullptr)
        return BadArguments(fmt::format("found the key {} of {}s, expected one of {}s (or --on {}s)", key,
                                        GetKindName(definition->m_entityKind), GetKindName(kind),
                                        GetKindName(definition->m_entityKind)));
    std::vector<std::string> keys;
    for (const auto& known : configuration.GetDataDefinitions())
        if (known->m_entityKind == kind)
            keys.push_back(known->m_id);
    const std::string suggested = Suggest(key, keys);
    return BadArguments(fmt::format("found the key \"{}\", expected a key of {}s{}{}ist them: drenova keys --on {}s",
                                    OnOneLine(key), GetKindName(kind), suggested, suggested.empty() ? "; l" : " L",
                                    GetKindName(kind)));
}

Result<const CDataDefinition*> FindFlowKey(std::string_view key) {
    auto found = FindKey(enmEntityKind::Section, key);
    if (found && found.Value()->m_unit != "m³/s")
        return BadArguments(
            fmt::format("--flow: found {} in {}, expected a flow in m³/s", key,
                        found.Value()->m_unit.empty() ? std::string("no unit") : found.Value()->m_unit));
    return found;
}

Result<CDefinitionList> FindKeys(enmEntityKind kind, const std::vector<std::string>& keys) {
    CDefinitionList definitions;
    for (const std::string& key : keys) {
        const auto definition = FindKey(kind, key);
        if (!definition)
            return definition.GetError();
        if (std::find(definitions.begin(), definitions.end(), definition.Value()) == definitions.end())
            definitions.push_back(definition.Value());
    }
    return definitions;
}

Result<CDataBox> ReadValue(const CDataDefinition& definition, std::string_view text) {
    if (!definition.m_isEditable)
        return BadArguments(fmt::format("{}: only calculations store it", definition.m_id));
    auto value = OLMGis::ProjectIo::AttributeOfText(definition, text);
    if (!value)
        return BadArguments(value.GetError().message);
    return std::move(value.Value());
}

} // namespace Cli

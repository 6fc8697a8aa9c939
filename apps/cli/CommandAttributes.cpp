// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandAttributes.h"

#include "apps/cli/Assignments.h"
#include "apps/cli/AttributeKeys.h"
#include "apps/cli/AttributeListing.h"
#include "apps/cli/EntityChoice.h"
#include "apps/cli/InputFile.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "host/gis_core/DataRW.h"
#include "host/project_io/tables/CatalogReferences.h"
#include "host/project_io/tables/CsvLoad.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::enmEntityKind;
using OLMGis::Topology::CEntity;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

struct CNewValue {
    const CDataDefinition* m_definition = nullptr;
    CDataBox m_value;
};

Result<std::vector<CNewValue>> ReadNewValues(enmEntityKind kind, const std::vector<std::string>& words) {
    const auto assignments = SplitAssignments(words, "KEY=VALUE");
    if (!assignments)
        return assignments.GetError();
    std::vector<CNewValue> values;
    for (const CAssignment& assignment : assignments.Value()) {
        const auto definition = FindKey(kind, assignment.m_key);
        if (!definition)
            return definition.GetError();
        auto value = ReadValue(*definition.Value(), assignment.m_value);
        if (!value)
            return value.GetError();
        values.push_back({definition.Value(), std::move(value.Value())});
    }
    return values;
}

/// A name of the catalogues becomes the GUID that is kept. References may be set before their catalogue is there; but
/// nothing finds them as long as it isn't.
Status ResolveReferences(std::vector<CNewValue>& values, CTerminal& terminal) {
    for (CNewValue& value : values) {
        const CDataDefinition& key = *value.m_definition;
        if (!OLMGis::ProjectIo::IsCatalogReference(key))
            continue;
        auto resolved = OLMGis::ProjectIo::ResolveCatalogReference(key, std::move(value.m_value));
        if (!resolved)
            return BadWords(resolved.GetError().message);
        value.m_value = std::move(resolved.Value());
        if (!OLMGis::ProjectIo::IsKnownCatalogReference(key, value.m_value))
            terminal.Warn(fmt::format("{}: no {} of the catalogue has the GUID or name \"{}\"", key.m_id,
                                      key.m_id == "PIPE_REF" ? "pipe" : "manhole", OnOneLine(value.m_value.AsText())));
    }
    return Done{};
}

/// All of a kind without words.
Result<CEntityList> ChooseOrAll(enmEntityKind kind, const std::vector<std::string>& names) {
    return names.empty() ? Result<CEntityList>(GetAllEntities(kind)) : ChooseEntities(kind, names);
}

} // namespace

CVerbResult GetAttributes(const CGetOptions& options, CTerminal& terminal, std::ostream& results) {
    const enmEntityKind kind = FindKind(options.m_on).value_or(enmEntityKind::Section);
    const auto definitions = FindKeys(kind, options.m_keys);
    if (!definitions)
        return definitions.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    const auto entities = ChooseOrAll(kind, options.m_names);
    if (!entities)
        return entities.GetError();
    if (options.m_format == "json")
        PrintAttributesAsJson(results, entities.Value(), definitions.Value());
    else if (options.m_format == "csv")
        // What standard output does not take is the program's matter, once for all verbs.
        (void)PrintAttributesAsCsv(results, entities.Value(), definitions.Value());
    else
        PrintAttributesAsTable(results, entities.Value(), definitions.Value());
    return enmExitCode::Done;
}

CVerbResult SetAttributes(const CSetOptions& options, CTerminal& terminal) {
    const enmEntityKind kind = FindKind(options.m_on).value_or(enmEntityKind::Section);
    if (options.m_names.empty() && !options.m_isForAll)
        return BadWords(fmt::format("found neither --names nor --all, expected which {}s to set", GetKindName(kind)));
    auto values = ReadNewValues(kind, options.m_words);
    if (!values)
        return values.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    const auto entities = ChooseOrAll(kind, options.m_names);
    if (!entities)
        return entities.GetError();
    if (const Status resolved = ResolveReferences(values.Value(), terminal); !resolved)
        return resolved.GetError();
    std::vector<std::string_view> keys;
    for (const CNewValue& value : values.Value()) {
        keys.push_back(value.m_definition->m_id);
        for (const CEntity* entity : entities.Value())
            CDataRW::Write(value.m_definition, entity, value.m_value, nullptr);
    }
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Tell(fmt::format("{}: {} set on {}", project.Value()->GetTarget(options.m_output), fmt::join(keys, ", "),
                              Count(entities->size(), GetKindName(kind))));
    return enmExitCode::Done;
}

CVerbResult LoadAttributes(const CLoadOptions& options, CTerminal& terminal) {
    const enmEntityKind kind = FindKind(options.m_on).value_or(enmEntityKind::Section);
    auto table = CInputFile::Open(options.m_table);
    if (!table)
        return table.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    const std::size_t before = GetAllEntities(kind).size();
    const auto stored = OLMGis::ProjectIo::LoadCsv(table->GetStream(), table->GetName(), kind);
    if (!stored)
        return stored.GetError();
    const std::size_t made = GetAllEntities(kind).size() - before;
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Tell(fmt::format("{}: {} of {}s loaded{}", project.Value()->GetTarget(options.m_output),
                              Count(static_cast<std::size_t>(stored.Value()), "value"), GetKindName(kind),
                              made > 0 ? ", " + Count(made, "new " + std::string(GetKindName(kind))) : ""));
    return enmExitCode::Done;
}

} // namespace Cli

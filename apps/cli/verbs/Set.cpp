// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Assignments.h"
#include "apps/cli/input/AttributeKeys.h"
#include "apps/cli/input/MainOutlets.h"
#include "apps/cli/input/NamedEntities.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/DataRW.h"
#include "host/project_io/tables/CatalogReferences.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <memory>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::enmEntityKind;
using OLMGis::Topology::CNode;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

struct COptions {
    std::string m_project;
    std::vector<std::string> m_assignments; ///< KEY=VALUE
    std::string m_on = "sections";
    std::vector<std::string> m_names;
    bool m_isForAll = false;
    COutputOption m_output;
};

struct CNewValue {
    const CDataDefinition* m_definition = nullptr;
    CDataBox m_value;
};

Result<std::vector<CNewValue>> ReadNewValues(enmEntityKind kind, const std::vector<std::string>& arguments) {
    const auto assignments = SplitAssignments(arguments, "KEY=VALUE");
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

/// Replaces names of catalogue items by their GUIDs, which are stored. A reference may be set before its catalogue is
/// imported; until then no calculation finds its pipe or manhole.
Status ResolveReferences(std::vector<CNewValue>& values, CTerminal& terminal) {
    for (CNewValue& value : values) {
        const CDataDefinition& key = *value.m_definition;
        if (!OLMGis::ProjectIo::IsCatalogReference(key))
            continue;
        auto resolved = OLMGis::ProjectIo::ResolveCatalogReference(key, std::move(value.m_value));
        if (!resolved)
            return BadArguments(resolved.GetError().message);
        value.m_value = std::move(resolved.Value());
        if (!OLMGis::ProjectIo::IsKnownCatalogReference(key, value.m_value))
            terminal.Warn(fmt::format("{}: no {} of the catalogue has the GUID or name \"{}\"", key.m_id,
                                      key.m_id == "PIPE_REF" ? "pipe" : "manhole",
                                      Reports::OnOneLine(value.m_value.AsText())));
    }
    return Done{};
}

CVerbResult SetAttributes(const COptions& options, CTerminal& terminal) {
    const enmEntityKind kind = Reports::FindKind(options.m_on).value_or(enmEntityKind::Section);
    if (options.m_names.empty() && !options.m_isForAll)
        return BadArguments(fmt::format("found neither --names nor --all, expected one of them: which {}s to set",
                                        Reports::GetKindName(kind)));
    auto values = ReadNewValues(kind, options.m_assignments);
    if (!values)
        return values.GetError();
    const auto project = CProject::Open(options.m_project, terminal, enmValues::Any);
    if (!project)
        return project.GetError();
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    const auto entities = ChooseOrAll(kind, options.m_names);
    if (!entities)
        return entities.GetError();
    if (const Status resolved = ResolveReferences(values.Value(), terminal); !resolved)
        return resolved.GetError();
    std::vector<std::string_view> keys;
    for (const CNewValue& value : values.Value()) {
        keys.push_back(value.m_definition->m_id);
        for (const auto* entity : entities.Value()) {
            const auto stored = value.m_definition->m_id == "MAIN_SECT_OUT"
                                    ? ResolveMainOutlet(static_cast<const CNode&>(*entity), value.m_value)
                                    : Result<CDataBox>(value.m_value);
            if (!stored)
                return stored.GetError();
            CDataRW::Write(value.m_definition, entity, stored.Value(), nullptr);
        }
    }
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Print(fmt::format("{}: {} set on {}", project.Value()->GetTarget(options.m_output), fmt::join(keys, ", "),
                               Reports::Count(entities->size(), Reports::GetKindName(kind))));
    return enmExitCode::Done;
}

} // namespace

CVerb MakeSet() {
    const auto options = std::make_shared<COptions>();
    return CVerb("set", "PROJECT KEY=VALUE... --names A,B|--all [options]", "Store attribute values")
        .Project(options->m_project)
        .Arguments("KEY=VALUE", options->m_assignments, "Values to store; \"KEY=\" stores null")
        .On(options->m_on)
        .Names(options->m_names)
        .Flag("--all", options->m_isForAll, "All entities of the kind")
        .Exclude("--all", "--names")
        .SaveAs(options->m_output)
        .Examples({"drenova set town.gpkg SECTION_SLOPE=5.5 PIPE_ROUGHNESS=0.4 --names MAIN-01,MAIN-02",
                   "drenova set town.gpkg FLOW_INTIME=5 --all"})
        .Runs([options](CTerminal& terminal, std::ostream&) { return SetAttributes(*options, terminal); });
}

} // namespace Cli

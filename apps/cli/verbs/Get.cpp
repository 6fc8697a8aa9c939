// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/AttributeKeys.h"
#include "apps/cli/input/NamedEntities.h"
#include "apps/cli/input/OutdatedReading.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "reports/AttributeListing.h"

#include <memory>

namespace Cli {

namespace {

struct COptions {
    std::string m_project;
    std::vector<std::string> m_keys;
    std::string m_on = "sections";
    std::vector<std::string> m_names; ///< none for all
    CFormatOption m_format;
};

CVerbResult ShowAttributes(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto kind = Reports::FindKind(options.m_on).value_or(OLMGis::Data::enmEntityKind::Section);
    const auto definitions = FindKeys(kind, options.m_keys);
    if (!definitions)
        return definitions.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    const auto entities = ChooseOrAll(kind, options.m_names);
    if (!entities)
        return entities.GetError();
    COutdatedReading reading(options.m_project);
    Print(results, Reports::CListing(Reports::MakeAttributeTable(entities.Value(), definitions.Value())),
          options.m_format.Get());
    reading.Report(terminal);
    return enmExitCode::Done;
}

} // namespace

CVerb MakeGet() {
    const auto options = std::make_shared<COptions>();
    return CVerb("get", "PROJECT KEY... [options]", "Show attribute values")
        .Project(options->m_project)
        .Arguments("KEY", options->m_keys, "Attribute keys, as FLOW_WASTE_PER")
        .On(options->m_on)
        .Names(options->m_names)
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table, with rounded numbers")
        .Examples({"drenova get town.gpkg SECTION_SLOPE FLOW_WASTE_PER --names MAIN-01,MAIN-02 --format csv",
                   "drenova get town.gpkg area density --on catchments"})
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return ShowAttributes(*options, terminal, results);
        });
}

} // namespace Cli

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/AttributeKeys.h"
#include "apps/cli/input/NamedEntities.h"
#include "apps/cli/input/OutdatedReading.h"
#include "apps/cli/input/PipeGroups.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/input/Quantity.h"
#include "apps/cli/shell/Interrupt.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/sewage_calculations/PipeSizing.h"
#include "reports/ShownText.h"
#include "reports/SizingListing.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace Cli {

using OLMGis::Sewage::CPipeSizing;
using OLMGis::Sewage::CSizedSection;
using OLMGis::Sewage::CSizingRules;
using OLMGis::Sewage::enmSizing;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

struct COptions {
    std::string m_project;
    std::string m_flow;                ///< key
    std::vector<std::string> m_groups; ///< names or GUIDs
    std::string m_fill;                ///< %; empty for none, as with the other limits
    std::string m_minDn;               ///< mm
    std::string m_minVelocity;         ///< m/s
    std::string m_minShear;            ///< N/m²
    std::string m_viscosity{"1e-6"};   ///< m²/s
    std::vector<std::string> m_kept;   ///< names or GUIDs of sections
    bool m_allowsSmaller = false;
    bool m_isStrict = false;
    CFormatOption m_format;
    COutputOption m_output;
};

CQuantity Limit(const char* option, const char* unit, double greatestUsual) {
    return {option, unit, Range(0.0, std::numeric_limits<double>::max(), 0.0, greatestUsual)};
}

CQuantity Filling() {
    CQuantity filling{"--fill", "%", Range(0.0, 100.0, 30.0, 100.0)};
    filling.m_range.m_isMinExcluded = true;
    return filling;
}

/// The limits, before the project is opened.
Result<CSizingRules> ReadLimits(const COptions& options, CTerminal& terminal) {
    CSizingRules rules;
    rules.m_allowsSmaller = options.m_allowsSmaller;
    const struct {
        CQuantity m_quantity;
        const std::string& m_text;
        double& m_value;
    } limits[] = {{Filling(), options.m_fill, rules.m_greatestFilling},
                  {Limit("--min-dn", "mm", 3000.0), options.m_minDn, rules.m_leastNominalDiameter},
                  {Limit("--min-velocity", "m/s", 3.0), options.m_minVelocity, rules.m_leastVelocity},
                  {Limit("--min-shear", "N/m²", 20.0), options.m_minShear, rules.m_leastShearStress},
                  {Viscosity(), options.m_viscosity, rules.m_viscosity}};
    std::vector<std::string> warnings;
    for (const auto& limit : limits)
        if (!limit.m_text.empty())
            if (const Status read = ReadNumber(limit.m_quantity, limit.m_text, limit.m_value, warnings); !read)
                return read.GetError();
    for (const std::string& warning : warnings)
        terminal.Warn(warning);
    return rules;
}

Status ReadRules(const COptions& options, CSizingRules& rules) {
    const auto flow = FindFlowKey(options.m_flow);
    if (!flow)
        return flow.GetError();
    rules.m_flow = flow.Value();
    auto groups = FindPipeGroups("--group", options.m_groups);
    if (!groups)
        return groups.GetError();
    rules.m_groups = std::move(groups.Value());
    if (options.m_kept.empty())
        return Done{};
    auto kept = ChooseSections("--keep", options.m_kept);
    if (!kept)
        return kept.GetError();
    rules.m_kept = std::move(kept.Value());
    return Done{};
}

std::string Summarise(const CPipeSizing& sizing) {
    const auto& sections = sizing.m_sections;
    const auto isSized = [](const CSizedSection& each) { return each.m_outcome == enmSizing::Sized; };
    const auto sized = static_cast<std::size_t>(std::count_if(sections.begin(), sections.end(), isSized));
    const auto changed = std::count_if(sections.begin(), sections.end(), [&](const CSizedSection& each) {
        return isSized(each) && each.m_newPipe != each.m_oldPipe;
    });
    return fmt::format("{} sized, {} of them with another pipe than before; {} left as {}",
                       Reports::Count(sized, "section"), changed, sections.size() - sized,
                       sections.size() - sized == 1 ? "it was" : "they were");
}

CVerbResult SizeSections(const COptions& options, CTerminal& terminal, std::ostream& results) {
    auto rules = ReadLimits(options, terminal);
    if (!rules)
        return rules.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const Status isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    if (const Status read = ReadRules(options, rules.Value()); !read)
        return read.GetError();
    COutdatedReading reading(options.m_project);
    const CPipeSizing sizing = OLMGis::Sewage::SizePipes(rules.Value());
    if (const Status goesOn = Interrupt::Check(); !goesOn)
        return goesOn.GetError();
    if (reading.Report(terminal) && options.m_isStrict)
        return enmExitCode::NothingStored;
    terminal.Show(Reports::MakeSizingRemarks(sizing.m_sections, rules.Value()));
    Print(results, Reports::CListing(Reports::MakeSizingTable(sizing.m_sections, rules.Value())),
          options.m_format.Get());
    results.flush();
    if (OLMGis::Sewage::StorePipes(sizing) == 0) {
        terminal.Print("nothing was stored: no section was sized");
        return enmExitCode::NothingStored;
    }
    if (const Status saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Print(fmt::format("{}: {}", project.Value()->GetTarget(options.m_output), Summarise(sizing)));
    return enmExitCode::Done;
}

} // namespace

CVerb MakeSize() {
    const auto options = std::make_shared<COptions>();
    return CVerb("size", "PROJECT --flow KEY --group G... [options]", "Choose pipes that carry a flow")
        .Project(options->m_project)
        .RequiredOption("--flow", options->m_flow, "KEY",
                        "Flow of each section: FLOW_TOTAL, FLOW_RAIN_IDF, or another\nkey in m³/s")
        .Several("--group", options->m_groups, "G...",
                 "Groups of the pipe catalogue, by name or GUID, in the order in which\n"
                 "they are tried; default: the setting pipe_group")
        .Option("--fill", options->m_fill, "P", "Greatest filling, % of the inside height; default: 100")
        .Option("--min-dn", options->m_minDn, "MM",
                "Least nominal diameter: the DN of the pipe's name, else its inside width")
        .Option("--min-velocity", options->m_minVelocity, "V", "Least velocity at the filling, m/s")
        .Option("--min-shear", options->m_minShear, "T", "Least wall shear stress at the filling, N/m²")
        .Option("--viscosity", options->m_viscosity, "NU", "Viscosity of the water, m²/s; default: 1e-6")
        .Repeated("--keep", options->m_kept, "A,B", "Sections whose pipes stay, by name or GUID")
        .Flag("--allow-smaller", options->m_allowsSmaller, "A pipe may be narrower than one upstream")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table, with rounded numbers")
        .Flag("--strict", options->m_isStrict, StrictHelp)
        .SaveAs(options->m_output)
        .Examples({"drenova size town.gpkg --flow FLOW_RAIN_IDF --group \"Concrete EN 1916 class 135\" --fill 80",
                   "drenova size town.gpkg --flow FLOW_TOTAL --group \"PVC-U EN 1401 SN 8 (SDR 34)\" \\\n"
                   "    \"Concrete EN 1916 class 135\" --min-dn 250 --min-velocity 0.5 --keep MAIN-01,MAIN-02"})
        .Notes("Each section gets the smallest pipe that carries its flow within the limits, never narrower inside\n"
               "than a pipe upstream: of the first group that has one. It takes SECTION_SLOPE, and PIPE_ROUGHNESS\n"
               "or else the roughness of the pipe. PIPE_REF is stored. A section without a flow or a slope, or that\n"
               "no pipe fits, is listed with the reason and keeps its pipe, as those of --keep do. A flow above the\n"
               "full-pipe capacity fits no pipe. Exit code: 1 when nothing was stored.")
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return SizeSections(*options, terminal, results);
        });
}

} // namespace Cli

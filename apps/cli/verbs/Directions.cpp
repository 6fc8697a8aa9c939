// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/MainOutlets.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/FlowDirection.h"
#include "reports/OutletListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string_view>

namespace Cli {

using OLMGis::Sewage::CFlowDirection;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyMultiStorage;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Done;
using OLMGis::Utility::Status;
using Reports::Count;

namespace {

struct COptions {
    std::string m_project;
    bool m_isList = false;              ///< the list is printed in any case
    std::vector<std::string> m_outlets; ///< NODE=SECTION, by name or GUID
    bool m_isAutomatic = false;         ///< chooses the others by levels and pipes
    CFormatOption m_format;
    COutputOption m_output;
};

using CSections = std::vector<boost::shared_ptr<CSection>>;

/// Stores the outlet of one argument NODE=SECTION. A name may contain the equal sign, so every place of it is tried.
Status SetOutlet(const std::string& argument) {
    const auto& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
    boost::shared_ptr<CNode> node;
    for (std::size_t sign = argument.find('='); sign != std::string::npos; sign = argument.find('=', sign + 1)) {
        const std::string_view name = std::string_view(argument).substr(0, sign);
        node = topology.GetNodeByName(name);
        if (!node)
            node = topology.GetNodeByGuid(name);
        if (!node)
            continue;
        if (const auto outlet = FindOutlet(*node, std::string_view(argument).substr(sign + 1)))
            return CFlowDirection::SetMainOutlet(node, outlet) != 0
                       ? Status(Done{})
                       : Status(BadArguments(fmt::format("--set {}: the main outlet cannot be stored", argument)));
    }
    if (!node)
        return BadArguments(
            fmt::format("--set: found \"{}\", expected NODE=SECTION with the name or GUID of a node", argument));
    CSections out;
    node->GetSectionsOut(out);
    return BadArguments(fmt::format("--set: found \"{}\", expected one of the sections that leave the node {}: {}",
                                    argument, node->GetName(),
                                    out.empty() ? std::string("none") : Reports::JoinNames(out)));
}

CVerbResult ShowOrChoose(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    for (const std::string& argument : options.m_outlets)
        if (const Status set = SetOutlet(argument); !set)
            return set.GetError();
    int count = 0;
    if (options.m_isAutomatic) {
        count = CFlowDirection::ChooseAutomatically(CTopologyMultiStorage::Instance()->GetActiveTopology()->GetNodes());
        terminal.Print(
            fmt::format("main outlets of {} chosen by level and pipe", Count(static_cast<std::size_t>(count), "node")));
    }
    const std::vector<Reports::CFork> forks = Reports::FindForks();
    Print(results, Reports::MakeOutletListing(forks), options.m_format.Get());
    results.flush();
    const bool stores = count > 0 || !options.m_outlets.empty();
    const enmExitCode code = options.m_isAutomatic && !stores ? enmExitCode::NothingStored : enmExitCode::Done;
    if (stores) {
        if (const Status saved = project.Value()->Save(options.m_output); !saved)
            return saved.GetError();
        terminal.Print(fmt::format("{}: saved", project.Value()->GetTarget(options.m_output)));
    }
    if (options.m_format.Get() != Reports::enmFormat::Text)
        return code;
    const auto open =
        std::count_if(forks.begin(), forks.end(), [](const auto& fork) { return fork.m_mainOutlet == nullptr; });
    terminal.Print(forks.empty() ? std::string("no node needs a main outlet")
                                 : fmt::format("{} with several sections out, {} without a main outlet",
                                               Count(forks.size(), "node"), open));
    return code;
}

} // namespace

CVerb MakeDirections() {
    const auto options = std::make_shared<COptions>();
    return CVerb("directions", "PROJECT [--list] [--set NODE=SECTION...] [--auto] [options]",
                 "Show or choose main outlets")
        .Project(options->m_project)
        .Flag("--list", options->m_isList, "List the nodes that need a main outlet and the chosen ones (default)")
        .Several("--set", options->m_outlets, "NODE=SECTION",
                 "Choose the main outlet of a node, by names or GUIDs; several may follow")
        .Flag("--auto", options->m_isAutomatic,
              "Choose the others: lowest level line, then larger pipe, then first in the network;\nexit code 1 when "
              "there is nothing to choose")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table")
        .SaveAs(options->m_output)
        .Examples({"drenova directions town.gpkg", "drenova directions town.gpkg --set M004=MAIN-07 --auto"})
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return ShowOrChoose(*options, terminal, results);
        });
}

} // namespace Cli

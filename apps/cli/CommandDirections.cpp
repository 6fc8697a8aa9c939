// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandDirections.h"

#include "apps/cli/JsonText.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Section.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/FlowDirection.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

#include <vector>

namespace Cli {

using nlohmann::ordered_json;
using OLMGis::Sewage::CFlowDirection;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyMultiStorage;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::Done;
using OLMGis::Utility::Status;

namespace {

using CSections = std::vector<boost::shared_ptr<CSection>>;

struct CFork {
    const CNode* m_node;
    CSections m_in;
    CSections m_out;
    const CSection* m_settled; ///< null where none is
};

std::vector<CFork> FindForks() {
    const auto& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
    std::vector<CFork> forks;
    for (const auto& node : topology.GetNodes()) {
        if (!CFlowDirection::NeedsMainOutlet(*node))
            continue;
        CFork fork{node.get(), {}, {}, topology.GetChosenMainOutlet(*node)};
        node->GetSectionsIn(fork.m_in);
        node->GetSectionsOut(fork.m_out);
        forks.push_back(std::move(fork));
    }
    return forks;
}

ordered_json Describe(const CSection& section) {
    return {{"name", section.GetName()}, {"guid", section.GetGuid()}};
}

ordered_json Describe(const CSections& sections) {
    ordered_json list = ordered_json::array();
    for (const auto& section : sections)
        list.push_back(Describe(*section));
    return list;
}

std::string JoinNames(const CSections& sections) {
    std::vector<std::string_view> names;
    for (const auto& section : sections)
        names.push_back(section->GetName());
    return fmt::format("{}", fmt::join(names, " "));
}

void PrintForksAsJson(std::ostream& results, const std::vector<CFork>& forks) {
    ordered_json list = ordered_json::array();
    for (const CFork& fork : forks) {
        ordered_json object{{"node", fork.m_node->GetName()}, {"guid", fork.m_node->GetGuid()}};
        object["in"] = Describe(fork.m_in);
        object["out"] = Describe(fork.m_out);
        object["main_outlet"] = fork.m_settled == nullptr ? ordered_json(nullptr) : Describe(*fork.m_settled);
        list.push_back(std::move(object));
    }
    PrintJson(results, list);
}

/// The section out of a node that a word names, by GUID or by a name that only one of them bears; null for none.
boost::shared_ptr<CSection> FindOutlet(const CNode& node, std::string_view word) {
    CSections out;
    node.GetSectionsOut(out);
    CSections named;
    for (const auto& section : out) {
        if (OLMGis::Utility::GuidEqual()(section->GetGuid(), word))
            return section;
        if (section->GetName() == word)
            named.push_back(section);
    }
    return named.size() == 1 ? named.front() : nullptr;
}

/// Stores what one word NODE=SECTION says. A name may hold the sign itself, so every place of it is tried.
Status SettleByWord(const std::string& word) {
    const auto& topology = *CTopologyMultiStorage::Instance()->GetActiveTopology();
    boost::shared_ptr<CNode> node;
    for (std::size_t sign = word.find('='); sign != std::string::npos; sign = word.find('=', sign + 1)) {
        const std::string_view name = std::string_view(word).substr(0, sign);
        node = topology.GetNodeByName(name);
        if (!node)
            node = topology.GetNodeByGuid(name);
        if (!node)
            continue;
        if (const auto outlet = FindOutlet(*node, std::string_view(word).substr(sign + 1)))
            return CFlowDirection::Settle(node, outlet) != 0
                       ? Status(Done{})
                       : Status(BadWords(fmt::format("--set {}: the main outlet cannot be stored", word)));
    }
    if (!node)
        return BadWords(
            fmt::format("--set: found \"{}\", expected NODE=SECTION with the name or GUID of a node", word));
    CSections out;
    node->GetSectionsOut(out);
    return BadWords(fmt::format("--set: found \"{}\", expected one of the sections that leave the node {}: {}", word,
                                node->GetName(), out.empty() ? std::string("none do") : JoinNames(out)));
}

} // namespace

CVerbResult ShowOrSettleDirections(const CDirectionsOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    for (const std::string& word : options.m_settings)
        if (const Status settled = SettleByWord(word); !settled)
            return settled.GetError();
    if (options.m_isAutomatic) {
        const int count =
            CFlowDirection::SettleAutomatically(CTopologyMultiStorage::Instance()->GetActiveTopology()->GetNodes());
        terminal.Tell(fmt::format("{} settled by level and pipe", Count(static_cast<std::size_t>(count), "node")));
    }
    if (options.m_isAutomatic || !options.m_settings.empty()) {
        if (const Status saved = project.Value()->Save(options.m_output); !saved)
            return saved.GetError();
        terminal.Tell(fmt::format("{}: saved", project.Value()->GetTarget(options.m_output)));
    }
    const std::vector<CFork> forks = FindForks();
    if (options.m_isJson) {
        PrintForksAsJson(results, forks);
        return enmExitCode::Done;
    }
    CTable table;
    for (const char* head : {"node", "main outlet", "sections out", "sections in"})
        table.AddColumn(head);
    std::size_t open = 0;
    for (const CFork& fork : forks) {
        open += fork.m_settled == nullptr ? 1 : 0;
        table.AddRow({std::string(fork.m_node->GetName()),
                      fork.m_settled == nullptr ? "-" : std::string(fork.m_settled->GetName()), JoinNames(fork.m_out),
                      JoinNames(fork.m_in)});
    }
    if (!table.IsEmpty())
        table.Print(results);
    results.flush();
    terminal.Tell(forks.empty() ? std::string("no node needs a main outlet")
                                : fmt::format("{}, {} without a main outlet",
                                              Count(forks.size(), "node") + " with several ways out", open));
    return enmExitCode::Done;
}

} // namespace Cli

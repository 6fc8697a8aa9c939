// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/Balance.h"

#include "flow/FlowKeys.h"
#include "host/gis_core/DataConfiguration.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/CatchmentAreaManager.h"
#include "host/sewage_core/FlowDirection.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <memory>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Data::FindDefinition;
using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Topology::CConnectivity;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyStorage;

namespace {

constexpr std::uint32_t None = CConnectivity::None;

/// Part of what a network enters that counts as rounding.
constexpr double Rounding = 1e-9;

using CAmounts = std::vector<double>;

const CTopologyStorage& GetTopology() {
    return *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
}

bool HasValues(const char* key) {
    const auto* const definition = FindDefinition(key);
    return definition != nullptr && GetTopology().GetStore().HasValues(*definition);
}

/// By row of section; absent values are 0.
CAmounts ReadAll(const char* key) {
    CAmounts amounts(GetTopology().GetSectionRowCount(), 0.0);
    for (const auto& section : GetTopology().GetSections())
        amounts[section->GetRow()] = ReadNumber(*section, key).value_or(0.0);
    return amounts;
}

CAmounts GatherAreas() {
    CAmounts areas(GetTopology().GetSectionRowCount(), 0.0);
    for (const auto& section : GetTopology().GetSections())
        CCatchmentAreaManager::Instance()->GetCATotalCorectedArea(section, areas[section->GetRow()]);
    return areas;
}

/// Inhabitants of the household catchments that have a density.
CAmounts GatherInhabitants() {
    const auto* const kinds = FindDefinition("kinds");
    const auto* const area = FindDefinition("area");
    const auto* const density = FindDefinition("density");
    CAmounts inhabitants(GetTopology().GetSectionRowCount(), 0.0);
    for (const auto& section : GetTopology().GetSections())
        for (const auto* catchment = GetTopology().GetFirstCatchment(*section); catchment != nullptr;
             catchment = CTopologyStorage::GetNextCatchment(*catchment)) {
            const auto read = [&](const auto* definition) {
                CDataBox box;
                return catchment->GetStore().Read(*definition, catchment->GetRow(), box) ? box.AsDouble() : 0.0;
            };
            const bool isHousehold =
                (static_cast<int>(read(kinds)) & OLMGis::Topology::CatchmentHousehold) != 0 && read(density) > 0.0;
            inhabitants[section->GetRow()] += isHousehold ? read(area) * read(density) : 0.0;
        }
    return inhabitants;
}

/// The population of the last run by population, which its parameters at the sections contain; 0 without one.
double ReadPopulation() {
    for (const auto& section : GetTopology().GetSections()) {
        const auto* const definition = FindDefinition("FLOW_WASTE_PER_S");
        CDataBox box;
        if (definition == nullptr || !section->GetStore().Read(*definition, section->GetRow(), box))
            continue;
        const auto form = nlohmann::json::parse(box.AsText(), nullptr, false);
        if (form.is_object() && form.contains("BROJ_STANOVNIKA") && form["BROJ_STANOVNIKA"].is_number())
            return form["BROJ_STANOVNIKA"].get<double>();
    }
    return 0.0;
}

CAmounts SharePopulation() {
    CAmounts inhabitants = ReadAll(Flow::Keys::WastePercent);
    double sum = 0.0;
    for (const double flow : inhabitants)
        sum += flow;
    const double population = ReadPopulation();
    for (double& share : inhabitants)
        share = sum > 0.0 ? share / sum * population : 0.0;
    return inhabitants;
}

std::vector<std::uint32_t> GetMainOutlets(const CConnectivity& ways) {
    std::vector<std::uint32_t> outlets(ways.GetNodeCount());
    for (std::uint32_t node = 0; node < ways.GetNodeCount(); ++node)
        outlets[node] = ways.GetMainOutlet(node);
    return outlets;
}

/// Carries amounts down the main outlets (by row of node) as the calculations do: a node passes on what it has when all
/// sections that enter it are finished, so that rings and what is below a side outlet get nothing.
CAmounts Carry(const CConnectivity& ways, const CAmounts& entered, const std::vector<std::uint32_t>& mainOutlets) {
    CAmounts carried = entered;
    CAmounts atNode(ways.GetNodeCount(), 0.0);
    std::vector<std::size_t> finishedCounts(ways.GetNodeCount(), 0);
    std::vector<std::uint32_t> queue;
    for (const auto& section : GetTopology().GetSections()) {
        const std::uint32_t start = ways.GetStart(section->GetRow());
        if (start == None || ways.GetWaysIn(start).empty())
            queue.push_back(section->GetRow());
    }
    for (std::size_t front = 0; front < queue.size(); ++front) {
        const std::uint32_t end = ways.GetEnd(queue[front]);
        if (end == None)
            continue;
        atNode[end] += carried[queue[front]];
        const std::uint32_t next = mainOutlets[end];
        if (++finishedCounts[end] < ways.GetWaysIn(end).size() || next == None)
            continue;
        carried[next] += atNode[end];
        queue.push_back(next);
    }
    return carried;
}

/// What leaves the network with sections at whose end it ends.
double SumAtEnds(const CConnectivity& ways, const CAmounts& carried) {
    double sum = 0.0;
    for (const auto& section : GetTopology().GetSections()) {
        const std::uint32_t end = ways.GetEnd(section->GetRow());
        if (end == None || ways.GetWaysOut(end).empty())
            sum += carried[section->GetRow()];
    }
    return sum;
}

double Sum(const CAmounts& amounts) {
    double sum = 0.0;
    for (const double amount : amounts)
        sum += amount;
    return sum;
}

/// What arrives at a node and is not passed on by the sections out that are counted; what such a section enters itself
/// and does not carry is missing as well. isCounted: by row of section.
template <class IsCounted>
double LostAt(const CConnectivity& ways, const CCarriedAmounts& amounts, std::uint32_t node, IsCounted isCounted) {
    double lost = 0.0;
    for (const std::uint32_t section : ways.GetWaysIn(node))
        lost += amounts.m_carried[section];
    for (const std::uint32_t section : ways.GetWaysOut(node))
        if (isCounted(section))
            lost -= amounts.m_carried[section] - amounts.m_entered[section];
    return lost;
}

/// Fills the rows of a balance one after the other.
class CBalanceMaker {
public:
    CBalanceMaker()
        : m_ways(GetTopology().GetConnectivity()), m_hasTotal(HasValues(Flow::Keys::Total)),
          m_isAbove(m_ways->GetSectionCount(), false) {
        for (const auto quantity : {enmBalanced::Area, enmBalanced::Inhabitants, enmBalanced::Flow})
            m_amounts.push_back(GatherAmounts(quantity));
    }

    bool IsEnd(const CSection& section) const {
        const std::uint32_t end = m_ways->GetEnd(section.GetRow());
        return end == None || m_ways->GetWaysOut(end).empty();
    }

    CBalanceRow Make(const boost::shared_ptr<CSection>& section) {
        std::vector<boost::shared_ptr<CSection>> above;
        section->GetPreviousSections(above);
        above.push_back(section);
        for (const auto& each : above)
            m_isAbove[each->GetRow()] = true;
        CBalanceRow row{section->GetEndingNode().get(), section.get(), above.size()};
        FillAmounts(row, above);
        row.m_lostAt = FindLostAt(above);
        for (const auto& each : above)
            m_isAbove[each->GetRow()] = false;
        return row;
    }

private:
    void FillAmounts(CBalanceRow& row, const std::vector<boost::shared_ptr<CSection>>& above) const {
        const std::uint32_t end = row.m_section->GetRow();
        const CCarriedAmounts& area = m_amounts[0];
        const CCarriedAmounts& inhabitants = m_amounts[1];
        const CCarriedAmounts& flow = m_amounts[2];
        row.m_areaAbove = SumOf(area.m_entered, above);
        row.m_areaArriving = area.m_hasRun ? area.m_carried[end] : 0.0;
        if (inhabitants.m_hasRun) {
            row.m_inhabitantsAbove = SumOf(inhabitants.m_entered, above);
            row.m_inhabitantsArriving = inhabitants.m_carried[end];
        }
        if (flow.m_hasRun) {
            row.m_flowAbove = SumOf(flow.m_entered, above);
            row.m_transitArriving = flow.m_carried[end];
        }
        if (m_hasTotal)
            row.m_totalArriving = ReadNumber(*row.m_section, Flow::Keys::Total);
    }

    std::vector<const CNode*> FindLostAt(const std::vector<boost::shared_ptr<CSection>>& above) const {
        std::vector<std::uint32_t> nodes;
        for (const auto& each : above)
            if (const std::uint32_t start = m_ways->GetStart(each->GetRow()); start != None)
                nodes.push_back(start);
        std::sort(nodes.begin(), nodes.end());
        nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
        std::vector<double> roundings;
        for (const CCarriedAmounts& amounts : m_amounts)
            roundings.push_back(Rounding * SumOf(amounts.m_entered, above));
        std::vector<const CNode*> lostAt;
        for (const std::uint32_t node : nodes)
            for (std::size_t i = 0; i < m_amounts.size(); ++i)
                if (m_amounts[i].m_hasRun && LostAt(*m_ways, m_amounts[i], node, [this](std::uint32_t section) {
                                                 return m_isAbove[section];
                                             }) > roundings[i]) {
                    lostAt.push_back(GetTopology().GetNodeAt(node).get());
                    break;
                }
        return lostAt;
    }

    static double SumOf(const CAmounts& amounts, const std::vector<boost::shared_ptr<CSection>>& sections) {
        double sum = 0.0;
        for (const auto& section : sections)
            sum += amounts[section->GetRow()];
        return sum;
    }

    std::shared_ptr<const CConnectivity> m_ways;
    std::vector<CCarriedAmounts> m_amounts; ///< in the order of enmBalanced
    bool m_hasTotal;
    std::vector<bool> m_isAbove; ///< of the present end, by row
};

} // namespace

CCarriedAmounts GatherAmounts(enmBalanced quantity) {
    CCarriedAmounts amounts{quantity};
    const auto ways = GetTopology().GetConnectivity();
    switch (quantity) {
    case enmBalanced::Area:
        amounts.m_hasRun = HasValues(Flow::Keys::CorrectedAreaTotal);
        amounts.m_entered = GatherAreas();
        amounts.m_carried = ReadAll(Flow::Keys::CorrectedAreaTotal);
        break;
    case enmBalanced::Inhabitants: {
        const bool hasAreas = HasValues(Flow::Keys::WasteHome) || HasValues(Flow::Keys::WasteHomeBulgarian);
        const bool hasPopulation = HasValues(Flow::Keys::WastePercent);
        amounts.m_hasRun = hasAreas || hasPopulation;
        amounts.m_entered = hasPopulation && !hasAreas ? SharePopulation() : GatherInhabitants();
        amounts.m_carried = Carry(*ways, amounts.m_entered, GetMainOutlets(*ways));
        break;
    }
    case enmBalanced::Flow:
        amounts.m_hasRun = HasValues(Flow::Keys::Transit);
        amounts.m_entered = ReadAll(Flow::Keys::SectionTotal);
        amounts.m_carried = ReadAll(Flow::Keys::Transit);
        std::transform(amounts.m_carried.begin(), amounts.m_carried.end(), amounts.m_entered.begin(),
                       amounts.m_carried.begin(), std::plus<>());
        break;
    }
    return amounts;
}

std::optional<double> ReadNumber(const CSection& section, const char* key) {
    const auto* const definition = FindDefinition(key);
    CDataBox box;
    if (definition == nullptr || !section.GetStore().Read(*definition, section.GetRow(), box))
        return std::nullopt;
    const double value = box.AsDouble();
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

double SumOverSections(const char* key) {
    return Sum(ReadAll(key));
}

std::vector<CBalanceRow> MakeBalance() {
    CBalanceMaker maker;
    std::vector<CBalanceRow> rows;
    for (const auto& section : GetTopology().GetSections())
        if (maker.IsEnd(*section))
            rows.push_back(maker.Make(section));
    return rows;
}

std::optional<CLoss> FindLoss(enmBalanced quantity) {
    const CCarriedAmounts amounts = GatherAmounts(quantity);
    if (!amounts.m_hasRun)
        return std::nullopt;
    const auto ways = GetTopology().GetConnectivity();
    CLoss loss{quantity, Sum(amounts.m_entered)};
    for (const auto& node : GetTopology().GetNodes()) {
        if (ways->GetWaysOut(node->GetRow()).empty())
            continue;
        const double lost = LostAt(*ways, amounts, node->GetRow(), [](std::uint32_t) { return true; });
        if (lost <= Rounding * loss.m_entered)
            continue;
        loss.m_lost += lost;
        loss.m_at.emplace_back(node.get(), lost);
    }
    if (loss.m_at.empty())
        return std::nullopt;
    std::stable_sort(loss.m_at.begin(), loss.m_at.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    return loss;
}

std::vector<COutletChoice> FindBetterOutlets(enmBalanced quantity) {
    constexpr std::size_t MostWork = 100'000'000; // sections carried over all trials
    const CAmounts entered = GatherAmounts(quantity).m_entered;
    const auto ways = GetTopology().GetConnectivity();
    std::vector<std::uint32_t> outlets = GetMainOutlets(*ways);
    std::vector<const CNode*> forks;
    std::size_t trialCount = 0;
    for (const auto& node : GetTopology().GetNodes())
        if (OLMGis::Sewage::CFlowDirection::NeedsMainOutlet(*node)) {
            forks.push_back(node.get());
            trialCount += ways->GetWaysOut(node->GetRow()).size();
        }
    std::vector<COutletChoice> choices;
    if (trialCount * entered.size() > MostWork)
        return choices;
    const double rounding = Rounding * Sum(entered);
    double arriving = SumAtEnds(*ways, Carry(*ways, entered, outlets));
    // The choice at one node may need another one downstream first.
    for (double before = -1.0; arriving > before;) {
        before = arriving;
        for (const CNode* fork : forks) {
            std::uint32_t& outlet = outlets[fork->GetRow()];
            std::uint32_t best = outlet;
            for (const std::uint32_t way : ways->GetWaysOut(fork->GetRow())) {
                outlet = way;
                const double trial = SumAtEnds(*ways, Carry(*ways, entered, outlets));
                if (trial > arriving + rounding) {
                    arriving = trial;
                    best = way;
                }
            }
            outlet = best;
        }
    }
    for (const CNode* fork : forks)
        if (const std::uint32_t outlet = outlets[fork->GetRow()]; outlet != ways->GetMainOutlet(fork->GetRow()))
            choices.emplace_back(fork, GetTopology().GetSectionAt(outlet).get());
    return choices;
}

} // namespace Reports

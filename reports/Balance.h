// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Node.h"
#include "host/network_core/Section.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace Reports {

/// What is balanced: contributing area (ha) of the rain run, inhabitants of the waste runs, flow (m³/s) of the transit
/// run.
enum class enmBalanced { Area, Inhabitants, Flow };

/// What sections enter and what their results carry, by row of section. What a section carries at its lower end is what
/// it enters itself and what arrives at its upper end.
struct CCarriedAmounts {
    enmBalanced m_quantity{};
    bool m_hasRun = false; ///< whether a run stored the results; without one nothing is carried
    std::vector<double> m_entered{};
    std::vector<double> m_carried{};
};

/// The amounts of the active project.
///
/// Area: entered by rain catchments times their coefficients; carried as FLOW_IDF_AREA_CORRECTED_TOTAL.
/// Flow: entered as FLOW_SECT_TOTAL; carried as FLOW_TRANSIT with the section's own.
/// Inhabitants: entered by household catchments with a density, or, where only a run by population stored results, its
/// population in proportion to FLOW_WASTE_PER. No run stores the inhabitants that arrive: they are carried along the
/// main outlets as the transit run carries flow.
CCarriedAmounts GatherAmounts(enmBalanced quantity);

/// One section at whose end the network ends. Null values: before the run that gives them.
struct CBalanceRow {
    const OLMGis::Topology::CNode* m_node = nullptr; ///< at its lower end; null for a section without one
    const OLMGis::Topology::CSection* m_section = nullptr;
    std::size_t m_sectionsAbove = 0; ///< itself included, whichever way they lead here
    double m_areaAbove = 0.0;
    double m_areaArriving = 0.0;
    std::optional<double> m_inhabitantsAbove{};
    std::optional<double> m_inhabitantsArriving{};
    std::optional<double> m_flowAbove{};
    std::optional<double> m_transitArriving{}; ///< with the section's own flow
    std::optional<double> m_totalArriving{};   ///< FLOW_TOTAL

    /// Nodes where something leaves the way to this end: to another end, or for good. In the order of the network.
    std::vector<const OLMGis::Topology::CNode*> m_lostAt{};
};

/// One row per end of the active project's network, in the order of its sections. Cost: the sections above each end.
std::vector<CBalanceRow> MakeBalance();

/// A finite value of an attribute of a section; null without one.
std::optional<double> ReadNumber(const OLMGis::Topology::CSection& section, const char* key);

/// Sum of the finite values of an attribute over all sections.
double SumOverSections(const char* key);

/// What is entered and never arrives at an end of the network, nor goes on at the node where it is lost.
struct CLoss {
    enmBalanced m_quantity{};
    double m_entered = 0.0;                                                ///< in the whole network
    double m_lost = 0.0;                                                   ///< > 0
    std::vector<std::pair<const OLMGis::Topology::CNode*, double>> m_at{}; ///< with the amounts, the greatest first
};

/// The loss of a quantity, null where nothing is lost or no run stored results. Linear.
std::optional<CLoss> FindLoss(enmBalanced quantity);

/// A node and the section to choose as its main outlet.
using COutletChoice = std::pair<const OLMGis::Topology::CNode*, const OLMGis::Topology::CSection*>;

/// Choices that let more of a quantity arrive at the ends of the network, found by trying the sections out of each node
/// that needs a main outlet, one after the other. Empty where none helps, as where the ways out of a node meet again
/// and in rings, and where the network has too many such nodes to try.
std::vector<COutletChoice> FindBetterOutlets(enmBalanced quantity);

} // namespace Reports

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"
#include "host/network_core/Connectivity.h"
#include "host/network_core/TopologyStorage.h"
#include "rain/run/RunSettings.h"
#include "rain/run/RunStop.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace Rain {

/// What a run reads of a section. Absent numbers are empty.
struct CSectionInput {
    std::string_view m_name;            ///< belongs to the network, which outlives the run
    std::optional<double> m_slope;      ///< 1/1000
    std::optional<double> m_inletTime;  ///< min
    std::optional<double> m_roughness;  ///< stored on the section, mm
    std::optional<double> m_timeFactor; ///< of the standard, -; read only where that has one
    double m_ownArea = 0.0;             ///< corrected catchment area, ha; 0 without a rain catchment
    double m_length = 0.0;              ///< plan length, m
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_existingPipe; ///< may be null
};

/// Calls found(problem) for each reason why a section with this input can't be calculated, in a fixed order: where a
/// single one is shown, it is the last.
template <class Found>
void ForEachProblem(const CSectionInput& input, const CRunSettings& settings, Found&& found) {
    if (!input.m_slope)
        found(enmInputProblem::NoSlope);
    else if (*input.m_slope <= 0.0)
        found(enmInputProblem::SlopeNotAboveZero);
    if (!input.m_inletTime)
        found(enmInputProblem::NoInletTime);
    if (!input.m_timeFactor && settings.FindTimeFactor() != nullptr)
        found(enmInputProblem::NoTimeFactor);
}

/// The sections of a run and how the network around them joins. Sections and nodes are named by their rows. Valid until
/// the network changes.
class CRunNetwork {
public:
    using CSectionPtr = boost::shared_ptr<OLMGis::Topology::CSection>;
    using CRows = std::vector<std::uint32_t>;

    static constexpr std::uint32_t None = OLMGis::Topology::CConnectivity::None;

    /// sections: of one network; nulls are left out. Cost: linear in the network.
    explicit CRunNetwork(const std::vector<CSectionPtr>& sections);

    /// Rows of the list in its order, repetitions included.
    const CRows& GetRows() const { return m_rows; }

    /// Rows that the network has, counted from 0; 0 for an empty list.
    std::uint32_t GetRowCount() const { return static_cast<std::uint32_t>(m_isListed.size()); }
    std::uint32_t GetNodeCount() const { return m_ways ? m_ways->GetNodeCount() : 0; }

    bool IsListed(std::uint32_t section) const { return m_isListed[section]; }

    std::uint32_t GetStart(std::uint32_t section) const { return m_ways->GetStart(section); }
    std::uint32_t GetEnd(std::uint32_t section) const { return m_ways->GetEnd(section); }
    bool HasNodes(std::uint32_t section) const { return GetStart(section) != None && GetEnd(section) != None; }

    /// Sections that enter or leave a node, in network order, listed or not; none for None.
    std::span<const std::uint32_t> GetWaysIn(std::uint32_t node) const {
        return node == None ? std::span<const std::uint32_t>() : m_ways->GetWaysIn(node);
    }
    std::span<const std::uint32_t> GetWaysOut(std::uint32_t node) const {
        return node == None ? std::span<const std::uint32_t>() : m_ways->GetWaysOut(node);
    }

    /// Sections that enter the start of a section, or leave its end.
    std::span<const std::uint32_t> GetIn(std::uint32_t section) const { return GetWaysIn(GetStart(section)); }
    std::span<const std::uint32_t> GetOut(std::uint32_t section) const { return GetWaysOut(GetEnd(section)); }

    /// The main outlet below a section, or the only one; None where flow divides and no main outlet is chosen.
    std::uint32_t GetMainOut(std::uint32_t section) const {
        return GetEnd(section) == None ? None : m_ways->GetMainOutlet(GetEnd(section));
    }

    std::string_view GetNodeName(std::uint32_t node) const { return m_topology->GetNodeAt(node)->GetName(); }

    /// The section itself, for what shows names and stores results.
    const CSectionPtr& GetSection(std::uint32_t section) const { return m_topology->GetSectionAt(section); }

    /// Sorts rows by the characters of the GUIDs: the order in which results are written.
    void SortByGuid(CRows& rows) const;

private:
    const OLMGis::Topology::CTopologyStorage* m_topology = nullptr;
    std::shared_ptr<const OLMGis::Topology::CConnectivity> m_ways; ///< null for an empty list
    CRows m_rows;
    std::vector<bool> m_isListed; ///< by row
};

/// All that a run needs of its network, read once before it begins.
class CRunInput : public CRunNetwork {
public:
    /// Reads the sections of the network. Cost: linear.
    CRunInput(const CRunNetwork& network, const CRunSettings& settings);

    /// Blank for a section that is not in the list.
    const CSectionInput& Of(std::uint32_t section) const { return m_inputs[section]; }

private:
    std::vector<CSectionInput> m_inputs; ///< by row
};

} // namespace Rain

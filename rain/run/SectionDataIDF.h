// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/run/RunInput.h"
#include "rain/run/RunStop.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

class CNodeDataIDF;
class CSectionDataIDF;

namespace Rain {

/// The calculations of one section in the order of calculating, no nulls; one without the partial area effect. The
/// records belong to the walk that made them.
using CRecordList = std::vector<const CSectionDataIDF*>;

} // namespace Rain

/// One calculation of a section by rainfall intensities: what was read of it and what came out. With the partial area
/// effect a section has several. Times in min; NotKnown marks what is not known yet. Finished records don't change.
class CSectionDataIDF {
public:
    static constexpr double NotKnown = -1000000.0;

    /// A blank record without a section.
    CSectionDataIDF() = default;

    /// What is known before the calculation, but for the total area. settings is not owned and outlives the record.
    CSectionDataIDF(std::uint32_t section, const Rain::CSectionInput& input, const Rain::CRunSettings& settings);

    /// Inlet time and the time along the path (min), or with running inlet times inlet time and flow time.
    double GetConcentrationTime() const;

    /// Time (min) at which the flow reaches the lower node, by which branches compare.
    double GetTimeToNode() const { return m_params->GetTimeToNode(m_inletTime, m_flowTime, m_upstreamTime); }

    /// The area (ha) that the flow comes from: all selected sections upstream, or with the partial area effect by
    /// chains those of the chain.
    double GetEffectiveArea() const;

    /// 1 where sections without an own catchment add no time and this is one.
    int IsCarrier() const;

    /// The time (min) that the section adds to the path: none for a carrier; the first section below a run of carriers
    /// adds theirs too.
    double GetTimeContribution() const;

    /// Where the roughness in force comes from.
    enum class enmRoughness : std::uint8_t { Section, ExistingPipe, PassBefore, SmallestPipe };
    enmRoughness GetRoughnessSource() const;

    /// Roughness in force (mm).
    double GetRoughness() const;

    /// Pipe type for the rules of the catalogue: of the existing pipe where that matters, else of the group.
    std::string_view GetPipeTypeId() const;

    /// Whether the existing pipe of the section matters: it is kept, or its group is taken.
    bool HasRelevantPipe() const;

    // Texts belong to the network and to the catalogue, which outlive the record.
    std::string_view m_name;          ///< of the section; also the key in CNodeDataIDF::m_results
    double m_intensity = NotKnown;    ///< of the last pass, l/(s·ha)
    double m_flow = NotKnown;         ///< design flow, m³/s
    double m_velocity = NotKnown;     ///< at partial filling, m/s
    double m_innerDiameter = 0.0;     ///< of the chosen pipe, mm
    double m_minDiameter = 0.0;       ///< last diameter asked of the catalogue, mm
    double m_flowTime = 0.0;          ///< through the section
    double m_upstreamTime = 0.0;      ///< along the path
    double m_carrierTime = 0.0;       ///< of the carriers directly upstream and the section itself, not yet counted
    double m_ownArea = 0.0;           ///< corrected catchment area, ha
    double m_inletTime = NotKnown;    ///< may grow along the path
    double m_retention = 1.0;         ///< multiplier of the flow time, -
    double m_slope = NotKnown;        ///< 1/1000
    double m_roughness = NotKnown;    ///< stored on the section, mm
    double m_totalArea = 0.0;         ///< own area and that of the selected sections upstream, ha
    double m_length = 0.0;            ///< plan length, m
    std::uint32_t m_section = 0;      ///< row
    std::string_view m_pipeGroupName; ///< group from which a pipe is chosen
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_existingPipe; ///< of the section, may be null
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_pipe;         ///< chosen, null until a flow needs one
    const CNodeDataIDF* m_startNode = nullptr;   ///< of the starting node; belongs to the walk, null outside one
    const CSectionDataIDF* m_previous = nullptr; ///< what the calculation builds on, may be null; outlives it
    const Rain::CRunSettings* m_params = nullptr;
    Rain::enmInputProblem m_problem = Rain::enmInputProblem::None; ///< the last one that was found

    /// Only for explanations.
    struct CSizing {
        double m_filling = 0.0;      ///< of the chosen pipe, % of the inside height
        double m_roughness = 0.0;    ///< taken in the last pass, mm
        double m_fullDiameter = 0.0; ///< that carries the flow of the last pass full, mm; before rules and lower bound
    };
    CSizing m_sizing;

    /// Keeps the area of the chain, so that what is built on the finished record need not walk it.
    void KeepChainArea() { m_chainArea = GetChainArea(); }

private:
    double GetChainArea() const;

    static constexpr double NotKept = std::numeric_limits<double>::quiet_NaN();
    double m_chainArea = NotKept; ///< own area and that of the chain upstream, ha
};

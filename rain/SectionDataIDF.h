// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/SectionInputs.h"

#include <boost/container/small_vector.hpp>
#include <boost/shared_ptr.hpp>

#include <limits>
#include <string>
#include <string_view>

class CNodeDataIDF;
class CRainITPParameters;
class CSectionDataIDF;

/// What a node or a section keeps of one section: its computations in the order of computing. Most hold one.
using CRecordList = boost::container::small_vector<boost::shared_ptr<CSectionDataIDF>, 1>;

/// One computation of a section by rain intensities: what was read of it and what came out. With the partial area
/// effect a section has several. Times in min; NotKnown marks what is not known yet. Finished records don't change.
///
/// A record keeps its whole upstream path alive, through m_previous and through m_startNode. Releasing it unwinds that
/// path step by step, however long it is.
class CSectionDataIDF {
public:
    static constexpr double NotKnown = -1000000.0;

    /// A blank record without a section.
    CSectionDataIDF() = default;

    /// What is known before the computation. totalArea (ha) is asked for only where the section can have areas.
    /// params is not owned and outlives the record.
    template <class TotalArea>
    CSectionDataIDF(const boost::shared_ptr<OLMGis::Topology::CSection>& section, const CRainITPParameters& params,
                    const CSectionInput& input, TotalArea&& totalArea)
        : CSectionDataIDF(section, params, input) {
        if (!Read(input))
            return;
        m_ownArea = input.m_ownArea;
        m_totalArea = totalArea();
    }

    CSectionDataIDF(const CSectionDataIDF&) = default; ///< shares what is shared
    CSectionDataIDF& operator=(const CSectionDataIDF&) = default;
    ~CSectionDataIDF();

    /// Inlet time and the time along the path (min); with Turkish parameters, whose inlet time grows along the path,
    /// inlet time and flow time.
    double GetConcentrationTime() const;

    /// The area (ha) behind the flow: all selected sections upstream, or with the partial area effect those of the
    /// chain.
    double GetEffectiveArea() const;

    /// Whether the section only carries flow through: it has no catchment of its own, and such sections are to add no
    /// time.
    int IsCarrier() const;

    /// The time (min) that the section adds to the path: none for a carrier; the first section below a run of carriers
    /// adds theirs too.
    double GetTimeContribution() const;

    /// Roughness in force (mm): stored on the section, else of the existing pipe where that is looked at, else of the
    /// pipe of the pass before, else of the smallest pipe of the group.
    double GetRoughness() const;

    /// Pipe type for the rules of the catalogue: of the existing pipe where that is looked at, else of the group.
    std::string_view GetPipeTypeId() const;

    /// Whether the pipe that stands on the section is looked at at all: kept, or its group taken.
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
    double m_inletTime = NotKnown;    ///< grows along the path with Turkish parameters
    double m_retention = 1.0;         ///< multiplier of the flow time under the Bulgarian standard
    double m_slope = NotKnown;        ///< 1/1000
    double m_roughness = NotKnown;    ///< stored on the section, mm
    double m_totalArea = 0.0;         ///< own area and that of the selected sections upstream, ha
    std::string m_error;              ///< why the section can't be computed; empty when it can
    std::string_view m_pipeGroupName; ///< group in which a pipe is sought
    boost::shared_ptr<OLMGis::Topology::CSection> m_section;
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_existingPipe; ///< of the section, may be null
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_pipe;         ///< chosen, null until a flow needs one
    boost::shared_ptr<CNodeDataIDF> m_startNode;                      ///< of the starting node
    boost::shared_ptr<CSectionDataIDF> m_previous;                    ///< what the computation builds on, may be null
    const CRainITPParameters* m_params = nullptr;

    /// Beside the results: what explanations tell and no result holds.
    struct CSizing {
        double m_filling = 0.0;      ///< of the chosen pipe, % of the inside height
        double m_roughness = 0.0;    ///< taken in the last pass, mm
        double m_fullDiameter = 0.0; ///< that carries the flow of the last pass full, mm; before rules and lower bound
    };
    CSizing m_sizing;
    double m_length = 0.0; ///< plan length, m

    /// Keeps the area of the chain, so that what is built on the finished record need not walk it.
    void KeepChainArea() { m_chainArea = GetChainArea(); }

private:
    CSectionDataIDF(const boost::shared_ptr<OLMGis::Topology::CSection>& section, const CRainITPParameters& params,
                    const CSectionInput& input);
    bool Read(const CSectionInput& input);
    double GetChainArea() const;

    static constexpr double NotKept = std::numeric_limits<double>::quiet_NaN();
    double m_chainArea = NotKept; ///< own area and that of the chain upstream, ha
};

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"
#include "rain/curves/RainChoices.h"
#include "rain/editions/DesignStandard.h"

#include <boost/shared_ptr.hpp>

#include <memory>
#include <string>

namespace Rain {

class CRainfall;

/// The parameters of one run. Nothing in a run changes them.
struct CRunSettings {
    int m_rainfallMode = RainChoices::CurveFile;       ///< as the form stores it
    int m_calcStandard = 0;                            ///< as the form stores it
    std::shared_ptr<const CRainfall> m_rainfall;       ///< null for an unknown mode: no rain
    std::shared_ptr<const CDesignStandard> m_standard; ///< null for an unknown one: no factors
    int m_stormCad = RainChoices::TimeToLowerEnd;
    double m_precision = 0.5;         ///< of the intensity, %
    double m_waterViscosity = 1.0e-6; ///< m²/s
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_pipeGroup;
    std::string m_pipeTypeId;        ///< of the group
    double m_pipeFill = 100.0;       ///< greatest allowed filling, 0 to 100 %
    double m_minimalDiameter = 0.0;  ///< least diameter to ask the catalogue for, mm
    double m_defaultRoughness = 1.0; ///< of the smallest pipe of the group, mm
    int m_savePipe = 0;              ///< non-zero stores the chosen pipes
    int m_useExistingPipe = 0;
    int m_existingPipeGroup = 0;
    int m_partialArea = 0;
    int m_variationSearch = 0;
    int m_ignoreCarrierPipes = 0;
    int m_branchingFlowTime = RainChoices::LongestBranch;

    /// Intensity (l/(s·ha)) for a concentration time (min) and an effective area (ha); negative without a curve.
    double GetIntensity(double time, double area) const;

    /// Whether inlet times grow along the path, see CRainfall.
    bool HasRunningInletTime() const;

    /// Concentration time (min) of a section.
    double GetConcentrationTime(double inletTime, double flowTime, double upstreamTime) const {
        return inletTime + (HasRunningInletTime() ? flowTime : upstreamTime);
    }

    /// Time (min) at which the flow of a section reaches its lower node, by which branches compare.
    double GetTimeToNode(double inletTime, double flowTime, double upstreamTime) const {
        return HasRunningInletTime() ? inletTime + flowTime : upstreamTime;
    }

    /// Multiplier (-) of the flow for an inlet time (min).
    double GetFlowFactor(double inletTime) const {
        return m_standard ? m_standard->GetFlowFactor(inletTime).value_or(1.0) : 1.0;
    }

    /// Attribute by which flow times are multiplied; null without one.
    const CRequiredNumber* FindTimeFactor() const { return m_standard ? m_standard->FindTimeFactor() : nullptr; }
};

/// Which of the branches that meet at a node goes on downstream: the one with the longest or shortest time to the node,
/// of equal ones the first. Branches are offered in the order of their section names.
class CBranchChoice {
public:
    explicit CBranchChoice(const CRunSettings& settings) : m_rule(settings.m_branchingFlowTime) {}

    /// Offers a branch by its time to the node (min). Whether it is the best so far.
    bool Offer(double time) {
        const bool isBetter = m_isFirst || (m_rule == RainChoices::LongestBranch && time > m_best) ||
                              (m_rule == RainChoices::ShortestBranch && time < m_best);
        if (isBetter)
            m_best = time;
        m_isFirst = false;
        return isBetter;
    }

private:
    int m_rule;
    bool m_isFirst = true;
    double m_best = 0.0;
};

} // namespace Rain

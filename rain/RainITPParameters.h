// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Catalog.h"
#include "host/sewage_core/FlowCalculatorParameters.h"
#include "host/sewage_core/IDPTurkParams.h"
#include "rain/GuidMap.h"
#include "rain/IDFCurves.h"
#include "rain/RORainCoefficients.h"
#include "rain/RainChoices.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

/// The parameters of one run of the rain calculation by intensity curves, read from its form.
class CRainITPParameters {
public:
    /// Reads the form of parameters (neither null) in a fixed order: a refused question stops the reading. interactive:
    /// non-zero asks before a search over combinations, whose cost can be enormous. 1 when nothing is missing or out of
    /// range; else 0, with m_errors naming what is, empty after a mere No.
    int ReadParameters(OLMGis::Sewage::CFlowCalculatorParameters* parameters, int interactive);

    /// What to show after a failed reading: the complaints as a list.
    std::string BuildParameterErrorText() const;

    int m_rainfallMode = RainChoices::CurveFile;
    int m_calcStandard = RainChoices::StandardPlain;
    CSelectedSections m_selectedSections; ///< of the walk at hand
    CIDFCurves m_curves;
    double m_frequency = 0.0;       ///< key of the curve in use
    double m_rainIntensity = 100.0; ///< base intensity of the formula, l/(s·ha)
    double m_frequencyN = 1.0;      ///< of the formula, 1/year
    OLMGis::Sewage::CIDPTurkParams m_turkParams;
    int m_stormCad = RainChoices::TimeToLowerEnd;
    double m_precision = 0.5;         ///< of the intensity, %
    double m_waterViscosity = 1.0e-6; ///< m²/s
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_pipeGroup;
    double m_pipeFill = 100.0;       ///< highest allowed filling, 0 to 100 %
    double m_minimalDiameter = 0.0;  ///< lower bound of the computed diameter, mm
    double m_defaultRoughness = 1.0; ///< of the smallest pipe of the group, mm
    int m_savePipe = 0;              ///< non-zero stores the chosen pipes
    int m_useExistingPipe = 0;
    int m_existingPipeGroup = 0;
    int m_partialArea = 0;
    int m_variationSearch = 0;
    int m_ignoreCarrierPipes = 0;
    int m_branchingFlowTime = RainChoices::LongestBranch;
    CRORainCoefficients m_roCoefficients;
    std::string m_pipeTypeId; ///< of the group
    std::vector<std::string> m_errors;
    std::vector<std::string> m_unread; ///< names of properties whose texts are not understood, so that the usual hold

    /// What a search may cost, told behind the question whether to start it; empty for nothing.
    std::string m_forecastText;

private:
    using CForm = OLMGis::Topology::CPropertiesEx;

    void ReadRain(const CForm& form);
    void ReadPipeGroup(const CForm& form);
    static std::string NameOf(const CForm& form, const char* tag);
    void Complain(const CForm& form, const char* tag);
};

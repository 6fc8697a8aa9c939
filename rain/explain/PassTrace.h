// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/RunTrace.h"
#include "rain/curves/Rainfall.h"
#include "rain/run/SectionIteration.h"

#include <memory>
#include <vector>

namespace RainTrace {

/// Notes the passes of iterations in a trace.
class CPassTrace final : public Rain::IPassWatch {
public:
    /// Nothing is owned.
    CPassTrace(OLMGis::Utility::CRunTrace& trace, const Rain::CRunInput& input, const Rain::CRunSettings& settings);

    void OnBegin(const CSectionDataIDF& record) override;
    void OnEnd(const CSectionDataIDF& record, int pass, double next) override;

private:
    OLMGis::Utility::CTraceTable& m_table;
    const Rain::CRunInput& m_input;
    const Rain::CRunSettings& m_settings;
    std::vector<std::unique_ptr<Rain::CRainfall>> m_rainfalls; ///< all that there are, for their columns
    double m_timeBefore = 0.0;        ///< along the path, with running inlet times in the section, min
    double m_concentrationTime = 0.0; ///< with which the pass begins, min
    CSectionDataIDF::enmRoughness m_roughnessSource = CSectionDataIDF::enmRoughness::Section;
};

} // namespace RainTrace

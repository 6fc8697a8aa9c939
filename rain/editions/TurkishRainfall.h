// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/IDPTurkParams.h"
#include "rain/curves/Rainfall.h"

namespace Rain {

/// The Turkish extension: intensities by rows of parameters for areas; the inlet time grows along the path.
class CTurkishRainfall final : public CRainfall {
public:
    int GetMode() const override;
    std::vector<const char*> AddFields(const CCategoryPtr& category) const override;
    void Read(CFormReading& reading) override;
    double GetIntensity(double time, double area) const override { return m_parameters.getIntesity(area, time); }
    bool HasRunningInletTime() const override { return true; }
    std::vector<CExplained> ExplainParameters() const override;
    std::vector<CExplained> ExplainIntensity(double time, double area) const override;
    std::string ShowSource(const CExplainedNumbers& basis, std::string_view curveFile) const override;
    std::string ShowFormula() const override;
    CSheetFormula ShowIntensity(const CExplainedNumbers& basis, const CExplainedNumbers& pass) const override;

private:
    OLMGis::Sewage::CIDPTurkParams m_parameters;
};

} // namespace Rain

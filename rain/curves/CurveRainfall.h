// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/curves/IDFCurves.h"
#include "rain/curves/Rainfall.h"

namespace Rain {

/// Intensities of one curve of a file.
class CCurveRainfall final : public CRainfall {
public:
    int GetMode() const override;
    std::vector<const char*> AddFields(const CCategoryPtr& category) const override;
    void Read(CFormReading& reading) override;
    double GetIntensity(double time, double area) const override;
    const CIDFCurves* FindCurves() const override { return &m_curves; }
    std::vector<std::string> ListProblems() const override;
    std::vector<CExplained> ExplainParameters() const override;
    std::vector<CExplained> ExplainIntensity(double time, double area) const override;
    std::string ShowSource(const CExplainedNumbers& basis, std::string_view curveFile) const override;
    std::string ShowFormula() const override;
    CSheetFormula ShowIntensity(const CExplainedNumbers& basis, const CExplainedNumbers& pass) const override;

private:
    CIDFCurves m_curves;
    double m_frequency = 0.0; ///< key of the curve in use
};

} // namespace Rain

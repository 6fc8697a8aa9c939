// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/curves/Rainfall.h"

namespace Rain {

/// Intensities by a formula from a base intensity and a frequency: the time coefficient of Reinhold 1940.
class CFormulaRainfall final : public CRainfall {
public:
    /// baseIntensity: l/(s·ha)   frequency: n, 1/year
    explicit CFormulaRainfall(double baseIntensity = 100.0, double frequency = 1.0)
        : m_baseIntensity(baseIntensity), m_frequency(frequency) {}

    int GetMode() const override;
    std::vector<const char*> AddFields(const CCategoryPtr& category) const override;
    void Read(CFormReading& reading) override;

    /// (1 / n^0.25 - 0.369) · 38 / (t + 9) · base intensity. 0.369 is fixed here, do not refine: the simple rain
    /// calculation has its own constant.
    double GetIntensity(double time, double area) const override;
    std::vector<CExplained> ExplainParameters() const override;
    std::string ShowSource(const CExplainedNumbers& basis, std::string_view curveFile) const override;
    std::string ShowFormula() const override;
    CSheetFormula ShowIntensity(const CExplainedNumbers& basis, const CExplainedNumbers& pass) const override;

private:
    double m_baseIntensity; ///< l/(s·ha)
    double m_frequency;     ///< 1/year
};

} // namespace Rain

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/curves/FormulaRainfall.h"

#include "flow/FormFields.h"
#include "rain/curves/RainChoices.h"

#include <fmt/format.h>

#include <cmath>

namespace Rain {

namespace {

constexpr int IntensityLabel = 2483;
constexpr int FrequencyLabel = 2485;

} // namespace

int CFormulaRainfall::GetMode() const {
    return RainChoices::Formula;
}

std::vector<const char*> CFormulaRainfall::AddFields(const CCategoryPtr& category) const {
    Flow::AddNumber(category, "RAIN_INTESITY", IntensityLabel, 100.0);
    Flow::AddNumber(category, "FREQUENCY_N", FrequencyLabel, 1.0);
    return {"RAIN_INTESITY", "FREQUENCY_N"};
}

void CFormulaRainfall::Read(CFormReading& reading) {
    m_baseIntensity = reading.m_form.GetDblProperty("RAIN_INTESITY", 0.0, 1);
    m_frequency = reading.m_form.GetDblProperty("FREQUENCY_N", 0.0, 1);
}

double CFormulaRainfall::GetIntensity(double time, double /*area*/) const {
    return (1.0 / std::pow(m_frequency, 0.25) - 0.369) * ((38.0 / (time + 9.0)) * m_baseIntensity);
}

std::vector<CExplained> CFormulaRainfall::ExplainParameters() const {
    return {{"base_intensity", "l/(s·ha)", m_baseIntensity}, {"frequency_n", "1/year", m_frequency}};
}

std::string CFormulaRainfall::ShowSource(const CExplainedNumbers& basis, std::string_view /*curveFile*/) const {
    return fmt::format("base intensity {} l/(s·ha) (RAIN_INTESITY), frequency n = {} 1/year (FREQUENCY_N)",
                       ShowNumber(basis.m_number("base_intensity")), ShowNumber(basis.m_number("frequency_n")));
}

std::string CFormulaRainfall::ShowFormula() const {
    return "= (1 / n^0.25 - 0.369) · 38 / (t + 9) · i0, intensity, l/(s·ha)";
}

CSheetFormula CFormulaRainfall::ShowIntensity(const CExplainedNumbers& basis, const CExplainedNumbers& pass) const {
    return {"i",
            fmt::format("(1 / {}^0.25 - 0.369) · 38 / ({} + 9) · {}", ShowNumber(basis.m_number("frequency_n")),
                        ShowNumber(pass.m_number("concentration_time")), ShowNumber(basis.m_number("base_intensity"))),
            "l/(s·ha)"};
}

} // namespace Rain

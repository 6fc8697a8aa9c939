// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/editions/DesignStandard.h"
#include "rain/editions/RORainCoefficients.h"

namespace Rain {

/// The choice "RO": a coefficient by kind of area and inlet time multiplies the flow.
class CRomanianStandard final : public CDesignStandard {
public:
    explicit CRomanianStandard(CRORainCoefficients coefficients = {}) : m_coefficients(coefficients) {}

    int GetCode() const override { return 2; }
    const char* GetName() const override { return "RO"; }
    std::vector<const char*> AddFields(const CCategoryPtr& category) const override;
    void Read(CFormReading& reading) override;
    std::optional<double> GetFlowFactor(double inletTime) const override;
    CShownFactor ShowFlowFactor() const override { return {"c", "c of the standard (RO)"}; }

private:
    CRORainCoefficients m_coefficients;
};

} // namespace Rain

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/SewageCalculations.h"

#include "host/gis_core/HostServices.h"
#include "host/sewage_calculations/CalculationRun.h"

#include <fmt/format.h>

#include <string>

namespace OLMGis::Sewage {

namespace {

/// Shows the figures of a preview in a yes/no question; yes stores the results.
int AskAfterPreview(std::string_view title, const CReport& report) {
    std::string text(title);
    for (const auto& [label, value] : report)
        text += fmt::format("\n{}{}{}", label, value.empty() ? "" : ": ", value);
    return System::HostServices().AskYesNo(text);
}

void Run(std::string_view key) {
    CCalculationRequest request;
    request.m_key = key;
    request.m_showPreview = AskAfterPreview;
    (void)RunCalculation(request);
}

} // namespace

void CSewageCalculations::CalcWasteWaterPercent() {
    Run("01_WASTE_PERCENT");
}

void CSewageCalculations::CalcWasteWaterArea() {
    Run("01_WASTE_AREAS");
}

void CSewageCalculations::CalcRainSimple() {
    Run("00_RAIN_SIMPLE");
}

void CSewageCalculations::CalcRainITP() {
    Run("001_RAIN_ITP");
}

void CSewageCalculations::CalcFlowAdditional() {
    Run("02_ADDITIONAL");
}

void CSewageCalculations::CalcFlowTransit() {
    Run("03_FC_TRANSIT");
}

void CSewageCalculations::CalcFlowTotal() {
    Run("04_FC_TOTAL");
}

} // namespace OLMGis::Sewage

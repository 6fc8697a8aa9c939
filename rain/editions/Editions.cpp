// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/editions/Editions.h"

#include "rain/curves/CurveRainfall.h"
#include "rain/curves/FormulaRainfall.h"
#include "rain/editions/BulgarianStandard.h"
#include "rain/editions/PlainStandard.h"
#include "rain/editions/RomanianStandard.h"
#include "rain/editions/TurkishRainfall.h"

namespace Rain {

std::vector<std::unique_ptr<CRainfall>> MakeRainfalls() {
    std::vector<std::unique_ptr<CRainfall>> all;
    all.push_back(std::make_unique<CCurveRainfall>());
    all.push_back(std::make_unique<CFormulaRainfall>());
    all.push_back(std::make_unique<CTurkishRainfall>());
    return all;
}

std::vector<std::unique_ptr<CDesignStandard>> MakeStandards() {
    std::vector<std::unique_ptr<CDesignStandard>> all;
    all.push_back(std::make_unique<CPlainStandard>());
    all.push_back(std::make_unique<CBulgarianStandard>());
    all.push_back(std::make_unique<CRomanianStandard>());
    return all;
}

std::unique_ptr<CRainfall> MakeRainfall(int mode) {
    for (auto& rainfall : MakeRainfalls())
        if (rainfall->GetMode() == mode)
            return std::move(rainfall);
    return nullptr;
}

std::unique_ptr<CDesignStandard> MakeStandard(int code) {
    for (auto& standard : MakeStandards())
        if (standard->GetCode() == code)
            return std::move(standard);
    return nullptr;
}

} // namespace Rain

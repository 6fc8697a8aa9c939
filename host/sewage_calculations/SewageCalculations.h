// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::Sewage {

/// The operations behind panel items and menus. Each runs one calculator on the whole active network, with the form
/// editor and host services in force. Does nothing when the calculator is not registered.
class CSewageCalculations {
public:
    static void CalcWasteWaterPercent();
    static void CalcWasteWaterArea();
    static void CalcRainSimple();
    static void CalcRainITP();
    static void CalcFlowAdditional();
    static void CalcFlowTransit();
    static void CalcFlowTotal();
};

} // namespace OLMGis::Sewage

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_checks/NetworkCheck.h"

namespace OLMGis::NetworkChecks {

/// Compares the drop of the level line (LEVEL_LINE_0 - LEVEL_LINE_1) with the drop of the design slope (SECTION_SLOPE
/// times the plan length): calculations use the design slope, drawings the levels. A finding where they differ by more
/// than a tolerance (m); the drop, because levels are given to the centimetre and the slope of a short section is
/// coarse. Skips sections without levels, length or design slope.
class CLevelSlopeCheck final : public CNetworkCheck {
public:
    CLevelSlopeCheck();

    std::vector<std::string> GetReadKeys() const override {
        return {"LEVEL_LINE_0", "LEVEL_LINE_1", "SECTION_SLOPE", "length"};
    }

private:
    std::vector<CField> GetFields() const override;
    void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
             Topology::CFindingList& findings) override;
};

} // namespace OLMGis::NetworkChecks

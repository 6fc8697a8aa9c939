// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_checks/NetworkCheck.h"
#include "host/sewage_core/SectionHydraulics.h"

namespace OLMGis::NetworkChecks {

/// Compares the flow of the design (FLOW_TOTAL, without it FLOW_RAIN_IDF) with the full-pipe capacity. A finding where
/// Q/Qfull (%) is above VALUE_MAX; one where the pipe has no capacity because its slope is not above 0. Skips sections
/// without flow, pipe or slope.
class COverfullCheck final : public CNetworkCheck {
public:
    COverfullCheck();

    std::vector<std::string> GetReadKeys() const override { return Sewage::GetHydraulicsReadKeys(); }

private:
    std::vector<CField> GetFields() const override;
    void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
             Topology::CFindingList& findings) override;
};

} // namespace OLMGis::NetworkChecks

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_checks/NetworkCheck.h"
#include "host/sewage_core/SectionHydraulics.h"

namespace OLMGis::NetworkChecks {

/// Checks that the velocity (m/s) at the flow of the design (FLOW_TOTAL, without it FLOW_RAIN_IDF) is within two
/// limits; one equal to a limit is accepted. Skips sections without flow, pipe or a slope above 0.
class CVelocityCheck final : public CNetworkCheck {
public:
    CVelocityCheck();

    std::vector<std::string> GetReadKeys() const override { return Sewage::GetHydraulicsReadKeys(); }

private:
    std::vector<CField> GetFields() const override;
    void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
             Topology::CFindingList& findings) override;
};

} // namespace OLMGis::NetworkChecks

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_checks/NetworkCheck.h"

namespace OLMGis::Sewage {

/// Lists results that no longer fit what they were calculated from, see FindOutdatedResults. One finding per result, at
/// the first section that has it; it names what changed and the calculator that renews the result.
class COutdatedResultCheck final : public NetworkChecks::CNetworkCheck {
public:
    COutdatedResultCheck();

private:
    void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
             Topology::CFindingList& findings) override;
};

} // namespace OLMGis::Sewage

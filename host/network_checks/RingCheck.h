// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_checks/NetworkCheck.h"

namespace OLMGis::NetworkChecks {

/// Finds the sections that lead, in the direction of flow, back to where they start. No flow can be summed along a
/// ring: its transit flow stays 0. One finding per section.
class CRingCheck final : public CNetworkCheck {
public:
    CRingCheck();

private:
    void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
             Topology::CFindingList& findings) override;
};

} // namespace OLMGis::NetworkChecks

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_checks/NetworkCheck.h"

namespace OLMGis::NetworkChecks {

/// Checks that the flow of every section gets to an outlet: a node that sections enter and none leaves, or the end of a
/// section without an end node. In this order
/// - one finding for each section from which no way at all leads to an outlet: a ring without an exit is below it;
/// - one for each node where a main outlet is missing, with the number of sections whose flow ends there;
/// - one for each ring of main outlets, at its first section, with the number of sections whose flow ends in it.
class COutletCheck final : public CNetworkCheck {
public:
    COutletCheck();

    std::vector<std::string> GetReadKeys() const override { return {"MAIN_SECT_OUT"}; }

private:
    void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
             Topology::CFindingList& findings) override;
};

} // namespace OLMGis::NetworkChecks

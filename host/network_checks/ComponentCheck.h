// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_checks/NetworkCheck.h"

namespace OLMGis::NetworkChecks {

/// Checks that the network hangs together, whatever the direction of flow. One finding for each separate part beyond
/// the accepted number of parts (VALUE_MAX), the parts with the most sections being accepted first, of equal ones those
/// that come first in the network. A part is named by its first section; a node without a section is a part.
class CComponentCheck final : public CNetworkCheck {
public:
    CComponentCheck();

private:
    std::vector<CField> GetFields() const override;
    void Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
             Topology::CFindingList& findings) override;
};

} // namespace OLMGis::NetworkChecks

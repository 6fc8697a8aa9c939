// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/IFunctionalAnalysisItem.h"

#include <boost/shared_ptr.hpp>

#include <string_view>
#include <vector>

namespace OLMGis::Topology {
class CFunctionalAnalysisManager;
}

namespace OLMGis::Sewage {

/// Our own checks, registered in the active project from its making until its end. A program makes it after it has
/// loaded the module and ends it before it loads the module anew: checks run, and are listed, in the order of
/// registration, the module's first.
class CNetworkChecks {
public:
    CNetworkChecks();
    ~CNetworkChecks();
    CNetworkChecks(const CNetworkChecks&) = delete;
    CNetworkChecks& operator=(const CNetworkChecks&) = delete;

    /// Whether the key (plain characters) is that of one of them.
    static bool Has(std::string_view key);

private:
    Topology::CFunctionalAnalysisManager& m_manager; ///< of the project in which they are registered
};

} // namespace OLMGis::Sewage

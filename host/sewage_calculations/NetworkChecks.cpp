// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/NetworkChecks.h"

#include "host/network_checks/ComponentCheck.h"
#include "host/network_checks/LevelSlopeCheck.h"
#include "host/network_checks/MissingInputCheck.h"
#include "host/network_checks/OutletCheck.h"
#include "host/network_checks/OverfullCheck.h"
#include "host/network_checks/RingCheck.h"
#include "host/network_checks/ShearStressCheck.h"
#include "host/network_checks/VelocityCheck.h"
#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/sewage_calculations/OutdatedResultCheck.h"

#include <boost/make_shared.hpp>

#include <algorithm>

namespace OLMGis::Sewage {

using Topology::CFunctionalAnalysisManager;
using Topology::IFunctionalAnalysisItem;

namespace {

template <class... Checks>
std::vector<boost::shared_ptr<IFunctionalAnalysisItem>> MakeItems() {
    return {boost::make_shared<Checks>()...};
}

/// All of them, in the order of their keys.
const std::vector<boost::shared_ptr<IFunctionalAnalysisItem>>& GetItems() {
    using namespace NetworkChecks;
    static const auto items = MakeItems<CLevelSlopeCheck, CRingCheck, COutletCheck, CComponentCheck, COverfullCheck,
                                        CVelocityCheck, CShearStressCheck, CMissingInputCheck, COutdatedResultCheck>();
    return items;
}

} // namespace

CNetworkChecks::CNetworkChecks() : m_manager(*CFunctionalAnalysisManager::Instance()) {
    for (const auto& item : GetItems())
        m_manager.RegisterFunctionalAnalysisItem(item);
}

CNetworkChecks::~CNetworkChecks() {
    for (const auto& item : GetItems())
        m_manager.UnregisterFunctionalAnalysisItem(item->GetItemKey());
}

bool CNetworkChecks::Has(std::string_view key) {
    return std::any_of(GetItems().begin(), GetItems().end(),
                       [key](const auto& item) { return item->GetItemKey() == key; });
}

} // namespace OLMGis::Sewage

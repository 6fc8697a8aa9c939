// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/AnalysedNetwork.h"
#include "host/network_core/FAMsg.h"
#include "host/network_core/PropertiesEx.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace OLMGis::Topology {

/// One check of a network against design rules. Items only report: they write no attribute and change no entity. They
/// have no state: two runs of one item share nothing.
///
/// The order of the operations is that of their slots, on which modules built apart rely; so is the missing virtual
/// destructor. An item is released through the shared pointer that was made on its concrete class, never through this
/// interface, which is why its destructor is out of reach.
class IFunctionalAnalysisItem {
public:
    /// The identity of the item. Two keys may begin with the same number.
    virtual std::string GetItemKey() = 0;

    /// For the user, in the language in force.
    virtual std::string GetItemName() = 0;

    /// 1 when the item makes sense for networks of a system function (CGisSystem::GetSystemFunction), else 0.
    virtual int IsAvailableForSystemFunction(int systemFunction) = 0;

    virtual int GetItemFlagA() { return 0; }

    /// A new form at each call, which the caller owns; without a category for an item without parameters. Never null.
    virtual boost::shared_ptr<CPropertiesEx> CreateProperties() = 0;

    /// The check. Appends to findings and leaves what is already there. A null network gives nothing and shows no
    /// progress. Catches nothing: after an exception the progress still shows, and what was appended stays.
    virtual void RunAnalysis(boost::shared_ptr<CPropertiesEx> properties, CAnalysedNetwork* network,
                             std::vector<boost::shared_ptr<CFAMsg>>& findings) = 0;

    virtual int GetItemFlagB() { return 0; }

    /// A family of items; may be shared, may be empty.
    virtual std::string GetAnalysisTag() { return {}; }

protected:
    ~IFunctionalAnalysisItem() = default;
};

} // namespace OLMGis::Topology

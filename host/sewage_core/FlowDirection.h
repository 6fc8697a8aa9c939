// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Node.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace OLMGis::Sewage {

/// Main outlets: which way the flow goes on where several sections leave a node. The GUID of the section is the node's
/// attribute MAIN_SECT_OUT.
class CFlowDirection {
public:
    /// Whether the node needs a main outlet: at least one section enters it and at least two leave it.
    static bool NeedsMainOutlet(const Topology::CNode& node);

    /// 1 when every node of the list that needs a main outlet has one that still leaves it; nulls count as settled.
    static int IsMainFlowSectSet(const std::vector<boost::shared_ptr<Topology::CNode>>& nodes);

    /// The settled main outlet; without a settled one the only section out, else null.
    static boost::shared_ptr<Topology::CSection> GetMainOutSection(const boost::shared_ptr<Topology::CNode>& node);
};

} // namespace OLMGis::Sewage

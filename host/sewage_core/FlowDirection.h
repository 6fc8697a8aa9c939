// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Node.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace OLMGis::Sewage {

/// Main outlets: which way the flow goes on where several sections leave a node. The GUID of the section is the node's
/// attribute MAIN_SECT_OUT. Lists of nodes may hold nulls, which count as settled.
class CFlowDirection {
public:
    using CNodeList = std::vector<boost::shared_ptr<Topology::CNode>>;

    /// Whether the node needs a main outlet: at least one section enters it and at least two leave it.
    static bool NeedsMainOutlet(const Topology::CNode& node);

    /// 1 when every node of the list that needs a main outlet has one that still leaves it.
    static int IsMainFlowSectSet(const CNodeList& nodes);

    /// The nodes of the list that need a main outlet and have none that leaves them; order kept, no nulls.
    static CNodeList NodesWithoutMainOutlet(const CNodeList& nodes);

    /// The settled main outlet; without a settled one the only section out, else null.
    static boost::shared_ptr<Topology::CSection> GetMainOutSection(const boost::shared_ptr<Topology::CNode>& node);

    /// Lets the direction editor in force settle what is unsettled among the nodes. Non-zero when it was completed, and
    /// when there was nothing to settle; 0 when it was left, and for a null list.
    static int ShowDirectionEditor(const CNodeList* nodes);

    /// The outlet that suits best where nobody chose: the lowest level line at the node (m, LEVEL_LINE_0 of the outlet;
    /// without one last), then the largest pipe (inside width times inside height; none last), then the first in the
    /// order of the network. Null where no section leaves. Cost: the sections out.
    static boost::shared_ptr<Topology::CSection> ChooseMainOutlet(const boost::shared_ptr<Topology::CNode>& node);

    /// Stores a section as the node's main outlet. Non-zero when stored; 0 and no change for a null, for a section that
    /// does not leave the node, and where the attribute can't be written.
    static int Settle(const boost::shared_ptr<Topology::CNode>& node,
                      const boost::shared_ptr<Topology::CSection>& section);

    /// Settles by ChooseMainOutlet every node of the list that needs it and has none; returns how many were stored.
    static int SettleAutomatically(const CNodeList& nodes);
};

} // namespace OLMGis::Sewage

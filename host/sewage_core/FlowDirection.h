// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Node.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace OLMGis::Sewage {

/// Main outlets: which way the flow goes on where several sections leave a node. The GUID of the chosen section is the
/// node's attribute MAIN_SECT_OUT. Lists of nodes may contain nulls, which need no main outlet.
class CFlowDirection {
public:
    using CNodeList = std::vector<boost::shared_ptr<Topology::CNode>>;

    /// Whether the node needs a main outlet: at least one section enters it and at least two leave it.
    static bool NeedsMainOutlet(const Topology::CNode& node);

    /// 1 when every node of the list that needs a main outlet has one, and that section still leaves the node.
    static int IsMainFlowSectSet(const CNodeList& nodes);

    /// The nodes of the list that need a main outlet and have none that leaves them; in the order of the list, no
    /// nulls.
    static CNodeList NodesWithoutMainOutlet(const CNodeList& nodes);

    /// The chosen main outlet; without one the only section that leaves the node, else null.
    static boost::shared_ptr<Topology::CSection> GetMainOutSection(const boost::shared_ptr<Topology::CNode>& node);

    /// Has the missing main outlets of the nodes chosen in the direction editor in force. Non-zero when the user
    /// completed it and when none was missing; 0 when the user left it, and for a null list.
    static int ShowDirectionEditor(const CNodeList* nodes);

    /// The outlet that an automatic choice takes: the lowest level line at the node (m, LEVEL_LINE_0 of the outlet;
    /// without one last), then the largest pipe (inside width times inside height; none last), then the first in the
    /// order of the network. Null where no section leaves the node. Cost: the sections that leave.
    static boost::shared_ptr<Topology::CSection> ChooseMainOutlet(const boost::shared_ptr<Topology::CNode>& node);

    /// Stores a section as the node's main outlet. Non-zero when stored; 0 and no change for a null, for a section that
    /// does not leave the node, and where the attribute cannot be written.
    static int SetMainOutlet(const boost::shared_ptr<Topology::CNode>& node,
                             const boost::shared_ptr<Topology::CSection>& section);

    /// Stores the outlet of ChooseMainOutlet for every node of the list that needs one and has none; returns how many
    /// were stored.
    static int ChooseAutomatically(const CNodeList& nodes);
};

} // namespace OLMGis::Sewage

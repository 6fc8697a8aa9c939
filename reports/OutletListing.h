// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Node.h"
#include "host/network_core/Section.h"
#include "reports/Listing.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace Reports {

/// A node that needs a main outlet: at least one section enters it and at least two leave it.
struct CFork {
    const OLMGis::Topology::CNode* m_node;
    std::vector<boost::shared_ptr<OLMGis::Topology::CSection>> m_in;
    std::vector<boost::shared_ptr<OLMGis::Topology::CSection>> m_out;
    const OLMGis::Topology::CSection* m_mainOutlet; ///< null where none is chosen
};

/// The forks of the active project in the order of the network.
std::vector<CFork> FindForks();

/// One row per fork: node, main outlet, sections out and in. Borrows the forks.
CListing MakeOutletListing(const std::vector<CFork>& forks);

/// Names joined by blanks.
std::string JoinNames(const std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>& sections);

} // namespace Reports

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Node.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace OLMGis::Topology {

/// The network that a run of the functional analysis examines. Its orders are the orders of the findings. No nulls.
struct CAnalysedNetwork {
    std::vector<boost::shared_ptr<CNode>> m_nodes;
    std::vector<boost::shared_ptr<CSection>> m_sections;
};

} // namespace OLMGis::Topology

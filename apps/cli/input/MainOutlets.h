// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/gis_core/Result.h"
#include "host/network_core/Node.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// The section out of a node by GUID, or by a name that only one of them has; null for none.
boost::shared_ptr<OLMGis::Topology::CSection> FindOutlet(const OLMGis::Topology::CNode& node, std::string_view name);

/// The main outlet to store for what a person or a table gave: the name or GUID of a section that leaves the node
/// becomes its GUID, null stays. BadArguments for anything else, which no calculation would find.
OLMGis::Utility::Result<OLMGis::Data::CDataBox> ResolveMainOutlet(const OLMGis::Topology::CNode& node,
                                                                  const OLMGis::Data::CDataBox& value);

/// Resolves the main outlets that a table brings into the active project, from its making to ResolveChanged.
class CLoadedMainOutlets {
public:
    CLoadedMainOutlets();

    /// Stores the GUIDs for all values that have changed. BadInput naming the file and the node of the first that is no
    /// section out of its node.
    OLMGis::Utility::Status ResolveChanged(const std::string& file) const;

private:
    std::vector<std::string> m_before; ///< by place of the node in the network
};

} // namespace Cli

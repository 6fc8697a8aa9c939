// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/TopologyStorage.h"

#include <boost/shared_ptr.hpp>

#include <absl/container/flat_hash_map.h>
#include <functional>
#include <string_view>

namespace OLMGis::ProjectIo {

/// How files refer to sections: by name where only one section has it, else by GUID. Made for one file; the topology
/// must not change meanwhile. Linear to make, then one hash look-up per question.
class CSectionReferences {
public:
    explicit CSectionReferences(const Topology::CTopologyStorage& topology);

    /// The text by which Find finds this section.
    std::string_view ReferenceTo(const Topology::CSection& section) const;

    /// The section of a GUID or name; a text that is the GUID of a section is taken as one. BadInput, saying what was
    /// found and what was expected, for an unknown text and for a name that repeats.
    Utility::Result<boost::shared_ptr<Topology::CSection>> Find(std::string_view text) const;

private:
    const Topology::CTopologyStorage& m_topology;
    /// By name, null for a name that repeats.
    absl::flat_hash_map<std::string_view, const Topology::CSection*, std::hash<std::string_view>, std::equal_to<>>
        m_byName;
};

} // namespace OLMGis::ProjectIo

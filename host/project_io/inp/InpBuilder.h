// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/Node.h"
#include "host/network_core/Section.h"
#include "host/network_core/TopologyStorage.h"
#include "host/project_io/inp/InpNetwork.h"
#include "host/project_io/inp/InpPipes.h"
#include "host/project_io/inp/InpRoughness.h"

#include <cstdint>
#include <string>
#include <vector>

namespace OLMGis::ProjectIo {

/// Builds the topology, attributes and pipe catalogue of the active project from resolved records: nodes, all links as
/// sections, subcatchments as rain catchments, each kind in the order of the file. What could not be imported as
/// it is, is noted in the summary of the network. Linear.
class CInpBuilder {
public:
    /// network is borrowed and must be resolved; fileName: name of the file in messages.
    CInpBuilder(CInpNetwork& network, const std::string& fileName);

    /// BadInput when the topology or the catalogue refuses an object: the project was not empty.
    Utility::Status Build();

private:
    Utility::Status AddNodes();
    Utility::Status AddSections();
    Utility::Status AddCatchments();

    void WriteSection(const CInpLink& link, const Topology::CSection& section);
    void WriteConduit(const CInpLink& link, const Topology::CSection& section);
    void WriteSlope(const CInpLink& link, const Topology::CSection& section);
    void NoteCrossSection(const CInpLink& link, const CInpCrossSection& shape, std::uint32_t pipe);
    double ManningOf(const CInpLink& link) const;

    std::vector<double> FindCrowns() const;
    std::vector<std::uint32_t> FindReceivingLinks() const;
    std::vector<std::uint32_t> FindOutletNodes() const;

    std::vector<Topology::CPoint> GatherPoints(const CInpPointRows& chain, const std::vector<CInpPointRow>& rows) const;
    std::vector<Topology::CPoint> LineOf(const CInpLink& link) const;
    Topology::CRings RingsOf(const CInpSubcatchment& area);

    CInpNetwork& m_network;
    const std::string& m_fileName;
    Topology::CTopologyStorage& m_topology;
    CInpPipes m_pipes;
    CInpRoughness m_roughness;
    std::vector<Topology::CNode*> m_nodes;       ///< by node of the network
    std::vector<Topology::CSection*> m_sections; ///< by link of the network
};

} // namespace OLMGis::ProjectIo

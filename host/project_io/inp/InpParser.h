// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/inp/InpNetwork.h"
#include "host/project_io/inp/InpReader.h"

namespace OLMGis::ProjectIo {

/// Turns the lines of a storm-water file into records, line by line. Names of other objects are kept as names, because
/// the headings of a file may come in any order.
class CInpParser {
public:
    CInpParser(CInpReader& reader, CInpNetwork& network) : m_reader(reader), m_network(network) {}

    /// Reads the file to its end. False when the reader has an error.
    bool ReadAll();

private:
    bool ReadLine();
    bool ReadOption();
    bool ReadNode(std::size_t depthPlace);
    bool ReadDivider();
    bool ReadConduit();
    bool ReadLink(enmInpLinkKind kind, std::size_t offsetPlace);
    bool ReadCrossSection();
    bool ReadTransect();
    bool ReadTransectHead();
    bool ReadTransectPoints();
    bool ReadCurve();
    bool ReadSubcatchment();
    bool ReadCoordinate();
    bool ReadRowPoint(std::vector<CInpPointRow>& rows);

    /// A copy of a token that lives as long as the network.
    std::string_view Keep(std::string_view token) { return m_network.m_texts.Keep(token).View(); }

    bool ReadOffset(std::size_t place, double& offset);
    bool ReadPoint(Topology::CPoint& point);
    bool RequireTokens(std::size_t count, std::string_view expected);

    CInpReader& m_reader;
    CInpNetwork& m_network;
    double m_channelManning = 0.0; ///< of the transects that follow, s/m^(1/3)
    bool m_hasOtherBanks = false;  ///< whether their banks have another roughness
};

} // namespace OLMGis::ProjectIo

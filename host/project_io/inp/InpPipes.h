// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/network_core/Catalog.h"
#include "host/project_io/inp/InpNetwork.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OLMGis::ProjectIo {

/// The pipes of an import, one for each different inside shape and roughness.
class CInpPipes {
public:
    /// Place of the pipe of a cross-section with roughness k (mm); a new pipe is entered. InpNone where its outline is
    /// not known or where the outlines have more than MostPoints points. One hash look-up for a known pipe.
    std::uint32_t Enter(const CInpNetwork& network, const CInpCrossSection& section, double roughness);

    /// GUID of an entered pipe: made from its group and name, the same in every import.
    const std::string& GetGuid(std::uint32_t pipe) const { return m_pipes[pipe].m_guid; }

    std::size_t GetCount() const { return m_pipes.size(); }

    /// Enters all pipes into a catalogue, one group per kind of shape, sorted by height, width and roughness within it,
    /// so that the first sufficient pipe of a group is the smallest. BadInput when the catalogue has them already.
    Utility::Status Store(Topology::CCatalog& catalog) const;

private:
    struct CPipe {
        std::string_view m_group;
        std::string m_name;
        std::string m_guid;
        Topology::CPipeData m_data;
    };

    /// Limit of the points of all outlines from curves and surveyed channels, against files in which every conduit has
    /// its own height of the same long curve.
    static constexpr std::size_t MostPoints = 3'000'000;

    std::vector<CPipe> m_pipes;
    std::size_t m_pointCount = 0;
    std::unordered_map<std::string, std::uint32_t> m_byName; ///< names contain the group; InpNone for no outline
};

} // namespace OLMGis::ProjectIo

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

/// The pipes of an import: each different inside and roughness once.
class CInpPipes {
public:
    /// Place of the pipe of a cross-section with a roughness k (mm), entered at its first sight; InpNone where its
    /// outline is not known or the outlines grow beyond all measure. One hash look-up for a known one.
    std::uint32_t Enter(const CInpNetwork& network, const CInpCrossSection& section, double roughness);

    /// GUID of an entered pipe, made from its group and name.
    const std::string& GetGuid(std::uint32_t pipe) const { return m_pipes[pipe].m_guid; }

    std::size_t GetCount() const { return m_pipes.size(); }

    /// Enters all as groups of a catalogue, one a kind of shape; in a group by height, width and roughness, so that a
    /// search for the least sufficient pipe meets it first. BadInput when the catalogue has them already.
    Utility::Status Store(Topology::CCatalog& catalog) const;

private:
    struct CPipe {
        std::string_view m_group;
        std::string m_name;
        std::string m_guid;
        Topology::CPipeData m_data;
    };

    /// Points of curves and surveyed channels that outlines are made from: each conduit may have its own height of the
    /// same long curve, and no network has so many.
    static constexpr std::size_t MostPoints = 3'000'000;

    std::vector<CPipe> m_pipes;
    std::size_t m_pointCount = 0;
    std::unordered_map<std::string, std::uint32_t> m_byName; ///< names tell the group, too; InpNone for no outline
};

} // namespace OLMGis::ProjectIo

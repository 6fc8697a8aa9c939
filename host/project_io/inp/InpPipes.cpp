// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpPipes.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <tuple>

namespace OLMGis::ProjectIo {

using Utility::CUtility;

namespace {

const CInpShapeCurve* FindCurve(const CInpNetwork& network, const CInpCrossSection& section) {
    const auto found = network.m_curvesByName.find(section.m_text);
    return found == network.m_curvesByName.end() ? nullptr : &network.m_curves[found->second];
}

} // namespace

std::uint32_t CInpPipes::Enter(const CInpNetwork& network, const CInpCrossSection& section, double roughness) {
    const std::optional<CInpShapeName> shape = NameInpShape(section);
    if (!shape)
        return InpNone;
    // Roughness is known to the micrometre: smaller differences give the same pipe.
    const double catalogRoughness = std::round(roughness * 1000.0) / 1000.0;
    std::string name = fmt::format("{} k {}", shape->m_name, catalogRoughness);
    const auto [entry, isNew] = m_byName.emplace(name, InpNone);
    if (!isNew)
        return entry->second;
    const CInpShapeCurve* curve = FindCurve(network, section);
    const CInpTransect* transect = FindInpTransect(network, section);
    m_pointCount +=
        (curve == nullptr ? 0 : curve->m_points.size()) + (transect == nullptr ? 0 : transect->m_points.size());
    if (m_pointCount > MostPoints)
        return InpNone;
    std::optional<Topology::CPipeData> data = MakeInpPipe(section, curve, transect);
    if (!data)
        return InpNone;
    data->m_roughness = catalogRoughness;
    entry->second = static_cast<std::uint32_t>(m_pipes.size());
    std::string guid = CUtility::MakeGuid("inp/pipe", fmt::format("{}/{}", shape->m_group, name), 0);
    m_pipes.push_back({shape->m_group, std::move(name), std::move(guid), std::move(*data)});
    return entry->second;
}

Utility::Status CInpPipes::Store(Topology::CCatalog& catalog) const {
    std::vector<const CPipe*> order;
    for (const CPipe& pipe : m_pipes)
        order.push_back(&pipe);
    const auto key = [](const CPipe* pipe) {
        return std::tie(pipe->m_group, pipe->m_data.m_innerHeight, pipe->m_data.m_innerWidth, pipe->m_data.m_roughness,
                        pipe->m_name);
    };
    std::sort(order.begin(), order.end(), [&](const CPipe* a, const CPipe* b) { return key(a) < key(b); });
    boost::shared_ptr<Topology::CCatalogItem> group;
    for (const CPipe* pipe : order) {
        if (!group || group->GetName() != pipe->m_group) {
            auto added =
                catalog.AddGroup(CUtility::MakeGuid("inp/pipe group", pipe->m_group, 0), std::string(pipe->m_group));
            if (!added)
                return added.GetError();
            group = added.Value();
        }
        if (auto added = catalog.AddPipe(*group, pipe->m_guid, pipe->m_name, pipe->m_data); !added)
            return added.GetError();
    }
    return Utility::Done();
}

} // namespace OLMGis::ProjectIo

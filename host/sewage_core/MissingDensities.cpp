// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/MissingDensities.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>

namespace OLMGis::Sewage {

using Topology::CCatchment;
using Topology::CTopologyStorage;

namespace {

constexpr int DensitiesMissing = 70071;

} // namespace

std::optional<std::string> WarnOfMissingDensities(const CTopologyStorage& topology) {
    constexpr std::size_t mostNamed = 10;
    const auto* const kinds = Data::FindDefinition("kinds");
    const auto* const area = Data::FindDefinition("area");
    const auto* const density = Data::FindDefinition("density");
    Data::CDataBox box;
    const auto read = [&](const Data::CDataDefinition* key, const CCatchment& catchment) {
        return Data::CDataRW::Read(key, &catchment, box, 0, nullptr) != 0;
    };
    const auto lacksDensity = [&](const CCatchment& catchment) {
        return read(kinds, catchment) && (box.AsInt() & Topology::CatchmentHousehold) != 0 && read(area, catchment) &&
               box.AsDouble() > 0.0 && !read(density, catchment);
    };
    std::string names;
    std::size_t count = 0;
    for (const auto& section : topology.GetSections()) {
        const CCatchment* catchment = topology.GetFirstCatchment(*section);
        while (catchment != nullptr && !lacksDensity(*catchment))
            catchment = CTopologyStorage::GetNextCatchment(*catchment);
        if (catchment != nullptr && ++count <= mostNamed)
            names += fmt::format("{}{}", count > 1 ? ", " : "", section->GetName());
    }
    if (count == 0)
        return std::nullopt;
    if (count > mostNamed)
        names += ", ...";
    return Utility::CUtility::Format(Utility::Msg(DensitiesMissing), count, names);
}

} // namespace OLMGis::Sewage

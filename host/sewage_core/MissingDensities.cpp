// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/MissingDensities.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ShortName.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>

namespace OLMGis::Sewage {

using Topology::CCatchment;
using Topology::CTopologyStorage;

namespace {

constexpr int DensitiesMissing = 70071;

} // namespace

bool LacksDensity(const CCatchment& catchment) {
    static const auto* const kinds = Data::FindDefinition("kinds");
    static const auto* const area = Data::FindDefinition("area");
    static const auto* const density = Data::FindDefinition("density");
    Data::CDataBox box;
    const auto read = [&](const Data::CDataDefinition* key) {
        return Data::CDataRW::Read(key, &catchment, box, 0, nullptr) != 0;
    };
    return read(kinds) && (box.AsInt() & Topology::CatchmentHousehold) != 0 && read(area) && box.AsDouble() > 0.0 &&
           !read(density);
}

std::optional<std::string> WarnOfMissingDensities(const CTopologyStorage& topology) {
    constexpr std::size_t mostNamed = 10;
    std::string names;
    std::size_t count = 0;
    for (const auto& section : topology.GetSections()) {
        const CCatchment* catchment = topology.GetFirstCatchment(*section);
        while (catchment != nullptr && !LacksDensity(*catchment))
            catchment = CTopologyStorage::GetNextCatchment(*catchment);
        if (catchment != nullptr && ++count <= mostNamed)
            names += fmt::format("{}{}", count > 1 ? ", " : "", Utility::ShortName(section->GetName()));
    }
    if (count == 0)
        return std::nullopt;
    if (count > mostNamed)
        names += ", ...";
    return Utility::CUtility::Format(Utility::Msg(DensitiesMissing), count, names);
}

} // namespace OLMGis::Sewage

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/CatchmentAreaManager.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ProjectContext.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/TopologyStorage.h"

#include <optional>

namespace OLMGis::Sewage {

using Topology::CCatchment;
using Topology::CSection;
using Topology::CTopologyStorage;

namespace {

/// The definitions of a catchment's values, looked up once.
struct CCatchmentKeys {
    const Data::CDataDefinition* m_kinds = Data::FindDefinition("kinds");
    const Data::CDataDefinition* m_area = Data::FindDefinition("area");
    const Data::CDataDefinition* m_coefficient = Data::FindDefinition("coefficient");
    const Data::CDataDefinition* m_density = Data::FindDefinition("density");

    static const CCatchmentKeys& Get() {
        static const CCatchmentKeys keys;
        return keys;
    }
};

std::optional<double> Number(const CCatchment& catchment, const Data::CDataDefinition* definition) {
    Data::CDataBox box;
    if (definition == nullptr || !catchment.GetStore().Read(*definition, catchment.GetRow(), box))
        return std::nullopt;
    return box.AsDouble();
}

/// Calls use for each catchment of a kind that drains to the section, in the order of entry; returns how many.
template <class Use>
int ForEach(const CSection& section, int kind, Use use) {
    int count = 0;
    for (const CCatchment* catchment = section.GetTopology().GetFirstCatchment(section); catchment != nullptr;
         catchment = CTopologyStorage::GetNextCatchment(*catchment)) {
        const auto kinds = static_cast<int>(Number(*catchment, CCatchmentKeys::Get().m_kinds).value_or(0.0));
        if ((kinds & kind) == 0)
            continue;
        use(*catchment);
        ++count;
    }
    return count;
}

double Area(const CCatchment& catchment) {
    return Number(catchment, CCatchmentKeys::Get().m_area).value_or(0.0);
}

} // namespace

CCatchmentAreaManager* CCatchmentAreaManager::Instance() {
    static const System::CContextSlot<CCatchmentAreaManager> slot;
    return slot.Get();
}

int CCatchmentAreaManager::GetCATotalArea(const boost::shared_ptr<CSection>& section, double& area, int kind) const {
    if (!section)
        return 0;
    double sum = 0.0;
    if (ForEach(*section, kind, [&](const CCatchment& catchment) { sum += Area(catchment); }) == 0)
        return 0;
    area = sum;
    return 1;
}

int CCatchmentAreaManager::GetCAAverageDensityInhab(const boost::shared_ptr<CSection>& section, double& density) const {
    if (!section)
        return 0;
    double people = 0.0;
    double area = 0.0;
    ForEach(*section, Topology::CatchmentHousehold, [&](const CCatchment& catchment) {
        if (const auto own = Number(catchment, CCatchmentKeys::Get().m_density)) {
            people += *own * Area(catchment);
            area += Area(catchment);
        }
    });
    density = area == 0.0 ? NoDensity : people / area;
    return area == 0.0 ? 0 : 1;
}

int CCatchmentAreaManager::GetCATotalCorectedArea(const boost::shared_ptr<CSection>& section, double& area) const {
    if (!section)
        return 0;
    double sum = 0.0;
    const int count = ForEach(*section, Topology::CatchmentRain, [&](const CCatchment& catchment) {
        sum += Area(catchment) * Number(catchment, CCatchmentKeys::Get().m_coefficient).value_or(1.0);
    });
    if (count == 0)
        return 0;
    area = sum;
    return 1;
}

} // namespace OLMGis::Sewage

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeMeasures.h"

#include "host/formulas/Units.h"
#include "host/gis_core/DataConfiguration.h"
#include "host/project_io/base/PolygonValidity.h"
#include "host/project_io/base/ValueFaults.h"

#include <fmt/format.h>

namespace OLMGis::ProjectIo {

using Utility::Done;
using Utility::Status;

namespace {

void ConvertToMetres(CExchangeRecords& records, double metresPerUnit) {
    for (auto* points : {&records.m_nodePoints, &records.m_points})
        for (Topology::CPoint& point : *points) {
            point.m_x *= metresPerUnit;
            point.m_y *= metresPerUnit;
        }
}

/// Fails for sections and catchments that are measured by their coordinates.
Status CheckMeasures(const CExchangeRecords& records, const CCoordinateSystem& system, const std::string& fileName) {
    CValueFaults faults;
    const Data::CDataDefinition& length = *Data::FindDefinition("length");
    for (std::uint32_t i = 0; i < records.m_sections.size(); ++i) {
        const auto& section = records.m_sections[i];
        const bool isSnapped = section.m_from == NoRecord || section.m_to == NoRecord;
        if (isSnapped || !records.m_attributes.IsNotNull(length, i))
            faults.Add(fmt::format("section {}: {} from coordinates in degrees",
                                   ShownName(records.m_sectionNames[i].View()),
                                   isSnapped ? "its nodes are found" : "its length is taken"));
    }
    const Data::CDataDefinition& area = *Data::FindDefinition("area");
    for (std::uint32_t i = 0; i < records.m_catchments.size(); ++i)
        if (!records.m_attributes.IsNotNull(area, i))
            faults.Add(fmt::format("catchment of section {}: its area is taken from coordinates in degrees",
                                   ShownName(records.m_catchments[i].m_sectionText.View())));
    return faults.ToStatus(fileName,
                           fmt::format("{} ({}) is in degrees, which are neither lengths nor areas. Reproject the file "
                                       "to a system in m, or give length, from, to and area as values",
                                       system.ToText(), system.m_name));
}

void MeasurePolygons(CExchangeRecords& records, const CFeaturePlaces& places) {
    const Data::CDataDefinition& area = *Data::FindDefinition("area");
    for (std::uint32_t i = 0; i < records.m_catchments.size(); ++i) {
        const auto& catchment = records.m_catchments[i];
        if (catchment.m_ringCount == 0)
            continue;
        const Topology::CRings rings = records.RingsOf(catchment);
        if (const std::string fault = FindPolygonFault(rings); !fault.empty())
            records.m_faults.Add(places.Listed(
                catchment.m_feature, "geometry",
                fmt::format("catchment of section {}: polygon {}", ShownName(catchment.m_sectionText.View()), fault)));
        if (!records.m_attributes.IsNotNull(area, i))
            records.m_attributes.Set(area, i,
                                     Data::CDataBox(Topology::PolygonArea(rings) / Formulas::SquareMetresPerHectare));
    }
}

} // namespace

Status MeasureExchange(CExchangeRecords& records, const std::optional<CCoordinateSystem>& system,
                       const CFeaturePlaces& places, CImportSummary& summary) {
    if (system && system->m_isGeographic) {
        if (Status status = CheckMeasures(records, *system, places.GetFileName()); !status)
            return status;
        summary.m_warnings.push_back(
            fmt::format("the coordinates are degrees ({}): a plan of them is distorted. Lengths and areas are those "
                        "that the file gives as values",
                        system->ToText()));
    }
    if (system && system->IsInOtherUnit()) {
        ConvertToMetres(records, system->m_metresPerUnit);
        summary.m_warnings.push_back(DescribeConversion(*system));
    }
    MeasurePolygons(records, places);
    return Done();
}

} // namespace OLMGis::ProjectIo

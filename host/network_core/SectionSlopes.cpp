// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/SectionSlopes.h"

#include "host/formulas/Rounding.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/DataRW.h"

#include <cmath>

namespace OLMGis::Topology {

namespace {

struct CSlopeKeys {
    const Data::CDataDefinition* m_upper = Find("LEVEL_LINE_0");
    const Data::CDataDefinition* m_lower = Find("LEVEL_LINE_1");
    const Data::CDataDefinition* m_calculated = Find("SECTION_SLOPE_CAL");
    const Data::CDataDefinition* m_design = Find("SECTION_SLOPE");

    static const Data::CDataDefinition* Find(std::string_view id) {
        return Data::CDataConfiguration::Instance()->GetDataDefinitionByID(id);
    }
};

const CSlopeKeys& Keys() {
    static const CSlopeKeys keys;
    return keys;
}

bool Has(const Data::CDataDefinition* key, const CSection& section) {
    Data::CDataBox box;
    return Data::CDataRW::Read(key, &section, box, 0, nullptr) != 0;
}

} // namespace

std::optional<double> SlopeOfLevels(const CSection& section) {
    Data::CDataBox upper;
    Data::CDataBox lower;
    const double length = section.GetLength2D();
    if (Data::CDataRW::Read(Keys().m_upper, &section, upper, 0, nullptr) == 0 ||
        Data::CDataRW::Read(Keys().m_lower, &section, lower, 0, nullptr) == 0 || !(length > 0.0))
        return std::nullopt;
    const double slope = (upper.AsDouble() - lower.AsDouble()) / length * Formulas::PerMille;
    return std::isfinite(slope) ? std::optional(Formulas::RoundDerived(slope)) : std::nullopt;
}

CSlopeSummary StoreSlopes(const CTopologyStorage& topology, const CSlopeChoice& choice) {
    CSlopeSummary summary;
    const auto store = [&summary](const Data::CDataDefinition* key, const boost::shared_ptr<CSection>& section,
                                  double slope) -> std::size_t {
        if (Data::CDataRW::Write(key, section, Data::CDataBox(slope), nullptr) != 0)
            return 1;
        if (summary.m_refused.empty() || summary.m_refused.back() != section)
            summary.m_refused.push_back(section);
        return 0;
    };
    for (const auto& section : topology.GetSections()) {
        const std::optional<double> slope = SlopeOfLevels(*section);
        if (!slope) {
            const bool hasLevels = Has(Keys().m_upper, *section) && Has(Keys().m_lower, *section);
            (hasLevels ? summary.m_withoutLength : summary.m_withoutLevels).push_back(section);
            continue;
        }
        if (*slope < 0.0)
            summary.m_climbing.push_back(section);
        summary.m_calculated += store(Keys().m_calculated, section, *slope);
        if (choice.m_fillsDesign && !Has(Keys().m_design, *section))
            summary.m_designed += store(Keys().m_design, section, *slope);
    }
    return summary;
}

} // namespace OLMGis::Topology

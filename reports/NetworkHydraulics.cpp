// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/NetworkHydraulics.h"

#include "host/gis_core/Journal.h"
#include "host/gis_core/ProjectContext.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <array>
#include <string_view>
#include <utility>

namespace Reports {

using OLMGis::Sewage::CSectionHydraulics;
using OLMGis::Sewage::CSectionHydraulicsReader;
using OLMGis::Sewage::enmHydraulicsGap;

namespace {

/// Sections that have the same in common.
struct CGroup {
    enmHydraulicsGap m_gap;
    const char* m_text;
    std::vector<std::string_view> m_names{};

    void Report(CRemarks& remarks) const {
        constexpr std::size_t MostNames = 5;
        if (!m_names.empty())
            remarks.push_back(
                {CRemark::enmKind::Warning, OnOneLine(fmt::format("{} {}: {}", Count(m_names.size(), "section"), m_text,
                                                                  FirstNames(m_names, MostNames)))});
    }
};

} // namespace

CNetworkHydraulics CalculateNetworkHydraulics(double viscosity, const OLMGis::Data::CDataDefinition* flow) {
    // A network has many sections without a flow or without a pipe while it is being designed; those with both that
    // lack the rest are mistakes.
    std::array gaps = {CGroup{enmHydraulicsGap::UnknownPipe, "with a pipe that the catalogue does not contain"},
                       CGroup{enmHydraulicsGap::Slope, "with a pipe and a flow but without SECTION_SLOPE"}};
    CGroup surcharged{enmHydraulicsGap::None, "surcharged: the flow is greater than the full-pipe capacity"};
    CNetworkHydraulics result;
    CSectionHydraulicsReader reader(viscosity, flow);
    const auto outdated = OLMGis::Sewage::FindOutdatedResults();
    OLMGis::Data::CJournal journal;
    const OLMGis::Data::CJournalScope open(OLMGis::System::CProjectContext::Active().GetAttributes(), &journal);
    OLMGis::Sewage::COriginRecorder origin;
    for (const auto& section :
         OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections()) {
        CSectionHydraulics figures = reader.Calculate(section);
        result.m_hasStored = reader.Store(section, figures) != 0 || result.m_hasStored;
        for (CGroup& gap : gaps)
            if (gap.m_gap == figures.m_gap)
                gap.m_names.push_back(section->GetName());
        if (figures.m_gap != enmHydraulicsGap::None)
            continue;
        if (figures.m_isOverfull)
            surcharged.m_names.push_back(section->GetName());
        result.m_rows.push_back({section.get(), std::move(figures)});
    }
    origin.Keep(OLMGis::Sewage::HydraulicsOrigin, journal);
    result.m_outdated = SelectRead(outdated, origin.GetNotes(), OLMGis::Sewage::HydraulicsOrigin);
    for (const CGroup& gap : gaps)
        gap.Report(result.m_remarks);
    surcharged.Report(result.m_remarks);
    return result;
}

} // namespace Reports

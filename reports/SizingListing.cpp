// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/SizingListing.h"

#include "host/network_core/NominalDiameter.h"
#include "host/network_core/PipeManager.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string_view>

namespace Reports {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CSectionHydraulics;
using OLMGis::Sewage::CSizedSection;
using OLMGis::Sewage::CSizingRules;
using OLMGis::Sewage::enmHydraulicsGap;
using OLMGis::Sewage::enmSizing;
using OLMGis::Topology::CCatalogItem;

namespace {

CDataBox ToBox(const std::optional<double>& value) {
    return value ? CDataBox(*value) : CDataBox();
}

CDataBox NameOf(const boost::shared_ptr<CCatalogItem>& pipe) {
    return pipe ? CDataBox(pipe->GetName()) : CDataBox();
}

/// A limit for people: two decimals, more where a small one needs them.
std::string Number(double value) {
    return ShowValue(value, 2);
}

std::string DescribeWidth(const CSizedSection& sized, const CSizingRules& rules) {
    std::string text = "no pipe of the groups";
    if (rules.m_leastNominalDiameter > 0.0)
        text += fmt::format(" of DN {:g} or more", rules.m_leastNominalDiameter);
    if (!rules.m_allowsSmaller && sized.m_widthUpstream > 0.0)
        text += fmt::format(" is {:g} mm wide inside, as the widest pipe upstream", sized.m_widthUpstream);
    return text;
}

std::string DescribeFilling(const CSizedSection& sized, const CSizingRules& rules) {
    const CSectionHydraulics& nearest = sized.m_nearest;
    const std::string pipe = nearest.m_pipe ? nearest.m_pipe->GetName() : std::string();
    if (nearest.m_isOverfull)
        return fmt::format("no pipe is large enough: in {} Q/Qfull is {}", pipe, Number(0.01 * nearest.m_filling));
    return fmt::format("no pipe is large enough: in {} the filling is {} %, above {:g} %", pipe,
                       Number(nearest.m_filling), rules.m_greatestFilling);
}

struct CGroup {
    enmSizing m_outcome;
    const char* m_text;
    std::vector<std::string_view> m_names{};
};

} // namespace

std::string DescribeSizing(const CSizedSection& sized, const CSizingRules& rules) {
    switch (sized.m_outcome) {
    case enmSizing::Sized:
        return {};
    case enmSizing::Kept:
        return "kept";
    case enmSizing::NotPipe:
        return "not a pipe by SECTION_KIND";
    case enmSizing::Ring:
        return "on a ring of sections, or below one";
    case enmSizing::Flow:
        return fmt::format("{}{}", rules.m_flow->m_id, sized.m_flow ? " is not above 0" : " is missing");
    case enmSizing::Slope:
        return sized.m_slope ? "SECTION_SLOPE is not above 0" : "SECTION_SLOPE is missing";
    case enmSizing::Width:
        return DescribeWidth(sized, rules);
    case enmSizing::Filling:
        return DescribeFilling(sized, rules);
    case enmSizing::Velocity:
        return fmt::format("no pipe is fast enough: in {} the velocity is {} m/s, below {:g} m/s",
                           sized.m_nearest.m_pipe->GetName(), Number(sized.m_nearest.m_velocity),
                           rules.m_leastVelocity);
    case enmSizing::Shear:
        return fmt::format("no pipe has enough wall shear stress: in {} it is {} N/m², below {:g} N/m²",
                           sized.m_nearest.m_pipe->GetName(), Number(sized.m_nearest.m_shearStress),
                           rules.m_leastShearStress);
    }
    return {};
}

CTable MakeSizingTable(const std::vector<CSizedSection>& sections, const CSizingRules& rules) {
    CTable table(
        {TextColumn("name", "section"), TextColumn("guid", "", enmReader::Programs),
         NumberColumn("flow_m3s", "flow", "m³/s", 6), NumberColumn("slope_permille", "slope", "1/1000", 3),
         TextColumn("old_pipe", "old pipe"), TextColumn("new_pipe", "new pipe"), NumberColumn("dn_mm", "DN", "mm", 0),
         NumberColumn("filling_percent", "filling", "%", 1), NumberColumn("velocity_ms", "velocity", "m/s", 3),
         NumberColumn("shear_nm2", "shear stress", "N/m²", 3), TextColumn("reason", "why it has no new pipe")});
    table.SetRows(sections.size(), [&sections, &rules](std::size_t row, CTable::CRow& values) {
        const CSizedSection& sized = sections[row];
        const CSectionHydraulics& figures = sized.m_figures;
        const bool isCalculated = figures.m_gap == enmHydraulicsGap::None;
        const auto figure = [isCalculated](double value) { return isCalculated ? CDataBox(value) : CDataBox(); };
        const std::string reason = DescribeSizing(sized, rules);
        values = {std::string(sized.m_section->GetName()),
                  std::string(sized.m_section->GetGuid()),
                  ToBox(sized.m_flow),
                  ToBox(sized.m_slope),
                  NameOf(sized.m_oldPipe),
                  NameOf(sized.m_newPipe),
                  sized.m_newPipe ? CDataBox(OLMGis::Topology::NominalDiameter(*sized.m_newPipe)) : CDataBox(),
                  figure(figures.m_filling),
                  figure(figures.m_velocity),
                  figure(figures.m_shearStress),
                  reason.empty() ? CDataBox() : CDataBox(reason)};
    });
    return table;
}

CRemarks MakeSizingRemarks(const std::vector<CSizedSection>& sections, const CSizingRules& rules) {
    constexpr std::size_t MostNames = 20;
    std::array groups = {CGroup{enmSizing::NotPipe, "left alone, no pipe by SECTION_KIND"},
                         CGroup{enmSizing::Ring, "not sized, on a ring of sections or below one"},
                         CGroup{enmSizing::Flow, "not sized, without a flow above 0"},
                         CGroup{enmSizing::Slope, "not sized, without a SECTION_SLOPE above 0"},
                         CGroup{enmSizing::Width, "not sized, no pipe of the groups has the diameter"},
                         CGroup{enmSizing::Filling, "not sized, no pipe of the groups is large enough"},
                         CGroup{enmSizing::Velocity, "not sized, too slow in every pipe that carries the flow"},
                         CGroup{enmSizing::Shear, "not sized, too little wall shear stress in every pipe"}};
    std::vector<std::string_view> narrower;
    auto* const pipes = OLMGis::Topology::CPipeManager::Instance();
    for (const CSizedSection& sized : sections) {
        for (CGroup& group : groups)
            if (group.m_outcome == sized.m_outcome)
                group.m_names.push_back(sized.m_section->GetName());
        if (!rules.m_allowsSmaller && sized.m_newPipe &&
            pipes->GetInnerDiameter(sized.m_newPipe) < sized.m_widthUpstream)
            narrower.push_back(sized.m_section->GetName());
    }
    CRemarks remarks;
    const auto warn = [&remarks](const std::vector<std::string_view>& names, const char* text) {
        if (!names.empty())
            remarks.push_back(
                {CRemark::enmKind::Warning, OnOneLine(fmt::format("{} {}: {}", Count(names.size(), "section"), text,
                                                                  FirstNames(names, MostNames)))});
    };
    for (const CGroup& group : groups)
        warn(group.m_names, group.m_text);
    warn(narrower, "with a pipe that stays and is narrower inside than a pipe upstream");
    return remarks;
}

} // namespace Reports

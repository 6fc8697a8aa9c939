// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/NetworkHydraulics.h"

#include "apps/cli/ShownText.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <string_view>
#include <utility>

namespace Cli {

using OLMGis::Sewage::CSectionHydraulics;
using OLMGis::Sewage::CSectionHydraulicsReader;
using OLMGis::Sewage::enmHydraulicsGap;

namespace {

/// The sections that lack the same; the first of them stand for all.
class CGap {
public:
    CGap(enmHydraulicsGap gap, const char* text) : m_gap(gap), m_text(text) {}

    enmHydraulicsGap GetGap() const { return m_gap; }
    void Add(std::string_view name) {
        constexpr std::size_t MostNames = 5;
        if (m_count++ < MostNames)
            m_names += fmt::format("{}{}", m_names.empty() ? "" : ", ", name);
        else if (m_count == MostNames + 1)
            m_names += ", ...";
    }
    void Tell(CTerminal& terminal) const {
        if (m_count > 0)
            terminal.Warn(OnOneLine(fmt::format("{} {}: {}", Count(m_count, "section"), m_text, m_names)));
    }

private:
    enmHydraulicsGap m_gap;
    const char* m_text;
    std::size_t m_count = 0;
    std::string m_names;
};

} // namespace

CNetworkHydraulics CalculateNetworkHydraulics(double viscosity, CTerminal& terminal) {
    // A network has many sections without a flow or without a pipe while it is being designed; those with both that
    // lack the rest are mistakes.
    std::array gaps = {CGap(enmHydraulicsGap::UnknownPipe, "with a pipe that the catalogue does not know"),
                       CGap(enmHydraulicsGap::Slope, "with a pipe and a flow but without SECTION_SLOPE")};
    CGap overfull(enmHydraulicsGap::None, "overfull");
    CNetworkHydraulics result;
    CSectionHydraulicsReader reader(viscosity);
    for (const auto& section :
         OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSections()) {
        CSectionHydraulics figures = reader.Calculate(section);
        result.m_hasStored = reader.Store(section, figures) != 0 || result.m_hasStored;
        for (CGap& gap : gaps)
            if (gap.GetGap() == figures.m_gap)
                gap.Add(section->GetName());
        if (figures.m_gap != enmHydraulicsGap::None)
            continue;
        if (figures.m_isOverfull)
            overfull.Add(section->GetName());
        result.m_rows.push_back({section.get(), std::move(figures)});
    }
    for (const CGap& gap : gaps)
        gap.Tell(terminal);
    overfull.Tell(terminal);
    return result;
}

} // namespace Cli

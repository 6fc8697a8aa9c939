// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_calculations/PipeSizing.h"

#include "host/formulas/SectionGeometry.h"
#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/NominalDiameter.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <tuple>
#include <utility>

namespace OLMGis::Sewage {

using Data::CDataBox;
using Data::CDataDefinition;
using Data::CDataRW;
using Topology::CCatalogItem;
using Topology::CConnectivity;
using Topology::CPipeManager;
using Topology::CSection;
using Topology::CTopologyStorage;

namespace {

/// A pipe that may be chosen.
struct CCandidate {
    boost::shared_ptr<CCatalogItem> m_pipe;
    double m_width; ///< inside, mm
    double m_area;  ///< full, of the shape, in any unit: it compares pipes of one group
};

double FullArea(const Topology::CPipeData& pipe) {
    Formulas::CSectionShape shape{pipe.m_shape, pipe.m_innerWidth, pipe.m_innerHeight, {}};
    for (const auto& point : pipe.m_table)
        shape.m_levels.push_back({point.m_height, point.m_width});
    return Formulas::FullShape(shape).m_area;
}

/// The pipes of a group that no section rules out, the smallest first.
std::vector<CCandidate> ListCandidates(const CCatalogItem& group, double leastNominalDiameter) {
    auto* const pipes = CPipeManager::Instance();
    std::vector<CCandidate> candidates;
    for (const auto& item : group.GetSubItems()) {
        const auto* const pipe = item->GetPipeData();
        if (pipe != nullptr && pipe->m_innerWidth >= pipes->CalculateMinDiameter(pipe->m_type, 0.0) &&
            Topology::NominalDiameter(*item) >= leastNominalDiameter)
            candidates.push_back({item, pipe->m_innerWidth, FullArea(*pipe)});
    }
    std::stable_sort(candidates.begin(), candidates.end(), [](const CCandidate& a, const CCandidate& b) {
        return std::tie(a.m_width, a.m_area) < std::tie(b.m_width, b.m_area);
    });
    return candidates;
}

/// The walk over the network.
class CSizer {
public:
    explicit CSizer(const CSizingRules& rules)
        : m_rules(rules), m_topology(*Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()),
          m_ways(m_topology.GetConnectivity()), m_reader(rules.m_viscosity, rules.m_flow),
          m_slope(Data::FindDefinition("SECTION_SLOPE")), m_kind(Data::FindDefinition("SECTION_KIND")),
          m_isKept(m_ways->GetSectionCount(), false), m_places(m_ways->GetSectionCount(), 0),
          m_waitsFor(m_ways->GetNodeCount(), 0), m_widthAt(m_ways->GetNodeCount(), 0.0) {
        for (const auto& group : rules.m_groups)
            m_groups.push_back(ListCandidates(*group, rules.m_leastNominalDiameter));
        for (const auto& section : rules.m_kept)
            m_isKept[section->GetRow()] = true;
    }

    CPipeSizing Run() {
        const auto& sections = m_topology.GetSections();
        m_sizing.m_sections.reserve(sections.size());
        for (const auto& section : sections) {
            m_places[section->GetRow()] = m_sizing.m_sections.size();
            m_sizing.m_sections.push_back(Describe(section));
        }
        Utility::CProgress progress("pipes", sections.size());
        if (!Walk(progress))
            return {{}, true};
        return std::move(m_sizing);
    }

private:
    CSizedSection Describe(const boost::shared_ptr<CSection>& section) {
        CSizedSection sized;
        sized.m_section = section;
        sized.m_flow = Read(m_rules.m_flow, *section);
        sized.m_slope = Read(m_slope, *section);
        sized.m_oldPipe = section->GetPipe();
        sized.m_newPipe = sized.m_oldPipe;
        sized.m_figures = m_reader.Calculate(section);
        return sized;
    }

    /// Takes each node once the sections that end at it are done. False when the user cancelled.
    bool Walk(Utility::CProgress& progress) {
        std::vector<std::uint32_t> ready;
        std::size_t done = 0;
        for (std::uint32_t node = 0; node < m_ways->GetNodeCount(); ++node) {
            m_waitsFor[node] = static_cast<std::uint32_t>(m_ways->GetWaysIn(node).size());
            if (m_waitsFor[node] == 0)
                ready.push_back(node);
        }
        for (const CSizedSection& sized : m_sizing.m_sections)
            if (m_ways->GetStart(sized.m_section->GetRow()) == CConnectivity::None)
                Pass(sized.m_section->GetRow(), 0.0, ready);
        while (!ready.empty()) {
            const std::uint32_t node = ready.back();
            ready.pop_back();
            for (const std::uint32_t way : m_ways->GetWaysOut(node)) {
                Pass(way, m_widthAt[node], ready);
                if (!progress.GoOn(++done))
                    return false;
            }
        }
        return true;
    }

    /// Sizes a section and hands the greatest width so far on to its lower end.
    void Pass(std::uint32_t row, double widthUpstream, std::vector<std::uint32_t>& ready) {
        CSizedSection& sized = m_sizing.m_sections[m_places[row]];
        sized.m_widthUpstream = widthUpstream;
        Size(sized);
        const std::uint32_t end = m_ways->GetEnd(row);
        if (end == CConnectivity::None)
            return;
        m_widthAt[end] =
            std::max({m_widthAt[end], widthUpstream, CPipeManager::Instance()->GetInnerDiameter(sized.m_newPipe)});
        if (--m_waitsFor[end] == 0)
            ready.push_back(end);
    }

    void Size(CSizedSection& sized) {
        if (m_isKept[sized.m_section->GetRow()])
            sized.m_outcome = enmSizing::Kept;
        else if (!IsPipe(*sized.m_section))
            sized.m_outcome = enmSizing::NotPipe;
        else if (!sized.m_flow || !(*sized.m_flow > 0.0))
            sized.m_outcome = enmSizing::Flow;
        else if (!sized.m_slope || !(*sized.m_slope > 0.0))
            sized.m_outcome = enmSizing::Slope;
        else
            Choose(sized);
    }

    void Choose(CSizedSection& sized) {
        sized.m_outcome = enmSizing::Width;
        const double width = m_rules.m_allowsSmaller ? 0.0 : sized.m_widthUpstream;
        for (const auto& group : m_groups)
            for (auto candidate =
                     std::lower_bound(group.begin(), group.end(), width,
                                      [](const CCandidate&each, double least) { return each.m_width < least; });
                 candidate != group.end(); ++candidate)
                if (Try(sized, candidate->m_pipe))
                    return;
    }

    /// Whether the pipe is the one. Otherwise notes it when it comes nearer than those before it: meets more of the
    /// limits, in the order of enmSizing, or misses the same one by less.
    bool Try(CSizedSection& sized, const boost::shared_ptr<CCatalogItem>& pipe) {
        CSectionHydraulics figures = m_reader.Calculate(sized.m_section, pipe);
        const enmSizing lacks = FindLack(figures);
        if (lacks == enmSizing::Sized) {
            sized.m_outcome = lacks;
            sized.m_newPipe = pipe;
            sized.m_figures = std::move(figures);
            sized.m_nearest = {};
            return true;
        }
        if (lacks > sized.m_outcome || (lacks == sized.m_outcome && IsNearer(lacks, figures, sized.m_nearest))) {
            sized.m_outcome = lacks;
            sized.m_nearest = std::move(figures);
        }
        return false;
    }

    enmSizing FindLack(const CSectionHydraulics& figures) const {
        if (figures.m_isOverfull || !(figures.m_filling <= m_rules.m_greatestFilling))
            return enmSizing::Filling;
        if (figures.m_velocity < m_rules.m_leastVelocity)
            return enmSizing::Velocity;
        return figures.m_shearStress < m_rules.m_leastShearStress ? enmSizing::Shear : enmSizing::Sized;
    }

    static bool IsNearer(enmSizing lacks, const CSectionHydraulics& figures, const CSectionHydraulics& nearest) {
        if (lacks == enmSizing::Filling)
            return figures.m_filling < nearest.m_filling;
        return lacks == enmSizing::Velocity ? figures.m_velocity > nearest.m_velocity
                                            : figures.m_shearStress > nearest.m_shearStress;
    }

    bool IsPipe(const CSection& section) const {
        CDataBox kind;
        return CDataRW::Read(m_kind, &section, kind, 0, nullptr) == 0 || kind.AsText().empty() ||
               kind.AsText() == "pipe";
    }

    static std::optional<double> Read(const CDataDefinition* definition, const CSection& section) {
        CDataBox box;
        if (CDataRW::Read(definition, &section, box, 0, nullptr) == 0)
            return std::nullopt;
        return box.AsDouble();
    }

    const CSizingRules& m_rules;
    const CTopologyStorage& m_topology;
    std::shared_ptr<const CConnectivity> m_ways;
    CSectionHydraulicsReader m_reader;
    const CDataDefinition* m_slope;
    const CDataDefinition* m_kind; ///< null where the project knows no kinds of sections: all are pipes
    std::vector<std::vector<CCandidate>> m_groups;
    std::vector<bool> m_isKept;            ///< by row of section
    std::vector<std::size_t> m_places;     ///< by row of section: its place in the result
    std::vector<std::uint32_t> m_waitsFor; ///< by row of node: sections in that are not done
    std::vector<double> m_widthAt;         ///< by row of node: widest pipe above it, mm
    CPipeSizing m_sizing;
};

} // namespace

CPipeSizing SizePipes(const CSizingRules& rules) {
    return CSizer(rules).Run();
}

std::size_t StorePipes(const CPipeSizing& sizing) {
    const CDataDefinition* const reference = Data::FindDefinition("PIPE_REF");
    std::size_t count = 0;
    for (const CSizedSection& sized : sizing.m_sections)
        if (sized.m_outcome == enmSizing::Sized &&
            CDataRW::Write(reference, sized.m_section, CDataBox(sized.m_newPipe->GetGUID()), nullptr) != 0)
            ++count;
    return count;
}

} // namespace OLMGis::Sewage

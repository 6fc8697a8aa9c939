// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Branches.h"

#include "host/network_core/TopologyStorage.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace OLMGis::Topology {

namespace {

constexpr std::uint32_t None = CConnectivity::None;

class CBranchBuilder {
public:
    explicit CBranchBuilder(const CTopologyStorage& topology)
        : m_topology(topology), m_ways(topology.GetConnectivity()), m_continued(m_ways->GetSectionCount(), None),
          m_length(m_ways->GetSectionCount(), 0.0), m_branchOf(m_ways->GetSectionCount(), None) {}

    std::vector<CBranch> Build() {
        Measure();
        for (const auto& section : m_topology.GetSections())
            if (m_continued[section->GetRow()] == None)
                Follow(section->GetRow());
        return Sort();
    }

private:
    /// The section that takes the flow of a section; None at the end of the network.
    std::uint32_t GetNext(std::uint32_t section) const {
        const std::uint32_t end = m_ways->GetEnd(section);
        return end == None ? None : m_ways->GetMainOutlet(end);
    }

    /// Calls visit for each section whose flow a section takes, in network order.
    template <class Visit>
    void ForEachAbove(std::uint32_t section, Visit visit) const {
        const std::uint32_t start = m_ways->GetStart(section);
        if (start != None && m_ways->GetMainOutlet(start) == section)
            for (const std::uint32_t above : m_ways->GetWaysIn(start))
                visit(above);
    }

    /// Finds by section the one above that its branch comes from, and the length of the branch with it.
    void Measure() {
        std::vector<std::uint32_t> waitsFor(m_ways->GetSectionCount(), 0);
        std::vector<bool> isDone(m_ways->GetSectionCount(), false);
        const auto& sections = m_topology.GetSections();
        for (const auto& section : sections)
            ForEachAbove(section->GetRow(), [&](std::uint32_t) { ++waitsFor[section->GetRow()]; });
        const auto descend = [&](std::uint32_t row) {
            for (; row != None && !isDone[row]; row = GetNext(row)) {
                isDone[row] = true;
                MeasureOne(row, isDone);
                const std::uint32_t next = GetNext(row);
                if (next == None || isDone[next] || --waitsFor[next] > 0)
                    return;
            }
        };
        for (const auto& section : sections)
            if (waitsFor[section->GetRow()] == 0)
                descend(section->GetRow());
        for (const auto& section : sections) // rings
            descend(section->GetRow());
    }

    void MeasureOne(std::uint32_t row, const std::vector<bool>& isDone) {
        double longest = -1.0;
        ForEachAbove(row, [&](std::uint32_t above) {
            if (above != row && isDone[above] && m_length[above] > longest) {
                longest = m_length[above];
                m_continued[row] = above;
            }
        });
        m_length[row] = m_topology.GetSectionAt(row)->GetLength2D() + (longest > 0.0 ? longest : 0.0);
    }

    void Follow(std::uint32_t row) {
        CBranch& branch = m_branches.emplace_back();
        while (true) {
            m_branchOf[row] = static_cast<std::uint32_t>(m_branches.size() - 1);
            branch.push_back(row);
            const std::uint32_t next = GetNext(row);
            if (next == None || m_continued[next] != row)
                return;
            row = next;
        }
    }

    /// Puts each branch behind those that join it; without recursion, as a network may be a million branches deep.
    std::vector<CBranch> Sort() {
        std::vector<std::vector<std::uint32_t>> joining(m_branches.size());
        std::vector<std::uint32_t> last;
        for (std::uint32_t branch = 0; branch < m_branches.size(); ++branch) {
            for (const std::uint32_t row : m_branches[branch])
                ForEachAbove(row, [&](std::uint32_t above) {
                    if (m_branchOf[above] != branch)
                        joining[branch].push_back(m_branchOf[above]);
                });
            if (GetNext(m_branches[branch].back()) == None)
                last.push_back(branch);
        }
        for (std::uint32_t branch = 0; branch < m_branches.size(); ++branch)
            last.push_back(branch); // those that lead into a ring
        std::vector<CBranch> sorted;
        std::vector<bool> isListed(m_branches.size(), false);
        std::vector<std::pair<std::uint32_t, std::size_t>> open; // branches, and how many that join them were opened
        for (const std::uint32_t first : last) {
            if (!isListed[first])
                open.emplace_back(first, 0);
            isListed[first] = true;
            while (!open.empty()) {
                auto& [branch, count] = open.back();
                if (count == joining[branch].size()) {
                    sorted.push_back(std::move(m_branches[branch]));
                    open.pop_back();
                } else if (const std::uint32_t above = joining[branch][count++]; !isListed[above]) {
                    isListed[above] = true;
                    open.emplace_back(above, 0);
                }
            }
        }
        return sorted;
    }

    const CTopologyStorage& m_topology;
    std::shared_ptr<const CConnectivity> m_ways;
    std::vector<std::uint32_t> m_continued; ///< by row: the section above in the same branch; None for a head
    std::vector<double> m_length;           ///< by row: from the head of the branch to the section's lower end, m
    std::vector<std::uint32_t> m_branchOf;  ///< by row: place in m_branches
    std::vector<CBranch> m_branches;
};

} // namespace

std::vector<CBranch> ListBranches(const CTopologyStorage& topology) {
    return CBranchBuilder(topology).Build();
}

} // namespace OLMGis::Topology

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <functional>
#include <limits>
#include <vector>

/// Household catchment of one section or of several together.
struct CHouseholdSum {
    double m_area = 0.0;   ///< ha
    double m_people = 0.0; ///< inhabitants: density times area, also where the density is the mark of an absent one
};

/// Household catchments of sections, each with everything upstream of it.
///
/// The sum of a section starts with its own catchment; then come the sections upstream, nearest first: breadth first
/// over GetSectionsIn, each once. The section itself is not taken as seen, so that a loop that leads back to it counts
/// it twice. Every sum runs in this order, section by section: no sum is made from another one, so that a figure never
/// depends on which sections a run is asked for.
///
/// What a run saves is asking and walking. Catchments are asked once per section. Sections enter a list together with
/// all that end at the same node, so that a walk marks nodes. And where only one way leads on upstream, the list of a
/// node is the list of the node below without its head: one walk serves the whole way, and the sums along it are made
/// several at a time.
///
/// Cost: linear to make; a computation adds each upstream section once per section asked for, see GetVisits.
class CUpstreamSums {
public:
    /// Gathers what lies upstream of the sections; a null among them sums to nothing. Catchment figures are taken now.
    explicit CUpstreamSums(const std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>& sections);

    /// How many upstream sections the computation adds over all sums: exact where the upstream networks are trees, not
    /// below the true number elsewhere.
    double GetVisits() const { return m_visits; }

    /// Rough time of the computation (s) on an ordinary desktop machine.
    double GetExpectedSeconds() const { return m_expectedSeconds; }

    /// Told how many sums are done, now and then; false stops the computation.
    using CGoOn = std::function<bool(int done)>;

    /// Fills sums with one sum per section, in the order in which the sections were given. False when it was stopped;
    /// sums then is of no use.
    bool Compute(std::vector<CHouseholdSum>& sums, const CGoOn& goOn);

private:
    static constexpr std::uint32_t NoNode = std::numeric_limits<std::uint32_t>::max();

    /// A section that ends at a node.
    struct CInflow {
        CHouseholdSum m_own;
        std::uint32_t m_node; ///< where it starts; NoNode when nothing enters there
    };

    /// A section asked for.
    struct CStart {
        CHouseholdSum m_own;
        std::uint32_t m_node = NoNode; ///< as above
    };

    class CGathering;
    class CWays;

    std::uint32_t CountInflows(std::uint32_t node) const { return m_first[node + 1] - m_first[node]; }
    void OrderStarts(const CWays& ways);
    std::size_t EndOfWay(std::size_t begin) const;
    void Collect(std::uint32_t node);
    void SumBatch(std::size_t begin, std::size_t end, std::size_t base, std::vector<CHouseholdSum>& sums) const;

    std::vector<CStart> m_starts;
    std::vector<CInflow> m_inflows;     ///< node by node, in the order of GetSectionsIn
    std::vector<std::uint32_t> m_first; ///< by node, and one more: its first inflow

    /// A start with something upstream: its way and how far up it stands, in sections of the way's list.
    struct CPlace {
        std::uint32_t m_way;
        std::uint32_t m_offset;
        std::uint32_t m_start;
    };
    std::vector<CPlace> m_places; ///< by way, then by offset
    double m_visits = 0.0;
    double m_expectedSeconds = 0.0;

    // The walk at hand. Room is made once: a walk sees no inflow and no node twice.
    std::vector<CHouseholdSum> m_list; ///< nearest first
    std::size_t m_listed = 0;          ///< how much of the list is of this walk
    std::vector<std::uint32_t> m_queue;
    std::vector<std::uint32_t> m_marks; ///< by node: the walk that saw it last
    std::uint32_t m_walk = 0;
};

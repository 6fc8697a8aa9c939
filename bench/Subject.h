// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/synthetic/SyntheticLayout.h"

#include <cstddef>
#include <functional>
#include <string>

namespace Bench {

using OLMGis::ProjectIo::enmNetworkShape;
using OLMGis::Utility::Done;
using OLMGis::Utility::Status;

/// The network that a benchmark works on.
struct CSize {
    enmNetworkShape m_shape{};
    std::size_t m_sections = 0;
    std::string m_name; ///< "line/10000": for names of benchmarks and files
};

/// One operation on one network, ready to be measured. What it needs lives in its functions.
struct CSubject {
    std::function<void()> m_prepare;   ///< before every pass, not timed; may be empty
    std::function<Status()> m_pass;    ///< the operation
    double m_operations = 0.0;         ///< in one pass; 0 where only the cost of a section counts
    std::function<Status()> m_inspect; ///< once, after the first pass: whether it did its work; may be empty
};

/// Makes the subject for a network: everything that the operation finds ready. An error is reported in its place.
using CSubjectMaker = std::function<OLMGis::Utility::Result<CSubject>(const CSize&)>;

/// How long a pass takes, which decides how many are made.
enum class enmPace { Quick, Slow };

/// Registers a benchmark for the line, the tree, the star and the city, at 10,000, 100,000 and 1,000,000 sections.
///
/// Its name is NAME/SHAPE/SECTIONS. The first pass in a process is measured by itself (counter first_s, s), and with it
/// the memory: peak_bytes is the peak of the process during that pass, held_bytes what it uses after it. Each further
/// pass is a repetition; counters ns_per_section and, where operations are counted, ns_per_operation; work_s is the
/// time of the processor (s), which is less than that of the clock where a pass waits.
void RegisterOnNetworks(const std::string& name, enmPace pace, const CSubjectMaker& maker);

/// The same for what sees one section after the other and nothing of how they connect: the line alone, whose sizes
/// count sections.
void RegisterWithoutNetwork(const std::string& name, enmPace pace, const CSubjectMaker& maker);

/// Lets go of the subject that was measured last. Before main ends.
void ReleaseSubject();

} // namespace Bench

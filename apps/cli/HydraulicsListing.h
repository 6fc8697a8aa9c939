// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/sewage_core/SectionHydraulics.h"

#include <ostream>
#include <vector>

namespace Cli {

/// The hydraulics of one section; without a gap.
struct CHydraulicsRow {
    const OLMGis::Topology::CSection* m_section = nullptr;
    OLMGis::Sewage::CSectionHydraulics m_figures;
};

/// For people: rounded, what is overfull marked.
void PrintHydraulicsAsTable(std::ostream& stream, const std::vector<CHydraulicsRow>& rows);

/// For spreadsheets: a head line, numbers in full, 1 or 0 for overfull. Refused when writing fails.
OLMGis::Utility::Status PrintHydraulicsAsCsv(std::ostream& stream, const std::vector<CHydraulicsRow>& rows);

/// For programs: an array of objects, one a line, numbers in full.
void PrintHydraulicsAsJson(std::ostream& stream, const std::vector<CHydraulicsRow>& rows);

} // namespace Cli

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/GuidMap.h"
#include "rain/SectionDataIDF.h"
#include "rain/VariationData.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Texts of the reports of a rain calculation. Lines begin with their break, CR LF; numbers have a "." always. Sections
/// in the order of their GUIDs' characters.
namespace RainReports {

/// The table of IDFOut.txt: a row of fields parted by semicolons for each figure, a field for each section, from its
/// first record; sections that were not reached are left out. Iteration 1 begins with what doesn't change.
std::string MakeIterationTable(const CGuidMap<CRecordList>& sections, int iteration);

/// The account of a search, given in pieces: best combinations, their results, and all combinations that were tried, of
/// which so many are told already. It can be as long as a disk is large: append says whether to go on. False when it
/// said no.
bool WriteVariations(const CGuidMap<CVariationData>& variations,
                     const std::function<bool(std::string_view text, std::uint64_t told)>& append);

} // namespace RainReports

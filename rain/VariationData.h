// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/SectionDataIDF.h"
#include "rain/VariationCombinations.h"

/// What a search over combinations knows of one section.
class CVariationData {
public:
    static constexpr unsigned int NoBest = 0xFFFFFFFFU;

    int m_inputCount = 0;                  ///< sections that enter its start, selected or not
    int m_visitedCount = 0;                ///< how many of them have finished
    unsigned int m_bestIndex = NoBest;     ///< index into m_combinations
    CSectionDataIDF m_best;                ///< the section's record under the best combination
    CVariationCombinations m_combinations; ///< in order of trying; each starts with the section itself
};

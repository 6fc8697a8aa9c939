// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/run/SectionDataIDF.h"

/// What a search over combinations knows of one section.
class CVariationData {
public:
    static constexpr unsigned int NoBest = 0xFFFFFFFFU;

    int m_inputCount = 0;              ///< sections that enter its start, selected or not
    int m_visitedCount = 0;            ///< how many of them have finished
    unsigned int m_bestIndex = NoBest; ///< number of the best combination, see Rain::CVariationTable
    CSectionDataIDF m_best;            ///< the section's record under the best combination, without its path
};

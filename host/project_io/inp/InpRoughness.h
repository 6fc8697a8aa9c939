// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/base/ImportSummary.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// Derives the roughness k of conduits from Manning's n and notes where it has no physical meaning.
class CInpRoughness {
public:
    /// The greatest k (mm) that is handed out; in no pipe water flows against it.
    static constexpr double Greatest = 1e6;

    /// k (mm) of a conduit, see Formulas::RoughnessOfManning. manning: s/m^(1/3); height: inside, m, 0 where unknown.
    double Take(double manning, double height, std::string_view conduit);

    /// Adds to the notes from which n which k were derived, and how many of them are doubtful.
    void Report(CImportSummary& summary) const;

private:
    /// Conduits of one kind of doubt.
    struct CDoubtful {
        std::size_t m_count = 0;
        std::string m_first;
        void Add(std::string_view conduit) {
            if (m_count++ == 0)
                m_first = conduit;
        }
    };

    std::size_t m_count = 0;
    double m_leastManning = 0.0;
    double m_greatestManning = 0.0;
    CDoubtful m_outside;  ///< n outside the range in which the formula is sound
    CDoubtful m_tooRough; ///< k above a tenth of the height
    CDoubtful m_limited;  ///< k above Greatest
};

} // namespace OLMGis::ProjectIo

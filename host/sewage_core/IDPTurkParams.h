// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string_view>
#include <vector>

namespace OLMGis::Sewage {

/// Rainfall intensity by rows of parameters: each row applies up to a catchment area, and its intensity falls with the
/// time t as A / (t + B)^C.
///
/// As text: "tc;limit:A:B:C;limit:A:B:C;...": a constant time of concentration (min), 0 for none, and rows in order,
/// each with its largest area (ha), A (l/(s·ha) · min^C), B (min) and C (-).
class CIDPTurkParams {
public:
    struct CRow {
        double m_limit; ///< ha
        double m_a;
        double m_b; ///< min
        double m_c;
    };

    /// Loads the default rows of the installation. 1 when it has them; else 0, and there is no row.
    int Load();

    /// Loads the rows of a text. 1 when it can be read; any other text changes nothing and gives 0.
    int setValue(std::string_view text);

    /// Intensity (l/(s·ha)) for an area (ha) and a time of concentration (min); a constant time above 0 replaces the
    /// time. Uses the first row whose limit is not below the area, else the last; 0 without rows.
    double getIntesity(double area, double time) const;

    /// The row that applies to an area (ha); null without rows.
    const CRow* FindRow(double area) const;

    double GetConstantTime() const { return m_constantTime; } ///< min, 0 for none
    const std::vector<CRow>& GetRows() const { return m_rows; }

private:
    double m_constantTime = 0.0;
    std::vector<CRow> m_rows;
};

} // namespace OLMGis::Sewage

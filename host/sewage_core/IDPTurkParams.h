// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string_view>
#include <vector>

namespace OLMGis::Sewage {

/// Rain intensity by rows of parameters: each row holds up to a catchment area, and its intensity falls with the time
/// as A / (t + B)^C.
///
/// As text: "tc;limit:A:B:C;limit:A:B:C;...": a constant concentration time (min), 0 for none, and rows in order, each
/// with its highest area (ha), A (l/(s·ha) · min^C), B (min) and C (-).
class CIDPTurkParams {
public:
    struct CRow {
        double m_limit; ///< ha
        double m_a;
        double m_b; ///< min
        double m_c;
    };

    /// Takes the default rows of the installation. 1 when it has them; else 0, and there is no row.
    int Load();

    /// Takes the rows of a text. 1 when it parses; any other text changes nothing and gives 0.
    int setValue(std::string_view text);

    /// Intensity (l/(s·ha)) for an area (ha) and a time (min), which gives way to a constant concentration time above
    /// 0: by the first row whose limit is not below the area, else by the last; 0 without rows.
    double getIntesity(double area, double time) const;

    /// The row that holds for an area (ha); null without rows.
    const CRow* FindRow(double area) const;

    double GetConstantTime() const { return m_constantTime; } ///< min, 0 for none
    const std::vector<CRow>& GetRows() const { return m_rows; }

private:
    double m_constantTime = 0.0;
    std::vector<CRow> m_rows;
};

} // namespace OLMGis::Sewage

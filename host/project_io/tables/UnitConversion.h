// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// From one unit to another: a factor and a divisor, both whole numbers, so that 485 cm become 4.85 m exactly.
struct CUnitConversion {
    double m_times = 1.0;
    double m_over = 1.0;

    bool IsOne() const { return m_times == m_over; }
    double Apply(double value) const { return value * m_times / m_over; }
};

/// The conversion of a unit as people write it ("l/s", "m3/h", "‰"; case, blanks and raised figures do not count) to
/// the unit of an attribute; nothing for a unit of another quantity and for an unknown one.
std::optional<CUnitConversion> FindUnitConversion(std::string_view from, std::string_view to);

/// The units that can be converted to the unit of an attribute: "m, mm, cm". That unit first.
std::string ListUnits(std::string_view to);

} // namespace OLMGis::ProjectIo

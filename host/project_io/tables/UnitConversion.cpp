// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/UnitConversion.h"

#include "host/project_io/tables/TableText.h"

#include <array>
#include <cstdint>
#include <numeric>

namespace OLMGis::ProjectIo {

namespace {

enum class enmQuantity : std::uint8_t {
    Length,
    Area,
    Flow,
    Slope,
    Time,
    Ratio,
    Percentage,
    Density,
    Frequency,
    Velocity,
    FlowPerLength,
    Intensity,
    Manning
};

/// A unit is times / over of the basic one of its quantity.
struct CUnit {
    enmQuantity m_quantity;
    std::string_view m_name; ///< as NormalUnit gives it
    std::int64_t m_times;
    std::int64_t m_over;
    bool m_isListed = true; ///< false for another way to write the unit above
};

using enum enmQuantity;
constexpr std::array Units = {
    CUnit{Length, "m", 1, 1},
    CUnit{Length, "м", 1, 1, false},
    CUnit{Length, "mm", 1, 1000},
    CUnit{Length, "мм", 1, 1000, false},
    CUnit{Length, "cm", 1, 100},
    CUnit{Length, "см", 1, 100, false},
    CUnit{Length, "dm", 1, 10},
    CUnit{Length, "km", 1000, 1},
    CUnit{Length, "ft", 3048, 10000},
    CUnit{Length, "in", 254, 10000},
    CUnit{Area, "ha", 1, 1},
    CUnit{Area, "ха", 1, 1, false},
    CUnit{Area, "m2", 1, 10000},
    CUnit{Area, "м2", 1, 10000, false},
    CUnit{Area, "a", 1, 100},
    CUnit{Area, "ar", 1, 100, false},
    CUnit{Area, "km2", 100, 1},
    CUnit{Area, "ac", 40468564224, 100000000000},
    CUnit{Flow, "m3/s", 1, 1},
    CUnit{Flow, "м3/с", 1, 1, false},
    CUnit{Flow, "l/s", 1, 1000},
    CUnit{Flow, "л/с", 1, 1000, false},
    CUnit{Flow, "l/min", 1, 60000},
    CUnit{Flow, "m3/h", 1, 3600},
    CUnit{Flow, "m3/d", 1, 86400},
    CUnit{Slope, "1/1000", 1, 1},
    CUnit{Slope, "‰", 1, 1, false},
    CUnit{Slope, "o/oo", 1, 1, false},
    CUnit{Slope, "m/km", 1, 1, false},
    CUnit{Slope, "mm/m", 1, 1, false},
    CUnit{Slope, "%", 10, 1},
    CUnit{Slope, "cm/m", 10, 1, false},
    CUnit{Slope, "m/m", 1000, 1},
    CUnit{Slope, "", 1000, 1, false},
    CUnit{Time, "min", 1, 1},
    CUnit{Time, "мин", 1, 1, false},
    CUnit{Time, "s", 1, 60},
    CUnit{Time, "h", 60, 1},
    CUnit{Ratio, "", 1, 1, false},
    CUnit{Ratio, "%", 1, 100},
    CUnit{Percentage, "%", 1, 1},
    CUnit{Percentage, "", 100, 1, false},
    CUnit{Density, "inh/ha", 1, 1},
    CUnit{Density, "inhabitants/ha", 1, 1, false},
    CUnit{Density, "e/ha", 1, 1, false},
    CUnit{Density, "ew/ha", 1, 1, false},
    CUnit{Density, "st/ha", 1, 1, false},
    CUnit{Density, "loc/ha", 1, 1, false},
    CUnit{Density, "kisi/ha", 1, 1, false},
    CUnit{Density, "inh/km2", 1, 100},
    CUnit{Frequency, "1/year", 1, 1},
    CUnit{Frequency, "1/a", 1, 1, false},
    CUnit{Velocity, "m/s", 1, 1},
    CUnit{Velocity, "cm/s", 1, 100},
    CUnit{FlowPerLength, "m3/(s.m)", 1, 1},
    CUnit{FlowPerLength, "l/(s.m)", 1, 1000},
    CUnit{FlowPerLength, "l/(s.km)", 1, 1000000},
    CUnit{Intensity, "l/(s.ha)", 1, 1},
    CUnit{Intensity, "l/s/ha", 1, 1, false},
    CUnit{Intensity, "l/s.ha", 1, 1, false},
    CUnit{Manning, "s/m^(1/3)", 1, 1},
};

/// Small letters without blanks and raised figures, a point for the sign of multiplication; empty for "-".
std::string NormalUnit(std::string_view unit) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 4> written = {
        {{"²", "2"}, {"³", "3"}, {"·", "."}, {"*", "."}}};
    std::string normal;
    for (const char each : FoldText(unit)) // a hyphen is a blank there
        if (each != ' ')
            normal += each;
    for (const auto& [from, to] : written)
        for (std::size_t at = normal.find(from); at != std::string::npos; at = normal.find(from))
            normal.replace(at, from.size(), to);
    return normal;
}

} // namespace

std::optional<CUnitConversion> FindUnitConversion(std::string_view from, std::string_view to) {
    const std::string source = NormalUnit(from);
    const std::string target = NormalUnit(to);
    for (const CUnit& toUnit : Units) {
        if (toUnit.m_name != target)
            continue;
        // "%" and "" are units of several quantities; the attribute's own quantity has them as the basic unit.
        if (toUnit.m_times != toUnit.m_over && (target == "%" || target.empty()))
            continue;
        for (const CUnit& fromUnit : Units) {
            if (fromUnit.m_quantity != toUnit.m_quantity || fromUnit.m_name != source)
                continue;
            const std::int64_t times = fromUnit.m_times * toUnit.m_over;
            const std::int64_t over = fromUnit.m_over * toUnit.m_times;
            const std::int64_t common = std::gcd(times, over);
            return CUnitConversion{static_cast<double>(times / common), static_cast<double>(over / common)};
        }
        return std::nullopt;
    }
    return std::nullopt;
}

std::string ListUnits(std::string_view to) {
    std::string list(to);
    for (const CUnit& unit : Units)
        if (unit.m_isListed && unit.m_name != NormalUnit(to) && FindUnitConversion(unit.m_name, to))
            list += (list.empty() ? "" : ", ") + std::string(unit.m_name);
    return list;
}

} // namespace OLMGis::ProjectIo

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ValueRange.h"

#include "host/gis_core/Utility.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace OLMGis::Data {

using Utility::CUtility;

namespace {

bool IsPossible(const CValueRange& range, double value) {
    const bool isAboveMin = !range.m_min || value > *range.m_min || (value == *range.m_min && !range.m_isMinExcluded);
    const bool isBelowMax = !range.m_max || value < *range.m_max || (value == *range.m_max && !range.m_isMaxExcluded);
    return isAboveMin && isBelowMax;
}

std::string TextOf(double value) {
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value > 0.0 ? "Infinity" : "-Infinity";
    return CUtility::ToText(value);
}

std::string WithUnit(std::string text, std::string_view unit) {
    return unit.empty() || unit == "-" ? text : fmt::format("{} {}", text, unit);
}

std::string TextOfBounds(const std::optional<double>& least, const std::optional<double>& greatest,
                         std::string_view unit) {
    if (least && greatest)
        return WithUnit(fmt::format("{} to {}", TextOf(*least), TextOf(*greatest)), unit);
    if (least)
        return WithUnit(TextOf(*least), unit) + " or more";
    return greatest ? WithUnit(TextOf(*greatest), unit) + " or less" : "a finite number";
}

} // namespace

enmJudgement Judge(const CValueRange& range, double value) {
    if (!std::isfinite(value))
        return range.m_isResult ? enmJudgement::Fine : enmJudgement::Impossible;
    if (std::find(range.m_marks.begin(), range.m_marks.end(), value) != range.m_marks.end())
        return enmJudgement::Fine;
    if (!IsPossible(range, value))
        return enmJudgement::Impossible;
    const bool isUsual = (!range.m_usualMin || value >= *range.m_usualMin) && //
                         (!range.m_usualMax || value <= *range.m_usualMax);
    return isUsual ? enmJudgement::Fine : enmJudgement::Unusual;
}

CFineBand GetFineBand(const CValueRange& range) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return {std::max(range.m_min.value_or(-infinity), range.m_usualMin.value_or(-infinity)),
            std::min(range.m_max.value_or(infinity), range.m_usualMax.value_or(infinity))};
}

std::string PossibleValues(const CValueRange& range, std::string_view unit) {
    if (!range.m_isMinExcluded && !range.m_isMaxExcluded)
        return TextOfBounds(range.m_min, range.m_max, unit);
    std::string text;
    if (range.m_min)
        text = (range.m_isMinExcluded ? "above " : "from ") + TextOf(*range.m_min);
    if (range.m_max)
        text += (text.empty() ? "" : " and ") + std::string(range.m_isMaxExcluded ? "below " : "up to ") +
                TextOf(*range.m_max);
    return WithUnit(text, unit);
}

std::string UsualValues(const CValueRange& range, std::string_view unit) {
    return TextOfBounds(range.m_usualMin ? range.m_usualMin : range.m_min,
                        range.m_usualMax ? range.m_usualMax : range.m_max, unit);
}

std::string ExplainJudgement(const CValueRange& range, double value, std::string_view unit) {
    if (Judge(range, value) == enmJudgement::Impossible)
        return fmt::format("found {}, expected {}", TextOf(value), PossibleValues(range, unit));
    return fmt::format("found {}, usual are {}", TextOf(value), UsualValues(range, unit));
}

} // namespace OLMGis::Data

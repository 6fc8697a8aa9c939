// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Data {

/// What a number is worth as input.
enum class enmJudgement {
    Fine,
    Unusual,    ///< possible, but more often a slip (wrong unit, decimal point) than meant: accepted with a warning
    Impossible, ///< no quantity of this kind has this value: refused
};

/// The possible and the usual values of a quantity, in its unit. A bound that is absent does not limit. A range without
/// any bound still refuses what is not finite.
struct CValueRange {
    std::optional<double> m_min;      ///< least possible value
    std::optional<double> m_max;      ///< greatest possible value
    std::optional<double> m_usualMin; ///< least usual value; absent: that of the possible ones
    std::optional<double> m_usualMax; ///< greatest usual value; absent: that of the possible ones
    bool m_isMinExcluded = false;     ///< the least possible value itself is impossible
    bool m_isMaxExcluded = false;     ///< the greatest possible value itself is impossible
    bool m_isResult = false;          ///< only runs write it: infinity and not-a-number are results, kept as they are
    std::vector<double> m_marks;      ///< fine besides the range, such as -1000000, which calculations read as absent
};

/// The one judge of numbers, for arguments, tables, files, forms and opened projects. Not-a-number and infinity are
/// impossible but in results.
enmJudgement Judge(const CValueRange& range, double value);

/// The least and the greatest value that are fine apart from marks, minus and plus infinity where nothing limits: a
/// scan of many numbers judges only those outside. An excluded bound is inside.
struct CFineBand {
    double m_least;
    double m_greatest;
};
CFineBand GetFineBand(const CValueRange& range);

/// What was found and what was expected: "found -5, expected 0 to 10000 min"; of an unusual value "found 0.00075, usual
/// are 0.01 to 10 mm". unit: empty or "-" for none.
std::string ExplainJudgement(const CValueRange& range, double value, std::string_view unit);

/// The possible values alone: "0 to 10000 min", "0 or more", "above 0 and up to 1", "a finite number".
std::string PossibleValues(const CValueRange& range, std::string_view unit);

/// The usual values alone: "0.01 to 10 mm".
std::string UsualValues(const CValueRange& range, std::string_view unit);

} // namespace OLMGis::Data

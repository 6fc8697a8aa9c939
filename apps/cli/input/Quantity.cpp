// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Quantity.h"

#include "host/gis_core/Utility.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Data::CValueRange;
using OLMGis::Data::enmJudgement;
using OLMGis::Data::ExplainJudgement;
using OLMGis::Data::Judge;
using OLMGis::Data::PossibleValues;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Status;

CValueRange Range(double least, double greatest, double leastUsual, double greatestUsual) {
    CValueRange range;
    range.m_min = least;
    range.m_max = greatest;
    range.m_usualMin = leastUsual;
    range.m_usualMax = greatestUsual;
    return range;
}

void WarnOfUnusual(const CQuantity& quantity, double value, std::vector<std::string>& warnings) {
    if (Judge(quantity.m_range, value) == enmJudgement::Unusual)
        warnings.push_back(
            fmt::format("{}: {}", quantity.m_option, ExplainJudgement(quantity.m_range, value, quantity.m_unit)));
}

Status ReadNumber(const CQuantity& quantity, std::string_view text, double& value, std::vector<std::string>& warnings) {
    const auto number = CUtility::ParseDouble(text);
    if (!number || Judge(quantity.m_range, *number) == enmJudgement::Impossible)
        return BadArguments(fmt::format("{}: found \"{}\", expected a number: {}", quantity.m_option,
                                        Reports::OnOneLine(text), PossibleValues(quantity.m_range, quantity.m_unit)));
    value = *number;
    WarnOfUnusual(quantity, value, warnings);
    return Done{};
}

CQuantity Viscosity() {
    CQuantity viscosity{"--viscosity", "m²/s", Range(0.0, 1.0, 1e-7, 1e-4)};
    viscosity.m_range.m_marks = {0.0};
    return viscosity;
}

} // namespace Cli

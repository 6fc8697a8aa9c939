// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/editions/RORainCoefficients.h"

#include "host/gis_core/Utility.h"

#include <charconv>
#include <limits>
#include <string>
#include <system_error>
#include <vector>

using OLMGis::Utility::CUtility;

namespace {

/// The whole number that a text begins with, held at the ends of the range; 0 without one.
int ToInt(std::string_view text) {
    text = CUtility::Trim(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    int number = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), number).ec == std::errc::result_out_of_range)
        return text.front() == '-' ? std::numeric_limits<int>::min() : std::numeric_limits<int>::max();
    return number;
}

} // namespace

int CRORainCoefficients::ParseValue(std::string_view text) {
    std::vector<std::string> parts;
    if (CUtility::SplitString(text, parts, ';') != 4)
        return 0;
    m_areaKind = ToInt(parts[0]);
    m_sensitive = CUtility::ToDouble(parts[1]);
    m_shortDuration = CUtility::ToDouble(parts[2]);
    m_longDuration = CUtility::ToDouble(parts[3]);
    return 1;
}

std::string CRORainCoefficients::FormatValue() const {
    return CUtility::Format("%d;%.6f;%.6f;%.6f", m_areaKind, m_sensitive, m_shortDuration, m_longDuration);
}

double CRORainCoefficients::GetCoefficient(double inletTime) const {
    if (m_areaKind == 0)
        return m_sensitive;
    // The inlet time decides, not the concentration time. Fixed: others rely on it.
    return inletTime > LongestShortDuration ? m_longDuration : m_shortDuration;
}

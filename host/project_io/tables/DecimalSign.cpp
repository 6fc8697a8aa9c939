// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/DecimalSign.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/AttributeText.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

using Utility::BadInput;
using Utility::CUtility;
using Utility::Result;

namespace {

std::string_view NameOf(char sign) {
    return sign == ',' ? "comma" : "point";
}

} // namespace

Result<std::string_view> CDecimalSign::WithPoint(std::string_view text, std::size_t line) {
    const auto commas = std::count(text.begin(), text.end(), ',');
    const auto points = std::count(text.begin(), text.end(), '.');
    if (commas + points == 0)
        return text;
    if (commas + points > 1) {
        std::string digits(text);
        std::erase_if(digits, [](char each) { return each == ',' || each == '.'; });
        if (CUtility::ParseDouble(digits))
            return BadInput(fmt::format("found {}, expected a number without signs between thousands", Quote(text)));
        return text;
    }
    m_changed = text;
    std::replace(m_changed.begin(), m_changed.end(), ',', '.');
    if (!CUtility::ParseDouble(m_changed))
        return text;
    const char sign = commas > 0 ? ',' : '.';
    if (m_sign == 0) {
        m_sign = sign;
        m_line = line;
        m_first = CUtility::Trim(text);
    }
    if (sign != m_sign)
        return BadInput(fmt::format("found {}, expected a decimal {} as on line {} ({})", Quote(text), NameOf(m_sign),
                                    m_line, m_first));
    return commas > 0 ? std::string_view(m_changed) : text;
}

std::string CDecimalSign::Describe() const {
    return m_sign == 0 ? std::string() : fmt::format("decimal {} (line {}: {})", NameOf(m_sign), m_line, m_first);
}

} // namespace OLMGis::ProjectIo

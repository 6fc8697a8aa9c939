// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"

#include <functional>
#include <string>
#include <string_view>

namespace Rain {

/// One number or text for explanations: name, unit (empty for texts and codes) and value; null where there is none.
struct CExplained {
    const char* m_name;
    const char* m_unit;
    OLMGis::Data::CDataBox m_value;
};

/// Numbers of an explanation by the names of CExplained, as a calculation sheet has them; has: false for null.
struct CExplainedNumbers {
    std::function<double(std::string_view name)> m_number;
    std::function<bool(std::string_view name)> m_has;
};

/// A formula of a calculation sheet: as letters, with numbers in place of the letters, and unit and remarks, which
/// follow the result.
struct CSheetFormula {
    std::string m_letters;
    std::string m_numbers;
    std::string m_unit;
};

/// A number in seven digits: enough to calculate with, few enough to read.
std::string ShowNumber(double number);

} // namespace Rain

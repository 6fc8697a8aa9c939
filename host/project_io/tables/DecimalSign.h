// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// The decimal sign of a table, point or comma: that of its first number with one. A later number with the other sign
/// is a fault, because it is then unknown which of the two separates thousands.
class CDecimalSign {
public:
    /// The text with a point as its decimal sign; a text that is no number as it is. line: where it is. BadInput
    /// ("found
    /// ..., expected ...") for a number with the other sign and for one with signs between thousands.
    Utility::Result<std::string_view> WithPoint(std::string_view text, std::size_t line);

    /// "decimal comma (line 2: 12,5)"; empty while no number had a sign.
    std::string Describe() const;

private:
    char m_sign = 0;
    std::size_t m_line = 0; ///< of the first number with a sign
    std::string m_first;
    std::string m_changed; ///< the last number in which the sign was replaced
};

} // namespace OLMGis::ProjectIo

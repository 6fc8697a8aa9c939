// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/curves/Explained.h"

#include <fmt/format.h>

namespace Rain {

std::string ShowNumber(double number) {
    return fmt::format("{:.7g}", number);
}

} // namespace Rain

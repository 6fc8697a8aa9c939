// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/formulas/Roughness.h"

#include "host/formulas/Units.h"

#include <cmath>

namespace OLMGis::Formulas {

double RoughnessOfManning(double manning) {
    return manning > 0.0 ? std::pow(26.0 * manning, 6.0) * MillimetresPerMetre : 0.0;
}

} // namespace OLMGis::Formulas

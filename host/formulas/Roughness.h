// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::Formulas {

/// Equivalent sand roughness (mm) of Manning's n (s/m^(1/3), > 0).
/// Source: Strickler 1923, 1/n = 26 / d^(1/6) with d in m, used as k: k = (26 n)^6. Valid for rough flow with a
/// hydraulic radius of about 4 to 500 times k, that is for n from about 0.009 (smooth pipes) to 0.03; outside it the
/// sixth power of n gives lengths without physical meaning.
/// Bad input: 0 for n of 0 or below, never NaN.
double RoughnessOfManning(double manning);

} // namespace OLMGis::Formulas

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/RunSettings.h"

#include "rain/curves/Rainfall.h"

namespace Rain {

double CRunSettings::GetIntensity(double time, double area) const {
    return m_rainfall ? m_rainfall->GetIntensity(time, area) : 0.0;
}

bool CRunSettings::HasRunningInletTime() const {
    return m_rainfall && m_rainfall->HasRunningInletTime();
}

} // namespace Rain

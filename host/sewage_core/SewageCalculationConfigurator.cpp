// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/SewageCalculationConfigurator.h"

#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/Utility.h"

namespace OLMGis::Sewage {

int CSewageCalculationConfigurator::IsTurkishExtensionAllowed() {
    using System::CProjectSettings;
    const auto setting = Utility::CUtility::ParseInt(CProjectSettings::Instance()->Get(CProjectSettings::Turkish));
    return setting.value_or(0) != 0 ? 1 : 0;
}

} // namespace OLMGis::Sewage

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/Edition.h"

#include "host/gis_core/ModuleConfiguration.h"

namespace Edition {

bool Is(std::string_view code) {
    using OLMGis::Utility::CModuleConfiguration;
    return CModuleConfiguration::Instance()->GetMsg(CModuleConfiguration::EditionMessage) == code;
}

} // namespace Edition

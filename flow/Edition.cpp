// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/Edition.h"

#include "host/gis_core/ModuleConfiguration.h"

namespace Flow::Edition {

bool Is(std::string_view code) {
    using namespace OLMGis::Utility;
    return Msg(CModuleConfiguration::EditionMessage) == code;
}

} // namespace Flow::Edition

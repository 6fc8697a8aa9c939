// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/editions/PropIDPTurkish.h"

using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;

int CPropIDPTurkish::ShowDialog(CPropertyEx* /*property*/, CPropertiesEx* /*properties*/) {
    return 1;
}

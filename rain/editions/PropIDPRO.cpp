// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/editions/PropIDPRO.h"

using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;

int CPropIDPRO::ShowDialog(CPropertyEx* /*property*/, CPropertiesEx* /*properties*/) {
    return 1;
}

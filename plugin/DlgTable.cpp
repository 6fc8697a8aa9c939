// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/DialogTable.h"

using OLMGis::Workspace::CDialogTable;
using OLMGis::Workspace::DialogTableVersion;

/// Lists all dialogs of the module. It has none yet: the panel and the dialogs of rain and of special structures
/// follow.
const CDialogTable* OLMDialogTableProvider() {
    static constexpr CDialogTable table{DialogTableVersion, nullptr, 0};
    return &table;
}

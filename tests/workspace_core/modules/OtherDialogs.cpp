// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors

// Dialogs of another version: none of them may be read.
#include "host/workspace_core/DialogTable.h"

const OLMGis::Workspace::CDialogTable* OLMDialogTableProvider() {
    static constexpr OLMGis::Workspace::CDialogTable table{999, nullptr, 1000};
    return &table;
}

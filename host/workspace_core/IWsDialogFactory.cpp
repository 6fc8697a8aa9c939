// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/IWsDialogFactory.h"

namespace OLMGis::Workspace {

// Out of line, so that the tables of operations exist once, in this library, and outlive every module.
IWsDialogFactory::~IWsDialogFactory() = default;
CWsPanelDialog::~CWsPanelDialog() = default;

} // namespace OLMGis::Workspace

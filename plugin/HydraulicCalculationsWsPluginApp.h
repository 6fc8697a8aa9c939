// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/workspace_core/ModuleApplication.h"

/// The module as its host sees it. Declares on loading that it may be unloaded at run time and knows of several open
/// documents. It has no host command, function or class of its own, so that every other message has no effect.
class CHydraulicCalculationsWsPluginApp final : public AcRxArxApp {
public:
    CHydraulicCalculationsWsPluginApp();
};

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "plugin/HydraulicCalculationsWsPluginApp.h"

CHydraulicCalculationsWsPluginApp::CHydraulicCalculationsWsPluginApp() {
    m_isUnlockable = 1;
    m_isDocumentAware = 1;
}

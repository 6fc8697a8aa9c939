// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/ProjectContext.h"

/// A project of its own for one test, active while it lives.
class CTestProject {
public:
    OLMGis::Data::CAttributeStore& Store() { return m_context.GetAttributes(); }

private:
    OLMGis::System::CProjectContext m_context;
    OLMGis::System::CContextActivation m_activation{m_context};
};

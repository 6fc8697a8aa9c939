// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/editions/DesignStandard.h"

namespace Rain {

/// The choice "STANDARD": no factor and no field of its own.
class CPlainStandard final : public CDesignStandard {
public:
    int GetCode() const override { return 0; }
    const char* GetName() const override { return "STANDARD"; }
};

} // namespace Rain

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "flow/FlowKeys.h"
#include "rain/editions/DesignStandard.h"

namespace Rain {

/// The choice "BLG": each section has a retention, which multiplies its flow time.
class CBulgarianStandard final : public CDesignStandard {
public:
    int GetCode() const override { return 1; }
    const char* GetName() const override { return "BLG"; }

    const CRequiredNumber* FindTimeFactor() const override {
        static constexpr int NoRetention = 6128; // message
        static constexpr CRequiredNumber Retention{Flow::Keys::RetentionBulgarian, NoRetention};
        return &Retention;
    }
    CShownFactor ShowTimeFactor() const override { return {"r", "r of the section (FLOW_BLG_RET)"}; }
};

} // namespace Rain

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/curves/FormFields.h"

#include <optional>
#include <vector>

namespace Rain {

/// A factor as calculation sheets show it: its letter, and where its value comes from.
struct CShownFactor {
    const char* m_letter;
    const char* m_source;
};

/// A number that a standard requires of each section: the key of its attribute, and the message for a section without
/// it.
struct CRequiredNumber {
    const char* m_key;
    int m_missingMessage;
};

/// A design standard: one choice of CALC_STANDARD with its fields of the form, its factors, what it reads of sections,
/// and its part of calculation sheets. A new one has its default parameters until Read; those of a run don't change.
class CDesignStandard {
public:
    virtual ~CDesignStandard() = default;

    virtual int GetCode() const = 0;         ///< what the form stores for the choice
    virtual const char* GetName() const = 0; ///< the choice as the form shows it

    /// Adds the fields that show under this choice alone; returns their tags in order.
    virtual std::vector<const char*> AddFields(const CCategoryPtr& /*category*/) const { return {}; }
    virtual void Read(CFormReading& /*reading*/) {}

    /// The factor (-) of the flow for an inlet time (min); none where the standard leaves flows alone.
    virtual std::optional<double> GetFlowFactor(double /*inletTime*/) const { return std::nullopt; }
    virtual CShownFactor ShowFlowFactor() const { return {"", ""}; }

    /// The attribute of sections by which their flow times are multiplied; null where the standard has none.
    virtual const CRequiredNumber* FindTimeFactor() const { return nullptr; }
    virtual CShownFactor ShowTimeFactor() const { return {"", ""}; }
};

} // namespace Rain

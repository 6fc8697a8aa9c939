// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/curves/Explained.h"
#include "rain/curves/FormFields.h"

#include <string>
#include <vector>

class CIDFCurves;

namespace Rain {

/// A source of rainfall intensities: one choice of RAINFALL_MODE with its fields of the form, its formula and its part
/// of explanations. A new one is without parameters until Read; those of a run don't change.
class CRainfall {
public:
    virtual ~CRainfall() = default;

    /// What the form stores for the choice: the number of the message that names it.
    virtual int GetMode() const = 0;

    /// Adds the fields that show under this choice alone; returns their tags in order.
    virtual std::vector<const char*> AddFields(const CCategoryPtr& category) const = 0;

    virtual void Read(CFormReading& reading) = 0;

    /// Intensity (l/(s·ha)) for a concentration time (min) and an effective area (ha); negative without a curve, which
    /// no iteration accepts.
    virtual double GetIntensity(double time, double area) const = 0;

    /// Whether the inlet time of a section is the time at which the flow reaches it, so that it grows along the path
    /// and the concentration time is that and the section's own flow time.
    virtual bool HasRunningInletTime() const { return false; }

    /// Curves of a file, null for other sources.
    virtual const CIDFCurves* FindCurves() const { return nullptr; }

    /// What in the input was left out, each a line for the log.
    virtual std::vector<std::string> ListProblems() const { return {}; }

    /// Parameters of the run, and the numbers behind one intensity (time in min, area in ha). The same names for every
    /// object of a class, also without parameters.
    virtual std::vector<CExplained> ExplainParameters() const { return {}; }
    virtual std::vector<CExplained> ExplainIntensity(double /*time*/, double /*area*/) const { return {}; }

    // Lines of the calculation sheet, from the numbers above and the run's.

    /// The source and its parameters in one line.
    virtual std::string ShowSource(const CExplainedNumbers& basis, std::string_view curveFile) const = 0;

    /// The general formula, after its letter.
    virtual std::string ShowFormula() const = 0;

    /// The formula of one pass; with empty letters m_unit is the whole line.
    virtual CSheetFormula ShowIntensity(const CExplainedNumbers& basis, const CExplainedNumbers& pass) const = 0;
};

} // namespace Rain

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/FlowCalculatorParameters.h"
#include "rain/curves/FormFields.h"
#include "rain/run/RunSettings.h"

#include <string>
#include <vector>

class CIDFCurves;

/// The parameters of one run of the rain calculation by intensity curves, read from its form.
class CRainITPParameters : public Rain::CRunSettings {
public:
    /// Reads the form of parameters (neither null) in a fixed order: a refused question stops the reading. interactive:
    /// non-zero asks before a search over combinations, whose cost can be enormous, with forecast after the question
    /// unless it is empty. 1 when nothing is missing or out of range; else 0, with m_errors naming what is, empty after
    /// a mere No.
    int ReadParameters(OLMGis::Sewage::CFlowCalculatorParameters* parameters, int interactive,
                       const std::string& forecast = {});

    /// What to show after a failed reading: the errors as a list.
    std::string BuildParameterErrorText() const;

    /// What of the curve file and of texts was left out by the last reading, each a line for the log.
    std::vector<std::string> ListProblems() const;

    /// The curves of the file; null when the rain is from another source.
    const CIDFCurves* FindCurves() const;

    std::vector<std::string> m_errors;    ///< names of properties that are missing or out of range
    std::vector<std::string> m_unread;    ///< names of properties with invalid texts, for which the defaults apply
    std::vector<std::string> m_wrongTags; ///< tags of the properties of m_errors

private:
    int Read(Rain::CFormReading& reading, int interactive, const std::string& forecast);
    void ReadPipeGroup(Rain::CFormReading& reading);
};

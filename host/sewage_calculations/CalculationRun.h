// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/sewage_core/IFlowCalculator.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Sewage {

/// What one run of a calculator is to do.
struct CCalculationRequest {
    std::string m_key; ///< of the calculator

    /// The sections to calculate; empty for all of the network. A whole-network calculator gets all of them always.
    CSectionList m_sections;

    /// Shows the report of a preview; 1 to go on and store. Without one no preview is made.
    std::function<int(std::string_view title, const CReport& report)> m_showPreview;
};

/// What one key got by a run.
struct CStoredResult {
    const Data::CDataDefinition* m_definition = nullptr;
    int m_count = 0;        ///< entities that have a value from the run
    double m_sum = 0.0;     ///< of finite numbers, in the order of storing
    double m_minimum = 0.0; ///< among finite numbers
    double m_maximum = 0.0;
    int m_finiteCount = 0; ///< entities with a finite number
};

enum class enmRunEnd {
    Finished,  ///< ran to its end; m_results tells whether something was stored
    Previewed, ///< a preview was shown and not followed by storing
    GivenUp,   ///< the form was not confirmed; nothing was changed
    Alerted,   ///< stopped with an alert; nothing is stored
    Cancelled, ///< the user interrupted; nothing is stored
};

struct CCalculationOutcome {
    enmRunEnd m_end = enmRunEnd::Finished;
    int m_result = 0;                     ///< what Calculate answered
    int m_sectionCount = 0;               ///< sections handed to the calculator
    std::string m_parameters;             ///< serialised parameters of the run
    bool m_hasChanges = false;            ///< whether anything was stored, parameter texts included
    std::vector<CStoredResult> m_results; ///< keys that got values, parameter texts left out, in the order of storing
    std::vector<std::string> m_alerts;    ///< texts shown during the run

    bool HasStored() const { return !m_results.empty(); }
};

/// One whole run on the active project: looks the calculator up, makes the form, lets the form editor in force edit it,
/// shows a preview where there is one, calculates. A run that stops with an alert or is cancelled leaves the attributes
/// as they were. BadWords for an unknown key. Cost beside the calculation: the values that it stored.
Utility::Result<CCalculationOutcome> RunCalculation(const CCalculationRequest& request);

} // namespace OLMGis::Sewage

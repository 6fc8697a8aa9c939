// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/sewage_calculations/OutdatedResults.h"
#include "host/sewage_core/ICalculatorInputs.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Sewage {

/// One run of a calculator to make.
struct CCalculationRequest {
    std::string m_key; ///< of the calculator

    /// The sections to calculate; empty for all of the network. A whole-network calculator always gets all of them.
    CSectionList m_sections;

    /// Shows the report of a preview; returns 1 to go on and store. Without it no preview is made.
    std::function<int(std::string_view title, const CReport& report)> m_showPreview;
};

/// What one run stored under one key.
struct CStoredResult {
    const Data::CDataDefinition* m_definition = nullptr;
    int m_count = 0;        ///< sections that have a value from the run
    double m_sum = 0.0;     ///< of finite numbers, in the order of storing
    double m_minimum = 0.0; ///< among finite numbers
    double m_maximum = 0.0;
    int m_finiteCount = 0; ///< sections with a finite number
};

enum class enmRunEnd {
    Finished,  ///< ran to its end; m_results shows whether something was stored
    Previewed, ///< the user saw the preview and did not go on to store
    GivenUp,   ///< the user did not confirm the form; nothing was changed
    Alerted,   ///< stopped with an alert; nothing is stored
    Cancelled, ///< the user cancelled; nothing is stored
};

struct CCalculationOutcome {
    enmRunEnd m_end = enmRunEnd::Finished;
    int m_result = 0;                     ///< result of Calculate
    int m_sectionCount = 0;               ///< sections given to the calculator
    std::string m_parameters;             ///< serialised parameters of the run
    bool m_hasChanges = false;            ///< whether anything was stored, parameter texts included
    std::vector<CStoredResult> m_results; ///< keys that got values, without parameter texts, in the order of storing
    std::vector<std::string> m_alerts;    ///< texts shown during the run
    std::vector<CLack> m_lacks;           ///< of a run that stopped with an alert: all that its calculator lacks

    /// Results of other calculators that the run read although they were outdated before it.
    std::vector<COutdatedResult> m_outdated{};

    /// Values that earlier runs of the calculator stored on sections without results of this one.
    CFormerResults m_former{};

    bool HasStored() const { return !m_results.empty(); }
};

/// One whole run on the active project: finds the calculator, makes its form, lets the form editor in force edit it,
/// warns of missing densities where the calculator uses them, shows a preview where there is one, and calculates. A run
/// that stops with an alert or is cancelled leaves the attributes as they were. The form of one that stored results is
/// kept as the calculator's last one (CLastForms). BadArguments for an unknown key. Cost
/// apart from the calculation: linear in the values that it stored.
Utility::Result<CCalculationOutcome> RunCalculation(const CCalculationRequest& request);

} // namespace OLMGis::Sewage

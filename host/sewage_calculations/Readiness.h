// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/ICalculatorInputs.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace OLMGis::Sewage {

/// A calculator that is to run, with its form filled in.
struct CPlannedRun {
    boost::shared_ptr<IFlowCalculator> m_calculator;
    boost::shared_ptr<CFlowCalculatorParameters> m_parameters;
};

/// What a planned run lacks.
struct CMissingInput {
    std::string m_calculator; ///< key of the calculator that needs it
    CLack m_lack;
    std::string m_maker; ///< key of the calculator whose run makes a missing result; empty for an input
};

/// What one run over these sections lacks, as its calculator declares it; results of other calculators are left out.
/// Nothing for a calculator that declares nothing.
std::vector<CLack> FindLacks(const IFlowCalculator& calculator, CFlowCalculatorParameters& parameters,
                             const CSectionList& sections);

/// What runs over the whole active network lack, in their order, which is that of the runs. A result that an earlier
/// run of the plan makes is not lacking. Cost: linear for each run, and reading the files that its form names.
std::vector<CMissingInput> FindMissingInputs(const std::vector<CPlannedRun>& plan);

} // namespace OLMGis::Sewage

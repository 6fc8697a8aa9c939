// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/input/ArgumentFormEditor.h"
#include "apps/cli/shell/Terminal.h"
#include "host/gis_core/Result.h"
#include "host/sewage_calculations/CalculationRun.h"
#include "host/sewage_calculations/Readiness.h"
#include "host/sewage_core/IFlowCalculator.h"
#include "reports/ParameterFile.h"

#include <boost/shared_ptr.hpp>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// Keys of all calculators of the loaded module in ascending order.
std::vector<std::string> GetCalculatorKeys();

/// The calculator of a key; BadArguments for an unknown one.
OLMGis::Utility::Result<boost::shared_ptr<OLMGis::Sewage::IFlowCalculator>> FindCalculator(std::string_view key);

/// Arguments of the command line for a form. BadArguments for one that is not TAG=VALUE.
OLMGis::Utility::Result<std::vector<CFormValue>> ReadFormArguments(const std::vector<std::string>& arguments);

/// Reads a parameter file, whose calculators and checks must be registered; "-" for standard input.
OLMGis::Utility::Result<Reports::CParameterFile> ReadParameterFile(const std::string& path);

/// The values with which a calculator last stored results in the active project; none without such a run. project: its
/// path, for messages.
std::vector<CFormValue> GetLastValues(std::string_view calculator, const std::string& project);

/// Asked for each file that a form reads; an error gives the form up.
using CFileCheck = std::function<OLMGis::Utility::Status(const std::string& file)>;

/// A calculator with a new form into which values were entered. project: its path, for messages. The error is that of a
/// value that the form refuses, or of the check of a file. Notes go to the terminal.
OLMGis::Utility::Result<OLMGis::Sewage::CPlannedRun>
PlanRun(const boost::shared_ptr<OLMGis::Sewage::IFlowCalculator>& calculator, std::vector<CFormValue> values,
        const std::string& project, const CFileCheck& checkFile, CTerminal& terminal);

/// The command that lists the fields of a calculator's form, for messages.
std::string GetFormCommand(std::string_view calculator, const std::string& project);

/// A run as it was asked for: what messages about it name.
struct CRunNames {
    std::string m_project; ///< path
    std::string m_calculator;
};

/// Why a run ended early; Done for one that ended well, whatever it stored. After an alert the terminal shows what the
/// run lacks.
OLMGis::Utility::Status CheckEnd(const OLMGis::Sewage::CCalculationOutcome& outcome, const CArgumentFormEditor& editor,
                                 const CRunNames& names, CTerminal& terminal);

} // namespace Cli

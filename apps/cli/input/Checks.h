// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/input/ArgumentFormEditor.h"
#include "apps/cli/shell/Terminal.h"
#include "host/gis_core/Result.h"
#include "host/network_core/FunctionalAnalysisManager.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

using CCheckRequest = OLMGis::Topology::CFunctionalAnalysisManager::CRequest;

/// Keys of all checks in the order of registration, which is that of findings: the module's first, then our own.
std::vector<std::string> GetCheckKeys();

/// Those of the module.
std::vector<std::string> GetModuleCheckKeys();

/// The check of a key with its form and these values. BadArguments for an unknown key and for a value of the command
/// line that the form refuses, BadInput for one of a parameter file.
OLMGis::Utility::Result<CCheckRequest> MakeCheckRequest(std::string_view key, std::vector<CFormValue> values);

/// The checks that arguments ask for, in the order of registration: "ITEM" runs a check, "ITEM.TAG=VALUE" sets a value
/// of its form; without an ITEM all run, or those of the module alone. BadArguments for anything else, and for values
/// of a check that does not run.
OLMGis::Utility::Result<std::vector<CCheckRequest>> ReadCheckArguments(const std::vector<std::string>& arguments,
                                                                       bool isModuleOnly);

/// Runs checks; the project then has their findings. Cancelled when the user interrupted; Stopped, with the reasons
/// printed, when a check failed: a part of its findings would pass for all of them.
OLMGis::Utility::Status RunChecks(const std::vector<CCheckRequest>& requests, CTerminal& terminal);

} // namespace Cli

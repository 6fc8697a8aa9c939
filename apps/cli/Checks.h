// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Terminal.h"
#include "apps/cli/WordFormEditor.h"
#include "host/gis_core/Result.h"
#include "host/network_core/FunctionalAnalysisManager.h"

#include <string>
#include <string_view>
#include <vector>

namespace Cli {

using CCheckRequest = OLMGis::Topology::CFunctionalAnalysisManager::CRequest;

/// Keys of all checks of the loaded module in the order of registration, which is that of findings.
std::vector<std::string> GetCheckKeys();

/// The check of a key with its form, into which the words were typed. BadWords for an unknown key; BadWords for a word
/// of the command line that the form does not take, BadInput for one of a parameter file.
OLMGis::Utility::Result<CCheckRequest> MakeCheckRequest(std::string_view key, std::vector<CFormWord> words);

/// What the words of the command line ask for, in the order of registration: "ITEM" is to run, "ITEM.TAG=VALUE" goes
/// into its form; without an ITEM all run. BadWords for anything else, and for values of an item that is not to run.
OLMGis::Utility::Result<std::vector<CCheckRequest>> ReadCheckWords(const std::vector<std::string>& words);

/// Runs checks; their findings are then the project's. Cancelled when the user gave up; Stopped, all reasons told on
/// the way, when one ended before its end: half of its findings would pass for all of them.
OLMGis::Utility::Status RunChecks(const std::vector<CCheckRequest>& requests, CTerminal& terminal);

} // namespace Cli

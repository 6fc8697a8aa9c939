// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "rain/explain/RainTraceNames.h"
#include "rain/variations/VariationSearch.h"

#include <string_view>

/// What a rain calculation adds to an open run trace beside its results. Without an open trace each call costs a
/// branch.
namespace RainTrace {

/// After a finished walk, and after a finished search.
void NoteRun(const Rain::CRunInput& input, const Rain::CRunSettings& settings, const Rain::CNetworkWalk& walk);
void NoteBest(const Rain::CRunInput& input, const Rain::CRunSettings& settings, const Rain::CVariationSearch& search);

/// Where that is why a run stopped.
void NoteNotConverged(const Rain::CRunNetwork& network, const Rain::CRunStop& stop);

void NoteFile(std::string_view path);

} // namespace RainTrace

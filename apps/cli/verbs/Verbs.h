// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/shell/Verb.h"

#include <vector>

namespace Cli {

// One function per verb, in a file of the same name: its options, its help and what it does.
CVerb MakeNew();
CVerb MakeImport();
CVerb MakeGenerate();
CVerb MakeInfo();
CVerb MakeGet();
CVerb MakeSet();
CVerb MakeLoad();
CVerb MakeSlopes();
CVerb MakeSettings();
CVerb MakeCalculators();
CVerb MakeKeys();
CVerb MakeForm();
CVerb MakeReady();
CVerb MakeRun();
CVerb MakeDesign();
CVerb MakeCheck();
CVerb MakeDirections();
CVerb MakeBalance();
CVerb MakeSize();
CVerb MakeHydraulics();
CVerb MakePipe();
CVerb MakeCurves();
CVerb MakeCatalog();
CVerb MakeExport();

/// All verbs in the order of the help. Fast: nothing is read.
std::vector<CVerb> MakeVerbs();

} // namespace Cli

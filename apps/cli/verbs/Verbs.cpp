// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/verbs/Verbs.h"

namespace Cli {

std::vector<CVerb> MakeVerbs() {
    std::vector<CVerb> verbs;
    for (const auto make :
         {MakeNew,        MakeImport,  MakeGenerate,    MakeInfo,       MakeGet,   MakeSet,    MakeLoad,    MakeSlopes,
          MakeSettings,   MakeKeys,    MakeCalculators, MakeForm,       MakeReady, MakeRun,    MakeDesign,  MakeCheck,
          MakeDirections, MakeBalance, MakeSize,        MakeHydraulics, MakePipe,  MakeCurves, MakeCatalog, MakeExport})
        verbs.push_back(make());
    return verbs;
}

} // namespace Cli

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

namespace Cli {

/// How the program ends. Fixed: scripts rely on these numbers.
enum class enmExitCode : int {
    Done = 0,          ///< done; for a run: values were stored
    NothingStored = 1, ///< ran to its end and stored nothing; of a strict check, found something
    BadArguments = 2,  ///< invalid arguments on the command line; nothing was changed
    BadInput = 3,      ///< an input file contains something invalid
    Refused = 4,       ///< the system refused; the old project file is intact
    Stopped = 5,       ///< a calculation stopped with an alert; nothing was stored
    Interrupted = 130, ///< Ctrl+C; the project is unchanged
};

/// The one place where errors become exit codes.
constexpr enmExitCode ToExitCode(OLMGis::Utility::enmErrorKind kind) {
    using OLMGis::Utility::enmErrorKind;
    switch (kind) {
    case enmErrorKind::BadArguments:
        return enmExitCode::BadArguments;
    case enmErrorKind::BadInput:
        return enmExitCode::BadInput;
    case enmErrorKind::Refused:
        return enmExitCode::Refused;
    case enmErrorKind::Stopped:
        return enmExitCode::Stopped;
    case enmErrorKind::Cancelled:
        return enmExitCode::Interrupted;
    }
    return enmExitCode::Refused;
}

} // namespace Cli

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/shell/Terminal.h"
#include "host/gis_core/InputNotes.h"
#include "host/sewage_calculations/OutdatedResults.h"

#include <optional>
#include <string>
#include <vector>

namespace Cli {

/// Help of --strict on verbs that read results.
inline constexpr const char* StrictHelp = "Exit code 1, with nothing stored, when an outdated result is read";

/// Watches what a verb reads, from its making to Report.
class COutdatedReading {
public:
    /// project: path, for the commands that renew results.
    explicit COutdatedReading(std::string project);

    /// Ends and warns of each outdated result that was read; whether there were any.
    bool Report(CTerminal& terminal);

private:
    std::string m_project;
    std::vector<OLMGis::Sewage::COutdatedResult> m_outdated;
    OLMGis::Data::CInputNotes m_notes;
    std::optional<OLMGis::Data::CInputNotesScope> m_scope;
};

} // namespace Cli

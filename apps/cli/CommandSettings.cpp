// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandSettings.h"

#include "apps/cli/Assignments.h"
#include "apps/cli/KnownSettings.h"
#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "host/gis_core/ProjectSettings.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace Cli {

using OLMGis::System::CProjectSettings;
using OLMGis::Utility::BadWords;

namespace {

/// As words that "settings" takes again.
void PrintSettings(std::ostream& results) {
    for (const CKnownSetting& setting : GetKnownSettings())
        results << setting.m_name << '='
                << OnOneLine(CProjectSettings::Instance()->Get(setting.m_name, setting.m_default)) << '\n';
}

} // namespace

CVerbResult ShowOrChangeSettings(const CSettingsOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto assignments = SplitAssignments(options.m_words, "KEY=VALUE");
    if (!assignments)
        return assignments.GetError();
    if (assignments->empty() && !options.m_output.empty())
        return BadWords("--output: expected a setting to change");
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (assignments->empty()) {
        PrintSettings(results);
        return enmExitCode::Done;
    }
    std::vector<std::string> changed;
    for (const CAssignment& assignment : assignments.Value()) {
        if (const auto done = ChangeSetting(assignment.m_key, assignment.m_value); !done)
            return done.GetError();
        changed.push_back(fmt::format("{}={}", assignment.m_key, CProjectSettings::Instance()->Get(assignment.m_key)));
    }
    if (const std::string warning = GetCrsWarning(); !warning.empty())
        terminal.Warn(warning);
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Tell(fmt::format("{}: {}", project.Value()->GetTarget(options.m_output), fmt::join(changed, ", ")));
    return enmExitCode::Done;
}

} // namespace Cli

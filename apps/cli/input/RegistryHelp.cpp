// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/RegistryHelp.h"

#include "apps/cli/input/HelpTable.h"
#include "apps/cli/input/Project.h"
#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "reports/CalculatorListing.h"

#include <fmt/format.h>

namespace Cli {

namespace {

/// heading, then the table that make() builds with the module loaded.
std::string ListFromModule(const char* heading, Reports::CTable (*make)()) {
    CTerminal terminal(CTerminalOptions{true});
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return fmt::format("{} not available: {}", heading, project.GetError().message);
    if (const auto loaded = project.Value()->LoadModule(); !loaded)
        return fmt::format("{} not available: {}", heading, loaded.GetError().message);
    return ShowForHelp(heading, make());
}

} // namespace

std::string ListCalculatorsForHelp() {
    return ListFromModule("Calculators", [] {
        Reports::CTable table({Reports::TextColumn("key", ""), Reports::TextColumn("name", "")});
        for (const auto& calculator : OLMGis::Sewage::CFlowCalculatorManager::Instance()->GetCalculators())
            table.AddRow({calculator->GetKey(), calculator->GetCalculatorName()});
        return table;
    });
}

std::string ListChecksForHelp() {
    return ListFromModule("Checks (and the tags of their limits)", [] { return Reports::MakeCheckTable(); });
}

} // namespace Cli

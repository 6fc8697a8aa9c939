// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/TerminalDirectionEditor.h"

#include "apps/cli/ShownText.h"

#include <fmt/format.h>

namespace Cli {

int CTerminalDirectionEditor::EditDirections(const std::vector<boost::shared_ptr<OLMGis::Topology::CNode>>& nodes) {
    constexpr std::size_t MostNamed = 20;
    std::string names;
    for (std::size_t i = 0; i < nodes.size() && i < MostNamed; ++i)
        names += fmt::format("{}{}", i == 0 ? "" : ", ", nodes[i]->GetName());
    m_terminal.Error(fmt::format("{} without a main outlet: {}{}; settle them with \"directions\" --set or --auto",
                                 Count(nodes.size(), "node"), names, nodes.size() > MostNamed ? ", ..." : ""));
    return 0;
}

} // namespace Cli

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/shell/TerminalDirectionEditor.h"

#include "reports/ShownText.h"

#include <fmt/format.h>

#include <string_view>
#include <vector>

namespace Cli {

int CTerminalDirectionEditor::EditDirections(const std::vector<boost::shared_ptr<OLMGis::Topology::CNode>>& nodes) {
    constexpr std::size_t MostNamed = 20;
    std::vector<std::string_view> names;
    for (const auto& node : nodes)
        names.push_back(node->GetName());
    m_terminal.Error(fmt::format("{} without a main outlet: {}. Choose: drenova directions PROJECT --auto, or --set "
                                 "NODE=SECTION",
                                 Reports::Count(nodes.size(), "node"), Reports::FirstNames(names, MostNamed)));
    return 0;
}

} // namespace Cli

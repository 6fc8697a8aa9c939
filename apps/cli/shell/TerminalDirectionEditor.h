// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/shell/Terminal.h"
#include "host/sewage_core/DirectionEditor.h"

namespace Cli {

/// On a terminal main outlets cannot be picked during a run: the nodes are listed with the command that chooses their
/// outlets, and the run stops.
class CTerminalDirectionEditor final : public OLMGis::Sewage::IDirectionEditor {
public:
    explicit CTerminalDirectionEditor(CTerminal& terminal) : m_terminal(terminal) {}
    int EditDirections(const std::vector<boost::shared_ptr<OLMGis::Topology::CNode>>& nodes) override;

private:
    CTerminal& m_terminal;
};

} // namespace Cli

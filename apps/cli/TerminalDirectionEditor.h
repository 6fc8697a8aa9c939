// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/Terminal.h"
#include "host/sewage_core/DirectionEditor.h"

namespace Cli {

/// On a terminal nobody points at outlets in the middle of a run: the nodes concerned are named, with the words that
/// settle them, and the run stops.
class CTerminalDirectionEditor final : public OLMGis::Sewage::IDirectionEditor {
public:
    explicit CTerminalDirectionEditor(CTerminal& terminal) : m_terminal(terminal) {}
    int EditDirections(const std::vector<boost::shared_ptr<OLMGis::Topology::CNode>>& nodes) override;

private:
    CTerminal& m_terminal;
};

} // namespace Cli

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/SelectionSet.h"

namespace OLMGis::Selection {

/// Gathers entities of the active system. One per project context.
class CSelector {
public:
    static CSelector* LoopInstance();

    /// Whether selections reach into subsystems: a switch; code that needs another value saves, sets and restores it.
    int GetIncludeSubsystemIntoSelection() const { return m_includesSubsystem; }
    void SetIncludeSubsystemIntoSelection(int includes) { m_includesSubsystem = includes; }

    /// Fills set with every node, then every section, then every catchment of the active system, each kind in network
    /// order; returns their number.
    int selectActSysAllElements(CSelectionSet& set) const;

private:
    int m_includesSubsystem = 0;
};

} // namespace OLMGis::Selection

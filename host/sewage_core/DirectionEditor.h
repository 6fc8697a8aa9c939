// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Node.h"

#include <boost/shared_ptr.hpp>

#include <vector>

namespace OLMGis::Sewage {

/// Lets the user choose which way the flow goes on where it divides: in a window, or by the arguments of a command
/// line. Each program implements it once. The default chooses nothing.
class IDirectionEditor {
public:
    virtual ~IDirectionEditor() = default;

    /// nodes: those that need a main outlet and have none, in the order in which the run met them; no nulls, never
    /// empty. The editor stores the choices with CFlowDirection::SetMainOutlet. Non-zero when the user completed it, 0
    /// when main outlets are still missing: the run then ends with an alert.
    virtual int EditDirections(const std::vector<boost::shared_ptr<Topology::CNode>>& /*nodes*/) { return 0; }
};

/// The editor in force; the one that chooses nothing when none is set.
IDirectionEditor& DirectionEditor();

/// Puts an editor in force for the lifetime of the scope. The editor is not owned.
class CDirectionEditorScope {
public:
    explicit CDirectionEditorScope(IDirectionEditor& editor);
    ~CDirectionEditorScope();
    CDirectionEditorScope(const CDirectionEditorScope&) = delete;
    CDirectionEditorScope& operator=(const CDirectionEditorScope&) = delete;

private:
    IDirectionEditor* m_former;
};

} // namespace OLMGis::Sewage

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FindingNotes.h"

namespace OLMGis::Topology {

namespace {

CFindingNotes*& Open() {
    static CFindingNotes* open = nullptr;
    return open;
}

} // namespace

CFindingNotes::CFindingNotes() : m_former(Open()) {
    Open() = this;
}

CFindingNotes::~CFindingNotes() {
    Open() = m_former;
}

CFindingNotes* CFindingNotes::Active() {
    return Open();
}

} // namespace OLMGis::Topology

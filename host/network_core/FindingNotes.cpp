// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FindingNotes.h"

#include <utility>

namespace OLMGis::Topology {

namespace {

CFindingNotes*& Open() {
    static CFindingNotes* open = nullptr;
    return open;
}

} // namespace

CFindingNotes::CFindingNotes(std::function<void()> onBatch) : m_onBatch(std::move(onBatch)), m_former(Open()) {
    Open() = this;
}

CFindingNotes::~CFindingNotes() {
    Open() = m_former;
}

CFindingNotes* CFindingNotes::Active() {
    return Open();
}

} // namespace OLMGis::Topology

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FormEditor.h"

namespace OLMGis::Topology {

namespace {

IFormEditor*& InForce() {
    static IFormEditor confirming;
    static IFormEditor* inForce = &confirming;
    return inForce;
}

} // namespace

IFormEditor& FormEditor() {
    return *InForce();
}

CFormEditorScope::CFormEditorScope(IFormEditor& editor) : m_former(InForce()) {
    InForce() = &editor;
}

CFormEditorScope::~CFormEditorScope() {
    InForce() = m_former;
}

} // namespace OLMGis::Topology

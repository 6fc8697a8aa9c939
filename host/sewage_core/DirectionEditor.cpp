// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/DirectionEditor.h"

namespace OLMGis::Sewage {

namespace {

IDirectionEditor*& InForce() {
    static IDirectionEditor none;
    static IDirectionEditor* inForce = &none;
    return inForce;
}

} // namespace

IDirectionEditor& DirectionEditor() {
    return *InForce();
}

CDirectionEditorScope::CDirectionEditorScope(IDirectionEditor& editor) : m_former(InForce()) {
    InForce() = &editor;
}

CDirectionEditorScope::~CDirectionEditorScope() {
    InForce() = m_former;
}

} // namespace OLMGis::Sewage

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/ModuleApplication.h"

using OLMGis::Workspace::CApplicationPacket;

// Out of line, so that the table of operations exists once, in this library, and outlives every module.
AcRxDbxApp::~AcRxDbxApp() = default;

int AcRxDbxApp::EntryPoint(unsigned message, void* packet) {
    using COperation = int (AcRxDbxApp::*)(void*);
    static constexpr COperation operations[OLMGis::Workspace::ApplicationMessageCount] = {
        &AcRxDbxApp::OnNull,          &AcRxDbxApp::OnLoad,          &AcRxDbxApp::OnUnload,
        &AcRxDbxApp::OnLoadDrawing,   &AcRxDbxApp::OnUnloadDrawing, &AcRxDbxApp::OnCallFunction,
        &AcRxDbxApp::OnConfiguration, &AcRxDbxApp::OnEnd,           &AcRxDbxApp::OnQuit,
        &AcRxDbxApp::OnSave,          &AcRxDbxApp::OnDependency,    &AcRxDbxApp::OnNoDependency,
        &AcRxDbxApp::OnUnloadHost,    &AcRxDbxApp::OnBeforeQuit,    &AcRxDbxApp::OnBeginDialog,
        &AcRxDbxApp::OnEndDialog,
    };
    return message < OLMGis::Workspace::ApplicationMessageCount ? (this->*operations[message])(packet) : 0;
}

int AcRxDbxApp::OnLoad(void* packet) {
    if (packet == nullptr)
        return 0;
    const auto& loading = *static_cast<const CApplicationPacket*>(packet);
    m_instance = loading.m_instance;
    if (m_isUnlockable != 0 && loading.m_linker != nullptr)
        loading.m_linker->UnlockApplication();
    return 0;
}

int AcRxArxApp::OnLoad(void* packet) {
    const int answer = AcRxDbxApp::OnLoad(packet);
    if (packet == nullptr || m_isDocumentAware == 0)
        return answer;
    const auto& loading = *static_cast<const CApplicationPacket*>(packet);
    if (loading.m_linker != nullptr)
        loading.m_linker->RegisterAppDocumentAware();
    return answer;
}

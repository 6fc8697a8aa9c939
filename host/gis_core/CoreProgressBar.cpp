// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/CoreProgressBar.h"

#include "host/gis_core/HostServices.h"
#include "host/gis_core/ProjectContext.h"

namespace OLMGis::Utility {

CCoreProgressBar* CCoreProgressBar::Instance() {
    static const System::CContextSlot<CCoreProgressBar> slot;
    return slot.Get();
}

void CCoreProgressBar::SaveState() {
    if (m_saved.empty())
        m_isCancelled = false;
    m_saved.push_back(m_state);
}

void CCoreProgressBar::RestoreState() {
    if (m_saved.empty())
        return;
    m_state = std::move(m_saved.back());
    m_saved.pop_back();
    if (m_state.m_isShown)
        Draw();
    else
        System::HostServices().HideProgress();
}

void CCoreProgressBar::Show(std::string_view caption, int minimum, int maximum) {
    m_state = {std::string(caption), minimum, maximum, minimum, minimum, true};
    Draw();
}

int CCoreProgressBar::SetPosition(int position) {
    m_state.m_position = position;
    if (position >= m_state.m_nextDrawn && m_state.m_isShown)
        Draw();
    return m_isCancelled ? 0 : 1;
}

void CCoreProgressBar::Hide() {
    m_state.m_isShown = false;
    System::HostServices().HideProgress();
}

void CCoreProgressBar::Draw() {
    const double width = static_cast<double>(m_state.m_maximum) - m_state.m_minimum;
    const double done = width > 0 ? (static_cast<double>(m_state.m_position) - m_state.m_minimum) / width : 1.0;
    m_state.m_nextDrawn = m_state.m_position + 1 + static_cast<int>(width / 1000.0);
    if (System::HostServices().ShowProgress(m_state.m_caption, done) == 0)
        m_isCancelled = true;
}

} // namespace OLMGis::Utility

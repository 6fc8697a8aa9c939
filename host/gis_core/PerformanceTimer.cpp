// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/PerformanceTimer.h"

#include "host/gis_core/ProjectContext.h"

#include <fmt/format.h>

namespace OLMGis::Utility {

CPerformanceTimers* CPerformanceTimer::Instance() {
    static const System::CContextSlot<CPerformanceTimers> slot;
    return slot.Get();
}

int CPerformanceTimers::CreateTimer() {
    m_timers.try_emplace(++m_last);
    return m_last;
}

void CPerformanceTimers::StartTimer(int id) {
    const auto found = m_timers.find(id);
    if (found == m_timers.end())
        return;
    found->second.m_timer.Restart();
    found->second.m_runs = true;
}

void CPerformanceTimers::StopTimer(int id) {
    const auto found = m_timers.find(id);
    if (found == m_timers.end() || !found->second.m_runs)
        return;
    found->second.m_seconds = found->second.m_timer.GetElapsedSeconds();
    found->second.m_runs = false;
}

std::string CPerformanceTimers::ReadTimerStr(int id, int decimals) const {
    const auto found = m_timers.find(id);
    double seconds = 0.0;
    if (found != m_timers.end())
        seconds = found->second.m_runs ? found->second.m_timer.GetElapsedSeconds() : found->second.m_seconds;
    return fmt::format("{:.{}f} s", seconds, decimals);
}

} // namespace OLMGis::Utility

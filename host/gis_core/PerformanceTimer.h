// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <chrono>
#include <map>
#include <string>

namespace OLMGis::Utility {

class CPerformanceTimers;

/// Wall time since it was made or restarted. For what is shown to people; no result depends on it.
class CPerformanceTimer {
public:
    /// The timers of the project context that are known by number.
    static CPerformanceTimers* Instance();

    void Restart() { m_start = std::chrono::steady_clock::now(); }
    double GetElapsedSeconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

/// Timers that modules ask for by number. An unknown number changes nothing and reads as 0.
class CPerformanceTimers {
public:
    /// A new timer that starts at 0; its number.
    int CreateTimer();

    /// Starts anew from 0.
    void StartTimer(int id);
    void StopTimer(int id);

    /// Elapsed time up to now, or to the stop, in seconds with that many decimals: "12.3456 s".
    std::string ReadTimerStr(int id, int decimals) const;
    void DestroyTimer(int id) { m_timers.erase(id); }

private:
    struct CEntry {
        CPerformanceTimer m_timer;
        double m_seconds = 0.0; ///< while it does not run
        bool m_runs = false;
    };
    std::map<int, CEntry> m_timers;
    int m_last = 0;
};

} // namespace OLMGis::Utility

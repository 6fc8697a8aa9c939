// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <chrono>

namespace OLMGis::Utility {

/// Wall time since it was made or restarted. For what is shown to people; no result depends on it.
class CPerformanceTimer {
public:
    void Restart() { m_start = std::chrono::steady_clock::now(); }
    double GetElapsedSeconds() const {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count();
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

} // namespace OLMGis::Utility

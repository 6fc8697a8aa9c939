// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>

namespace Rain {

/// Why a section can't be calculated.
enum class enmInputProblem : std::uint8_t { None, NoSlope, SlopeNotAboveZero, NoInletTime, NoTimeFactor };

/// How a run, or one section of it, ended: by itself, or stopped by a reason with the numbers that belong to it.
struct CRunStop {
    enum class enmReason : std::uint8_t {
        None,                ///< it came to its end
        Cancelled,           ///< by the user
        BadInput,            ///< m_problem
        NoPipe,              ///< none in m_pipeGroup from m_diameter on
        ExistingPipeTooFull, ///< the section's own pipe is to be kept
        NotConverged         ///< m_intensity and m_nextIntensity were still apart
    };
    enmReason m_reason = enmReason::None;
    enmInputProblem m_problem = enmInputProblem::None;
    std::uint32_t m_section = 0;  ///< row; not for Cancelled
    std::string_view m_name;      ///< of the section
    std::string_view m_pipeGroup; ///< belongs to the catalogue
    double m_diameter = 0.0;      ///< mm
    double m_intensity = 0.0;     ///< with which the last pass began, l/(s·ha)
    double m_nextIntensity = 0.0; ///< for the times that it found, l/(s·ha)

    bool IsStopped() const { return m_reason != enmReason::None; }

    static CRunStop Cancel() {
        CRunStop stop;
        stop.m_reason = enmReason::Cancelled;
        return stop;
    }
};

/// Asked after each step with the steps done; false cancels. An empty one always goes on.
using CGoOn = std::function<bool(std::uint64_t done)>;

} // namespace Rain

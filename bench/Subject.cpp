// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Subject.h"

#include "bench/ProcessMemory.h"
#include "host/gis_core/PerformanceTimer.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <array>
#include <ctime>
#include <memory>
#include <utility>

namespace Bench {

using OLMGis::Utility::CPerformanceTimer;
using OLMGis::Utility::Result;

namespace {

constexpr std::array<std::pair<enmNetworkShape, const char*>, 4> Shapes{{{enmNetworkShape::Line, "line"},
                                                                         {enmNetworkShape::Tree, "tree"},
                                                                         {enmNetworkShape::Star, "star"},
                                                                         {enmNetworkShape::City, "city"}}};
constexpr std::size_t Large = 1'000'000;
constexpr std::array<std::size_t, 3> Sizes{10'000, 100'000, Large};

struct CPassCost {
    double m_seconds = 0.0;     ///< on the clock
    double m_workSeconds = 0.0; ///< of the processor: less where a pass waits for a disk or for other programs
};

/// The subject in hand and what its first pass cost. One at a time: a network of a million sections takes its room.
struct CMeasured {
    std::string m_name;
    CSubject m_subject;
    Status m_status = Done{};
    double m_firstSeconds = 0.0;
    std::size_t m_peakBytes = 0;
    std::size_t m_heldBytes = 0;

    CPassCost MakePass() {
        if (m_subject.m_prepare)
            m_subject.m_prepare();
        const std::clock_t startOfWork = std::clock();
        const CPerformanceTimer timer;
        m_status = m_subject.m_pass();
        const double seconds = timer.GetElapsedSeconds();
        return {seconds, static_cast<double>(std::clock() - startOfWork) / CLOCKS_PER_SEC};
    }

    void MakeFirstPass() {
        ProcessMemory::ResetPeak();
        m_firstSeconds = MakePass().m_seconds;
        m_peakBytes = ProcessMemory::GetPeakBytes();
        m_heldBytes = ProcessMemory::GetHeldBytes();
        if (m_status && m_subject.m_inspect)
            m_status = m_subject.m_inspect();
    }
};

std::unique_ptr<CMeasured> theMeasured;

CMeasured& Measured(const std::string& name, const CSize& size, const CSubjectMaker& maker) {
    const std::string fullName = fmt::format("{}/{}", name, size.m_name);
    if (theMeasured && theMeasured->m_name == fullName)
        return *theMeasured;
    theMeasured.reset(); // before the next one is made
    theMeasured = std::make_unique<CMeasured>();
    theMeasured->m_name = fullName;
    Result<CSubject> subject = maker(size);
    if (!subject) {
        theMeasured->m_status = subject.GetError();
        return *theMeasured;
    }
    theMeasured->m_subject = std::move(subject.Value());
    theMeasured->MakeFirstPass();
    return *theMeasured;
}

void RunBenchmark(benchmark::State& state, const std::string& name, const CSize& size, const CSubjectMaker& maker) {
    CMeasured& measured = Measured(name, size, maker);
    CPassCost cost;
    for ([[maybe_unused]] auto pass : state) {
        if (measured.m_status)
            cost = measured.MakePass();
        if (!measured.m_status) {
            state.SkipWithError(measured.m_status.GetError().message.c_str());
            return;
        }
        state.SetIterationTime(cost.m_seconds);
    }
    state.counters["sections"] = static_cast<double>(size.m_sections);
    state.counters["ns_per_section"] = 1e9 * cost.m_seconds / static_cast<double>(size.m_sections);
    if (measured.m_subject.m_operations > 0.0)
        state.counters["ns_per_operation"] = 1e9 * cost.m_seconds / measured.m_subject.m_operations;
    state.counters["work_s"] = cost.m_workSeconds;
    state.counters["first_s"] = measured.m_firstSeconds;
    state.counters["peak_bytes"] = static_cast<double>(measured.m_peakBytes);
    state.counters["held_bytes"] = static_cast<double>(measured.m_heldBytes);
}

int PassCount(enmPace pace, std::size_t sections) {
    if (sections < Large)
        return 20;
    return pace == enmPace::Quick ? 8 : 3;
}

void RegisterOnShape(const std::string& name, enmNetworkShape shape, const char* shapeName, enmPace pace,
                     const CSubjectMaker& maker) {
    for (const std::size_t sections : Sizes) {
        const CSize size{shape, sections, fmt::format("{}/{}", shapeName, sections)};
        const auto run = [name, size, maker](benchmark::State& state) { RunBenchmark(state, name, size, maker); };
        benchmark::RegisterBenchmark(fmt::format("{}/{}", name, size.m_name).c_str(), run)
            ->Iterations(1)
            ->Repetitions(PassCount(pace, sections))
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace

void RegisterOnNetworks(const std::string& name, enmPace pace, const CSubjectMaker& maker) {
    for (const auto& [shape, shapeName] : Shapes)
        RegisterOnShape(name, shape, shapeName, pace, maker);
}

void RegisterWithoutNetwork(const std::string& name, enmPace pace, const CSubjectMaker& maker) {
    RegisterOnShape(name, enmNetworkShape::Line, "line", pace, maker);
}

void ReleaseSubject() {
    theMeasured.reset();
}

} // namespace Bench

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Benchmarks.h"
#include "bench/InputFiles.h"
#include "bench/Network.h"
#include "bench/ProcessMemory.h"
#include "bench/Subject.h"

#include <benchmark/benchmark.h>

namespace {

/// An empty project: what the process takes before there is a network.
void MeasureBase(benchmark::State& state) {
    const Bench::CBenchProject project;
    for ([[maybe_unused]] auto pass : state)
        benchmark::ClobberMemory();
    state.counters["held_bytes"] = static_cast<double>(Bench::ProcessMemory::GetHeldBytes());
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RegisterBenchmark("base", MeasureBase)->Iterations(1);
    Bench::RegisterAttributes();
    Bench::RegisterCalculators();
    Bench::RegisterRain();
    Bench::RegisterChecks();
    Bench::RegisterHydraulics();
    Bench::RegisterProjectFile();
    Bench::RegisterSources();
    Bench::RegisterTerrain();
    benchmark::RunSpecifiedBenchmarks();
    Bench::ReleaseSubject();
    Bench::InputFiles::RemoveOwnFolder();
    return 0;
}

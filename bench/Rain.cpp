// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// The variation search of the rain calculation, alone and against the plain one that walks every combination whole.
#include "bench/Benchmarks.h"
#include "bench/Network.h"
#include "bench/ProcessMemory.h"
#include "bench/RainForm.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/PropertyEditing.h"
#include "rain/RainITPForm.h"
#include "rain/RainITPParameters.h"
#include "rain/variations/VariationSearch.h"
#include "tests/rain/PlainSearch.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <ctime>
#include <functional>
#include <limits>
#include <optional>

namespace Bench {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataRW;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyStorage;

namespace {

/// A trunk of sections, with or without a head section of its own at each of its inner nodes.
class CTrunk {
public:
    CTrunk(std::size_t length, bool hasHeads) : m_topology(m_project.Topology()) {
        CNode* above = AddNode();
        for (std::size_t i = 1; i <= length; ++i) {
            CNode* const below = AddNode();
            AddSection(*above, *below);
            if (hasHeads && i < length)
                AddSection(*AddNode(), *below);
            above = below;
        }
        static_cast<void>(AddRainPipes());
    }

    const std::vector<boost::shared_ptr<CSection>>& Sections() const { return m_topology.GetSections(); }

private:
    CNode* AddNode() {
        const std::string name = fmt::format("N{}", m_topology.GetNodes().size());
        return m_topology.AddNode(name, name, {}).Value().get();
    }

    void AddSection(CNode& from, CNode& to) {
        const std::size_t number = m_topology.GetSections().size();
        const std::string name = fmt::format("S{}", number);
        const auto section = m_topology.AddSection("guid" + name, name, &from, &to, {}).Value();
        const auto catchment = m_topology.AddCatchment("area" + name, name, section.get(), {}).Value();
        CDataRW::Write("length", section, CDataBox(30.0 + static_cast<double>(number % 7) * 5.0), nullptr);
        CDataRW::Write("SECTION_SLOPE", section, CDataBox(3.0 + static_cast<double>(number % 5)), nullptr);
        CDataRW::Write("FLOW_INTIME", section, CDataBox(5.0 + static_cast<double>(number % 3)), nullptr);
        CDataRW::Write("kinds", catchment, CDataBox(1), nullptr);
        CDataRW::Write("area", catchment, CDataBox(0.2 + 0.05 * static_cast<double>(number % 4)), nullptr);
    }

    CBenchProject m_project;
    CTopologyStorage& m_topology;
};

/// A run before its search: the form and the network are read.
class CReadyRun {
public:
    explicit CReadyRun(const CTrunk& trunk) : m_network(trunk.Sections()) {
        const auto parameters = RainITPForm::Make();
        FillRainForm(*parameters->m_properties);
        m_params.ReadParameters(parameters.get(), 0);
        m_input.emplace(m_network, m_params);
    }

    Rain::CRunNetwork m_network;
    CRainITPParameters m_params;
    std::optional<Rain::CRunInput> m_input;
};

/// Time of the processor that an operation takes, the least of three; infinite when it fails.
double SecondsOf(const std::function<bool()>& operation) {
    double least = std::numeric_limits<double>::infinity();
    for (int pass = 0; pass < 3; ++pass) {
        const std::clock_t start = std::clock();
        if (!operation())
            return std::numeric_limits<double>::infinity();
        least = std::min(least, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    return least;
}

double SecondsOfSearch(const CTrunk& trunk) {
    return SecondsOf([&] {
        const CReadyRun ready(trunk);
        const Rain::CSearchPlan plan(ready.m_network);
        return !Rain::CVariationSearch(*ready.m_input, ready.m_params, plan).Run().IsStopped();
    });
}

/// 12 trunk sections and 11 heads: the last has 6142 combinations, all of them 12,272.
void SearchComb(benchmark::State& state) {
    constexpr std::size_t Length = 12;
    const CTrunk trunk(Length, true);
    constexpr double Unbounded = std::numeric_limits<double>::infinity();
    double combinations = 0.0;
    double computations = 0.0;
    double plainSeconds = 0.0;
    double seconds = 0.0;
    for ([[maybe_unused]] auto pass : state) {
        plainSeconds = SecondsOf([&] {
            const CReadyRun ready(trunk);
            Rain::CNetworkWalk walk(*ready.m_input, ready.m_params);
            CPlainSearch plain(&walk, Unbounded, Unbounded);
            const bool isDone = plain.Run(trunk.Sections()) != 0;
            combinations = plain.m_combinations;
            computations = plain.m_computations;
            return isDone;
        });
        seconds = SecondsOfSearch(trunk);
        state.SetIterationTime(seconds);
    }
    state.counters["combinations"] = combinations;
    state.counters["combinations_per_s"] = combinations / seconds;
    state.counters["plain_computations_per_s"] = computations / plainSeconds;
    state.counters["speedup"] = plainSeconds / seconds;
}

/// One section after the other: section i has i combinations.
void SearchLine(benchmark::State& state) {
    constexpr std::size_t Length = 1000;
    constexpr double Combinations = Length * (Length + 1) / 2.0;
    const CTrunk trunk(Length, false);
    double seconds = 0.0;
    double bytes = 0.0;
    for ([[maybe_unused]] auto pass : state) {
        ProcessMemory::ResetPeak(); // gives back what is not in use
        const std::size_t held = ProcessMemory::GetHeldBytes();
        seconds = SecondsOfSearch(trunk);
        bytes = static_cast<double>(ProcessMemory::GetPeakBytes()) - static_cast<double>(held);
        state.SetIterationTime(seconds);
    }
    state.counters["combinations"] = Combinations;
    state.counters["combinations_per_s"] = Combinations / seconds;
    state.counters["bytes_per_combination"] = bytes / Combinations;
}

} // namespace

void RegisterRain() {
    for (const auto& [name, run] : {std::pair{"search/comb", &SearchComb}, std::pair{"search/line", &SearchLine}})
        benchmark::RegisterBenchmark(name, run)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
}

} // namespace Bench

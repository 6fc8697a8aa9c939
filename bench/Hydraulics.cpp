// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Benchmarks.h"
#include "bench/Subject.h"
#include "host/formulas/Filling.h"

#include <benchmark/benchmark.h>

namespace Bench {

using OLMGis::Formulas::CFlowConditions;
using OLMGis::Utility::BadInput;
using OLMGis::Utility::Result;

namespace {

/// One case of many: flows of 1 l/s to 1 m³/s, slopes of 1 to 30 in 1000, all different, none twice in a row.
struct CCase {
    double m_flow;
    CFlowConditions m_conditions;
};

CCase CaseOf(std::size_t number) {
    const double first = static_cast<double>(number * 7919 % 1000) / 1000.0;
    const double second = static_cast<double>(number * 104729 % 997) / 997.0;
    return {0.001 + 0.999 * first * first * first, {0.001 + 0.029 * second, 0.001, 1e-6}};
}

double LeastDiameterOf(const CCase& each) {
    return OLMGis::Formulas::LeastDiameter(each.m_flow, each.m_conditions);
}

/// In a pipe large enough for every case.
double FillingOf(const CCase& each) {
    constexpr double Diameter = 1.2;
    return OLMGis::Formulas::FillCircle(Diameter, each.m_flow, each.m_conditions).m_percent;
}

CSubjectMaker Solving(double (*solve)(const CCase&)) {
    return [solve](const CSize& size) -> Result<CSubject> {
        CSubject subject;
        subject.m_operations = static_cast<double>(size.m_sections);
        subject.m_pass = [count = size.m_sections, solve]() -> Status {
            double sum = 0.0;
            for (std::size_t i = 0; i < count; ++i)
                sum += solve(CaseOf(i));
            benchmark::DoNotOptimize(sum);
            return sum > 0.0 ? Status(Done{}) : Status(BadInput("nothing was solved"));
        };
        return subject;
    };
}

} // namespace

void RegisterHydraulics() {
    RegisterWithoutNetwork("hydraulics/least_diameter", enmPace::Quick, Solving(&LeastDiameterOf));
    RegisterWithoutNetwork("hydraulics/filling", enmPace::Quick, Solving(&FillingOf));
}

} // namespace Bench

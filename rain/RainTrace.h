// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/RunTrace.h"
#include "rain/SectionDataIDF.h"

class CFlowCalculator_RainITP;

/// What a rain calculation tells an open run trace beside its results. Without an open trace each call costs a branch.
namespace RainTrace {

/// A row for each written section, in the order of writing: areas, times, intensity, flow, pipe, filling, velocity.
inline constexpr const char* Sections = "rain";

/// Of the section that is wanted in detail and of those above it on its chain, from the highest down: a row for each
/// pass with its inputs and results, from which the flow can be reckoned again. Of a very long chain the nearest
/// MostChained sections: the times of those above stand in the first row.
inline constexpr const char* Passes = "rain_passes";
inline constexpr std::size_t MostChained = 1000;

/// The areas that make up that section's own total: a row for each selected section with one, itself first.
inline constexpr const char* Areas = "rain_areas";

/// Sections that the walk did not come to: rings, side outlets and what lies below them.
inline constexpr const char* Unreached = "rain_unreached";

/// The section whose iteration ended a run.
inline constexpr const char* NotConverged = "rain_not_converged";

/// The name by which a host requests IDFOut.txt of a run.
inline constexpr const char* IterationTable = "IDFOut.txt";

/// After a finished walk, and after a finished search.
void NoteRun(CFlowCalculator_RainITP& calculator);
void NoteBest(CFlowCalculator_RainITP& calculator);

/// next: the intensity (l/(s·ha)) for the times of the last pass.
void NoteNotConverged(const CSectionDataIDF& record, double next);

} // namespace RainTrace

/// Notes the passes of an iteration.
class CRainPassTrace {
public:
    CRainPassTrace(OLMGis::Utility::CTraceTable& table, const CFlowCalculator_RainITP& calculator)
        : m_table(table), m_calculator(calculator) {}

    /// The table of passes of a trace, with its columns.
    static OLMGis::Utility::CTraceTable& OpenTable(OLMGis::Utility::CRunTrace& trace);

    void NoteBegin(const CSectionDataIDF& record);
    void NoteEnd(const CSectionDataIDF& record, int pass, double next);

private:
    OLMGis::Utility::CTraceTable& m_table;
    const CFlowCalculator_RainITP& m_calculator;
    double m_timeBefore = 0.0;        ///< along the path, with Turkish parameters in the section, min
    double m_concentrationTime = 0.0; ///< with which the pass begins, min
    const char* m_roughnessSource = "";
};

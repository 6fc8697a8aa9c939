// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/RunTrace.h"
#include "rain/RainTraceNames.h"
#include "rain/SectionDataIDF.h"

#include <string_view>

class CFlowCalculator_RainITP;

/// What a rain calculation tells an open run trace beside its results. Without an open trace each call costs a branch.
namespace RainTrace {

/// After a finished walk, and after a finished search.
void NoteRun(CFlowCalculator_RainITP& calculator);
void NoteBest(CFlowCalculator_RainITP& calculator);

/// next: the intensity (l/(s·ha)) for the times of the last pass.
void NoteNotConverged(const CSectionDataIDF& record, double next);

void NoteFile(std::string_view path);

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

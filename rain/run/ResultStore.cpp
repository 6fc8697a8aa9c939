// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/ResultStore.h"

#include "flow/FlowKeys.h"
#include "flow/FlowValue.h"
#include "host/gis_core/DataRW.h"

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;

namespace Rain {

CResultStore::CResultStore(const CRunInput& input, bool savesPipe)
    : m_input(input), m_savesPipe(savesPipe), m_intensity(FindDefinition(FlowKeys::Intensity)),
      m_concentrationTime(FindDefinition(FlowKeys::ConcentrationTime)),
      m_upstreamTime(FindDefinition(FlowKeys::UpstreamFlowTime)), m_flowTime(FindDefinition(FlowKeys::SectionFlowTime)),
      m_flow(FindDefinition(FlowKeys::RainCurves)), m_ownArea(FindDefinition(FlowKeys::CorrectedArea)),
      m_totalArea(FindDefinition(FlowKeys::CorrectedAreaTotal)), m_pipe(FindDefinition(FlowKeys::PipeReference)) {}

void CResultStore::Store(const CSectionDataIDF& record) const {
    StoreNumber(m_intensity, record, record.m_intensity);
    StoreNumber(m_concentrationTime, record, record.GetConcentrationTime());
    StoreNumber(m_upstreamTime, record, record.m_upstreamTime);
    StoreNumber(m_flowTime, record, record.m_flowTime);
    StoreNumber(m_flow, record, record.m_flow);
    StoreNumber(m_ownArea, record, record.m_ownArea);
    StoreNumber(m_totalArea, record, record.GetEffectiveArea());
    if (m_savesPipe && record.m_pipe)
        CDataRW::Write(m_pipe, m_input.GetSection(record.m_section), CDataBox(record.m_pipe->GetGUID()), nullptr);
}

void CResultStore::StoreNumber(const CDataDefinition* key, const CSectionDataIDF& record, double value) const {
    CDataRW::Write(key, m_input.GetSection(record.m_section), CDataBox(value), nullptr);
}

} // namespace Rain

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/ResultStore.h"

#include "flow/FlowKeys.h"
#include "flow/FlowValue.h"
#include "host/gis_core/DataRW.h"

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;

namespace Rain {

CResultStore::CResultStore(const CRunInput& input, bool savesPipe)
    : m_input(input), m_savesPipe(savesPipe), m_intensity(FindDefinition(Flow::Keys::Intensity)),
      m_concentrationTime(FindDefinition(Flow::Keys::ConcentrationTime)),
      m_upstreamTime(FindDefinition(Flow::Keys::UpstreamFlowTime)),
      m_flowTime(FindDefinition(Flow::Keys::SectionFlowTime)), m_flow(FindDefinition(Flow::Keys::RainCurves)),
      m_ownArea(FindDefinition(Flow::Keys::CorrectedArea)), m_totalArea(FindDefinition(Flow::Keys::CorrectedAreaTotal)),
      m_pipe(FindDefinition(Flow::Keys::PipeReference)) {}

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

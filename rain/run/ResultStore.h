// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "rain/run/SectionDataIDF.h"

namespace Rain {

/// Stores results on sections.
class CResultStore {
public:
    /// input is not owned. savesPipe: the chosen pipe too, where there is one.
    CResultStore(const CRunInput& input, bool savesPipe);

    void Store(const CSectionDataIDF& record) const;

private:
    void StoreNumber(const OLMGis::Data::CDataDefinition* key, const CSectionDataIDF& record, double value) const;

    const CRunInput& m_input;
    bool m_savesPipe;
    const OLMGis::Data::CDataDefinition* m_intensity;
    const OLMGis::Data::CDataDefinition* m_concentrationTime;
    const OLMGis::Data::CDataDefinition* m_upstreamTime;
    const OLMGis::Data::CDataDefinition* m_flowTime;
    const OLMGis::Data::CDataDefinition* m_flow;
    const OLMGis::Data::CDataDefinition* m_ownArea;
    const OLMGis::Data::CDataDefinition* m_totalArea;
    const OLMGis::Data::CDataDefinition* m_pipe;
};

} // namespace Rain

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/SectionInputs.h"

#include "flow/FlowKeys.h"
#include "flow/FlowValue.h"
#include "host/gis_core/DataRW.h"
#include "host/sewage_core/CatchmentAreaManager.h"

#include <algorithm>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Topology::CSection;

namespace {

bool ReadNumber(const CSection& section, const CDataDefinition* definition, double& number) {
    CDataBox box;
    CDataRW::Read(definition, &section, box, 0, nullptr);
    if (box.IsNotNull())
        number = box.AsDouble();
    return box.IsNotNull();
}

} // namespace

CSectionInputs::CSectionInputs()
    : m_slope(FindDefinition(FlowKeys::Slope)), m_inletTime(FindDefinition(FlowKeys::InletTime)),
      m_roughness(FindDefinition(FlowKeys::PipeRoughness)), m_retention(FindDefinition(FlowKeys::RetentionBulgarian)) {}

const CSectionInput& CSectionInputs::Of(const boost::shared_ptr<CSection>& section) {
    const std::uint32_t row = section->GetRow();
    if (row >= m_byRow.size())
        m_byRow.resize(std::max<std::size_t>(row + 1ULL, m_byRow.size() * 2));
    CSectionInput& input = m_byRow[row];
    if (input.m_isGathered)
        return input;
    input.m_isGathered = true;
    input.m_name = section->GetName();
    input.m_hasSlope = ReadNumber(*section, m_slope, input.m_slope);
    input.m_hasInletTime = ReadNumber(*section, m_inletTime, input.m_inletTime);
    input.m_hasRoughness = ReadNumber(*section, m_roughness, input.m_roughness);
    input.m_hasRetention = ReadNumber(*section, m_retention, input.m_retention);
    CCatchmentAreaManager::Instance()->GetCATotalCorectedArea(section, input.m_ownArea);
    input.m_length = section->GetLength2D();
    input.m_existingPipe = section->GetPipe();
    return input;
}

void CSectionInputs::Gather(const std::vector<boost::shared_ptr<CSection>>& sections) {
    for (const auto& section : sections)
        if (section)
            Of(section);
}

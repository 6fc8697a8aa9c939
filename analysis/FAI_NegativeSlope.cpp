// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_NegativeSlope.h"

#include "analysis/SlopeCheck.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/SystemManager.h"

using OLMGis::System::CGisSystem;
using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Utility::Msg;

namespace {

constexpr const char* Key = "0004_MIN_SLOPE";
constexpr int NameMessage = 10359;

} // namespace

std::string CFAI_NegativeSlope::GetItemKey() {
    return Key;
}

std::string CFAI_NegativeSlope::GetItemName() {
    return Msg(NameMessage);
}

int CFAI_NegativeSlope::IsAvailableForSystemFunction(int systemFunction) {
    return systemFunction == CGisSystem::SewageFunction ? 1 : 0;
}

int CFAI_NegativeSlope::GetItemFlagA() {
    return 1;
}

// Shared by both slope checks; fixed: others rely on it.
std::string CFAI_NegativeSlope::GetAnalysisTag() {
    return "FAI_NEG_SLOPE";
}

boost::shared_ptr<CPropertiesEx> CFAI_NegativeSlope::CreateProperties() {
    return Analysis::CreateSlopeForm(NameMessage);
}

void CFAI_NegativeSlope::RunAnalysis(boost::shared_ptr<CPropertiesEx> properties, CAnalysedNetwork* network,
                                     std::vector<boost::shared_ptr<CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    const std::string caption = GetItemName();
    Analysis::CheckSlopes({caption, "SECTION_SLOPE", 5.0, 30.0}, *properties, *network, findings);
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_NegativeSlopeCalc.h"

#include "analysis/SlopeCheck.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/SystemManager.h"

using OLMGis::System::CGisSystem;
using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Utility::CModuleConfiguration;

namespace {

constexpr const char* Key = "0003_MIN_LL_SLOPE";
constexpr int NameMessage = 10363;

/// The same in every language: the word for slope under which users of this check know its progress.
constexpr const char* Caption = "Pad";

} // namespace

std::string CFAI_NegativeSlopeCalc::GetItemKey() {
    return Key;
}

std::string CFAI_NegativeSlopeCalc::GetItemName() {
    return CModuleConfiguration::Instance()->GetMsg(NameMessage);
}

int CFAI_NegativeSlopeCalc::IsAvailableForSystemFunction(int systemFunction) {
    return systemFunction == CGisSystem::SewageFunction ? 1 : 0;
}

int CFAI_NegativeSlopeCalc::GetItemFlagA() {
    return 1;
}

// Both slope checks are one family.
std::string CFAI_NegativeSlopeCalc::GetAnalysisTag() {
    return "FAI_NEG_SLOPE";
}

boost::shared_ptr<CPropertiesEx> CFAI_NegativeSlopeCalc::CreateProperties() {
    return Analysis::CreateSlopeForm(NameMessage);
}

void CFAI_NegativeSlopeCalc::RunAnalysis(boost::shared_ptr<CPropertiesEx> properties, CAnalysedNetwork* network,
                                         std::vector<boost::shared_ptr<CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    // A form that lacks its limits is held to those for flat sewers, not to the ones that a fresh form offers.
    Analysis::CheckSlopes({Key, Caption, "SECTION_SLOPE_CAL", 1.0, 3.0}, *properties, *network, findings);
}

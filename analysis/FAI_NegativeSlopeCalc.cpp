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
using OLMGis::Utility::Msg;

namespace {

constexpr const char* Key = "0003_MIN_LL_SLOPE";
constexpr int NameMessage = 10363;

/// The same in every language; fixed: others rely on it.
constexpr const char* Caption = "Pad";

} // namespace

std::string CFAI_NegativeSlopeCalc::GetItemKey() {
    return Key;
}

std::string CFAI_NegativeSlopeCalc::GetItemName() {
    return Msg(NameMessage);
}

int CFAI_NegativeSlopeCalc::IsAvailableForSystemFunction(int systemFunction) {
    return systemFunction == CGisSystem::SewageFunction ? 1 : 0;
}

int CFAI_NegativeSlopeCalc::GetItemFlagA() {
    return 1;
}

// Shared by both slope checks; fixed: others rely on it.
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
    // Limits of a form without the fields, not those of a new form; fixed: others rely on it.
    Analysis::CheckSlopes({Caption, "SECTION_SLOPE_CAL", 1.0, 3.0}, *properties, *network, findings);
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_NegativeCascade.h"

#include "analysis/SectionsBelow.h"
#include "host/formulas/Rounding.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/SystemManager.h"
#include "host/network_core/FindingList.h"
#include "host/network_core/ProgressWalk.h"

#include <boost/make_shared.hpp>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::System::CGisSystem;
using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CFindingList;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::WalkWithProgress;
using OLMGis::Utility::Msg;

namespace {

constexpr const char* Key = "0006_NEGATIVE_CASCADE";
constexpr int Message = 3239; ///< name, caption and finding

/// Least drop (m) that is accepted: a step up of 0.5 m. Fixed: others rely on it.
constexpr double LeastDrop = -0.5;

} // namespace

std::string CFAI_NegativeCascade::GetItemKey() {
    return Key;
}

std::string CFAI_NegativeCascade::GetItemName() {
    return Msg(Message);
}

int CFAI_NegativeCascade::IsAvailableForSystemFunction(int systemFunction) {
    return systemFunction == CGisSystem::SewageFunction ? 1 : 0;
}

int CFAI_NegativeCascade::GetItemFlagA() {
    return 1;
}

std::string CFAI_NegativeCascade::GetAnalysisTag() {
    return "FAI_CASCADE";
}

boost::shared_ptr<CPropertiesEx> CFAI_NegativeCascade::CreateProperties() {
    return boost::make_shared<CPropertiesEx>();
}

void CFAI_NegativeCascade::RunAnalysis(boost::shared_ptr<CPropertiesEx> /*properties*/, CAnalysedNetwork* network,
                                       std::vector<boost::shared_ptr<CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    const auto* const startLevel = FindDefinition("LEVEL_LINE_0");
    const auto* const endLevel = FindDefinition("LEVEL_LINE_1");
    CFindingList list(findings);
    const Analysis::CSectionsBelow below(*network);
    CDataBox upper;
    CDataBox lower;
    WalkWithProgress(GetItemName(), network->m_sections, [&](const boost::shared_ptr<CSection>& section) {
        CDataRW::Read(endLevel, section, upper, 0, nullptr);
        if (!upper.IsNotNull())
            return;
        below.ForEach(*section, [&](const boost::shared_ptr<CSection>& next) {
            CDataRW::Read(startLevel, next, lower, 0, nullptr);
            if (!lower.IsNotNull())
                return;
            const double drop = OLMGis::Formulas::RoundDerived(upper.AsDouble() - lower.AsDouble());
            if (LeastDrop > drop)
                list.AddWithValue(*section, Message, {drop, LeastDrop, "m"});
        });
    });
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_MultipleOutletSections.h"

#include "analysis/SectionsBelow.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/SystemManager.h"
#include "host/network_core/FindingList.h"
#include "host/network_core/ProgressWalk.h"

#include <boost/make_shared.hpp>

using OLMGis::System::CGisSystem;
using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CFindingList;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::WalkWithProgress;
using OLMGis::Utility::Msg;

namespace {

constexpr const char* Key = "0005_MULTI_OUTLET_SECT";
constexpr int Message = 3237; ///< name, caption and finding

} // namespace

std::string CFAI_MultipleOutletSections::GetItemKey() {
    return Key;
}

std::string CFAI_MultipleOutletSections::GetItemName() {
    return Msg(Message);
}

int CFAI_MultipleOutletSections::IsAvailableForSystemFunction(int systemFunction) {
    return systemFunction == CGisSystem::SewageFunction ? 1 : 0;
}

int CFAI_MultipleOutletSections::GetItemFlagA() {
    return 1;
}

std::string CFAI_MultipleOutletSections::GetAnalysisTag() {
    return "FAI_MULTIPLE_OUT_SECT";
}

boost::shared_ptr<CPropertiesEx> CFAI_MultipleOutletSections::CreateProperties() {
    return boost::make_shared<CPropertiesEx>();
}

void CFAI_MultipleOutletSections::RunAnalysis(boost::shared_ptr<CPropertiesEx> /*properties*/,
                                              CAnalysedNetwork* network,
                                              std::vector<boost::shared_ptr<CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    CFindingList list(findings);
    const Analysis::CSectionsBelow below(*network);
    WalkWithProgress(GetItemName(), network->m_sections, [&](const boost::shared_ptr<CSection>& section) {
        if (const std::size_t count = below.Count(*section); count >= 2)
            list.Add(*section, Message, {static_cast<double>(count), 1.0, ""});
    });
}

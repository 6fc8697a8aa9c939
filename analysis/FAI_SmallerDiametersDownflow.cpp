// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_SmallerDiametersDownflow.h"

#include "analysis/SectionsBelow.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/SystemManager.h"
#include "host/network_core/FindingList.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/ProgressWalk.h"

#include <boost/make_shared.hpp>

using OLMGis::System::CGisSystem;
using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CFindingList;
using OLMGis::Topology::CPipeManager;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::WalkWithProgress;
using OLMGis::Utility::Msg;

namespace {

constexpr const char* Key = "0007_SMALLER_DIAMETERS";
constexpr int NameMessage = 10356;
constexpr int Message = 10355; ///< caption and finding

} // namespace

std::string CFAI_SmallerDiametersDownflow::GetItemKey() {
    return Key;
}

std::string CFAI_SmallerDiametersDownflow::GetItemName() {
    return Msg(NameMessage);
}

int CFAI_SmallerDiametersDownflow::IsAvailableForSystemFunction(int systemFunction) {
    return systemFunction == CGisSystem::SewageFunction ? 1 : 0;
}

int CFAI_SmallerDiametersDownflow::GetItemFlagA() {
    return 1;
}

std::string CFAI_SmallerDiametersDownflow::GetAnalysisTag() {
    return "FAI_SMALLER_DIAM_DOWNFLOW";
}

boost::shared_ptr<CPropertiesEx> CFAI_SmallerDiametersDownflow::CreateProperties() {
    return boost::make_shared<CPropertiesEx>();
}

void CFAI_SmallerDiametersDownflow::RunAnalysis(boost::shared_ptr<CPropertiesEx> /*properties*/,
                                                CAnalysedNetwork* network,
                                                std::vector<boost::shared_ptr<CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    CPipeManager* const pipes = CPipeManager::Instance();
    CFindingList list(findings);
    const Analysis::CSectionsBelow below(*network);
    const std::string caption = Msg(Message);
    WalkWithProgress(caption, network->m_sections, [&](const boost::shared_ptr<CSection>& section) {
        const auto pipe = section->GetPipe();
        if (!pipe)
            return;
        const double diameter = pipes->GetInnerDiameter(pipe);
        below.ForEach(*section, [&](const boost::shared_ptr<CSection>& next) {
            const auto nextPipe = next->GetPipe();
            if (!nextPipe)
                return;
            const double nextDiameter = pipes->GetInnerDiameter(nextPipe);
            if (diameter > nextDiameter)
                list.Add(*section, Message, {nextDiameter, diameter, "mm"});
        });
    });
}

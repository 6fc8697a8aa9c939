// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "plugin/HCPluginInfo.h"

#include "accumulate/FlowCalculator_RainSimple.h"
#include "accumulate/FlowCalculator_Total.h"
#include "accumulate/FlowCalculator_Transit.h"
#include "analysis/FAI_ManholePipe.h"
#include "analysis/FAI_MinimalPipeDepth.h"
#include "analysis/FAI_MultipleOutletSections.h"
#include "analysis/FAI_NegativeCascade.h"
#include "analysis/FAI_NegativeSlope.h"
#include "analysis/FAI_NegativeSlopeCalc.h"
#include "analysis/FAI_SmallerDiametersDownflow.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/NotificationFramework.h"
#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "host/sewage_core/SewageResponder.h"
#include "host/workspace_core/WsManager.h"
#include "plugin/HCPluginFactory.h"
#include "rain/FlowCalculator_RainITP.h"
#include "waste/FlowCalculator_Additional.h"
#include "waste/FlowCalculator_WasteAreas.h"
#include "waste/FlowCalculator_WastePercent.h"

#include <boost/make_shared.hpp>

using OLMGis::Notification::CNotificationFramework;
using OLMGis::Sewage::CFlowCalculatorManager;
using OLMGis::Sewage::CSewageResponder;
using OLMGis::Topology::CFunctionalAnalysisManager;
using OLMGis::Topology::IFunctionalAnalysisItem;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Workspace::CWsManager;
using OLMGis::Workspace::CWsPanelDialogMetadata;

namespace {

template <class Item>
void RegisterAnalysisItem() {
    const boost::shared_ptr<IFunctionalAnalysisItem> item = boost::make_shared<Item>();
    CFunctionalAnalysisManager::Instance()->RegisterFunctionalAnalysisItem(item);
}

template <class Calculator>
void RegisterFlowCalculator() {
    CFlowCalculatorManager::Instance()->RegisterFlowCalculator(boost::make_shared<Calculator>());
}

} // namespace

void CHCPluginInfo::EnableMetadataHandlers() {
    CModuleConfiguration::Instance()->EnableMetadataHandler("002_TERRAINTYPE");
}

void CHCPluginInfo::RegisterDialogFactories() {
    CWsManager::Instance()->RegisterWsDialogFactory(boost::make_shared<CHCPluginFactory>());
}

void CHCPluginInfo::RegisterCalculationItems() {
    // The framework owns the responder from here on.
    CNotificationFramework::Instance()->RegisterEventResponder(new CSewageResponder);

    // Checks run, and their findings are listed, in this order.
    RegisterAnalysisItem<CFAI_MinimalPipeDepth>();
    RegisterAnalysisItem<CFAI_NegativeSlopeCalc>();
    RegisterAnalysisItem<CFAI_NegativeSlope>();
    RegisterAnalysisItem<CFAI_NegativeCascade>();
    RegisterAnalysisItem<CFAI_MultipleOutletSections>();
    RegisterAnalysisItem<CFAI_SmallerDiametersDownflow>();
    RegisterAnalysisItem<CFAI_ManholePipe>();

    // Calculators are listed by their keys, not in this order.
    RegisterFlowCalculator<CFlowCalculator_RainSimple>();
    RegisterFlowCalculator<CFlowCalculator_WastePercent>();
    RegisterFlowCalculator<CFlowCalculator_WasteAreas>();
    RegisterFlowCalculator<CFlowCalculator_Transit>();
    RegisterFlowCalculator<CFlowCalculator_Total>();
    RegisterFlowCalculator<CFlowCalculator_Additional>();
    RegisterFlowCalculator<CFlowCalculator_RainITP>();
}

void CHCPluginInfo::RegisterPanelDialogs() {
    const auto metadata = boost::make_shared<CWsPanelDialogMetadata>();
    metadata->SetDialogId("WS_HCALCULATION_PANEL");
    metadata->SetPanelPosition(3);
    metadata->SetButtonIconId("IDI_SEWAGE");
    metadata->SetTooltipText("Drenova");
    metadata->SetButtonText("Drenova");
    CWsManager::Instance()->RegisterWsPanelDialog(metadata);
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainITPForm.h"

#include "flow/CalculatorForm.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/CustomDialogRegistry.h"
#include "rain/PropIDPRO.h"
#include "rain/PropIDPTurkish.h"
#include "rain/RainITPParameters.h"

#include <boost/make_shared.hpp>

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CConstraint;
using OLMGis::Topology::CConstraints;
using OLMGis::Topology::CCustomDialogRegistry;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CUtility;

namespace {

constexpr int EditParameters = 7221; ///< what fields with a dialog of their own show

using CCategoryPtr = boost::shared_ptr<CCategory>;
using CPropertyPtr = boost::shared_ptr<CPropertyEx>;

CCategoryPtr AddCategory(CFlowCalculatorParameters& parameters, int nameMessage) {
    return CalculatorForm::AddCategory(parameters, parameters.m_properties->GetMaxCategoryOrd() + 1, nameMessage);
}

CPropertyPtr AddProperty(const CCategoryPtr& category, const char* tag, enmPropertyEditorType editor, int message,
                         const CDataBox& value, const CDataBox& hidden, const CDataBox& defaultValue,
                         const CDataBox& defaultHidden) {
    return CPropertyEx::CreateProperty(category, tag, editor, message, message, value, hidden, defaultValue,
                                       defaultHidden, 0, nullptr, "", "");
}

/// A combo box that stands on its first choice; nothing by default.
CPropertyPtr AddChoice(const CCategoryPtr& category, const char* tag, int message,
                       const boost::shared_ptr<CConstraints>& choices) {
    const auto first = choices->GetConstraintByOrd(1);
    auto property = AddProperty(category, tag, enmPropertyEditorType::ComboBox, message, first->GetValue(),
                                first->GetHiddenValue(), "", 0);
    property->SetConstraints(choices);
    return property;
}

CPropertyPtr AddNumber(const CCategoryPtr& category, const char* tag, int message, const CDataBox& value) {
    return CalculatorForm::AddProperty(category, tag, enmPropertyEditorType::Edit, message, value);
}

CPropertyPtr AddDialog(const CCategoryPtr& category, const char* tag, int message, const CDataBox& hidden,
                       const char* control) {
    const CDataBox shown(CModuleConfiguration::Instance()->GetMsg(EditParameters));
    auto property =
        AddProperty(category, tag, enmPropertyEditorType::CustomDialog, message, shown, hidden, shown, hidden);
    property->SetCustomCtrlId(control);
    return property;
}

void AddConstraint(CConstraints& constraints, const CDataBox& value, const CDataBox& hidden) {
    const auto constraint = boost::make_shared<CConstraint>();
    constraint->SetValue(value);
    constraint->SetHiddenValue(hidden);
    constraints.AddConstraint(constraint);
}

void AddRain(CFlowCalculatorParameters& parameters) {
    const auto category = AddCategory(parameters, 2482);
    const auto mode = AddChoice(
        category, "RAINFALL_MODE", 2482,
        CalculatorForm::MakeConstraints(
            {{2481, RainChoices::CurveFile}, {2484, RainChoices::Formula}, {9455, RainChoices::TurkishParameters}}));
    AddProperty(category, "FILE_PATH", enmPropertyEditorType::FilePath, 2285, "", "", "", "");
    AddProperty(category, "FREQUENCY", enmPropertyEditorType::ComboBox, 2290, "", 0.0, "", 0.0);
    AddNumber(category, "RAIN_INTESITY", 2483, 100.0);
    AddNumber(category, "FREQUENCY_N", 2485, 1.0);
    AddDialog(category, "TURKISH", 9455, "", CPropIDPTurkish::ControlId);

    constexpr const char* FirstOnly = "0:1:%s$1:0:%s$2:0:%s$";
    constexpr const char* SecondOnly = "0:0:%s$1:1:%s$2:0:%s$";
    constexpr const char* ThirdOnly = "0:0:%s$1:0:%s$2:1:%s$";
    constexpr const char* FirstAndSecond = "0:1:%s$1:1:%s$2:0:%s";
    std::string dependency;
    for (const auto& [format, tag] : {std::pair{FirstOnly, "FILE_PATH"},
                                      {FirstOnly, "FREQUENCY"},
                                      {SecondOnly, "RAIN_INTESITY"},
                                      {SecondOnly, "FREQUENCY_N"},
                                      {ThirdOnly, "TURKISH"},
                                      {FirstAndSecond, "IGNORE_CARRIER_PIPES"}})
        dependency += CUtility::Format(format, tag, tag, tag);
    mode->SetDependency(dependency);
}

void AddSettings(CFlowCalculatorParameters& parameters) {
    const auto category = AddCategory(parameters, 2286);
    AddChoice(category, "PARTIAL_AREA_EFFECT", 11264,
              CalculatorForm::MakeConstraints(
                  {{11265, 0}, {11266, RainChoices::PartialAreaChains}, {11267, RainChoices::PartialAreaSearch}}));
    CalculatorForm::AddCheckBox(category, "IGNORE_CARRIER_PIPES", 11092);
    AddChoice(category, "USE_EXISTING_PIPE", 11262,
              CalculatorForm::MakeConstraints(
                  {{11263, 0}, {11086, RainChoices::KeepExistingPipe}, {11261, RainChoices::ExistingPipeGroup}}));
    CalculatorForm::AddCheckBox(category, "SAVE_PIPE", 11048);
    AddNumber(category, "PRECISION", 2288, 0.5);
    AddNumber(category, "WATER_VISCOSITY", 2289, 0.000001);
    const auto group = AddProperty(category, "PIPE_GROUP", enmPropertyEditorType::CatalogPicker, 2291, "", "", "", "");
    group->SetCIPicker_CatalogId("PIPE");
    group->SetCIPicker_GroupsOnly(1);
    group->SetCIPicker_Single(1);
    group->SetCIPicker_UseDisk(1);
    AddChoice(
        category, "STORM_CAD", 11084,
        CalculatorForm::MakeConstraints({{11090, RainChoices::TimeToLowerEnd}, {11091, RainChoices::TimeToUpperEnd}}));
    AddChoice(
        category, "BRANCHING_FLOW_TIME", 11087,
        CalculatorForm::MakeConstraints({{11088, RainChoices::LongestBranch}, {11089, RainChoices::ShortestBranch}}));
    const auto standards = boost::make_shared<CConstraints>();
    AddConstraint(*standards, "STANDARD", RainChoices::StandardPlain);
    AddConstraint(*standards, "BLG", RainChoices::StandardBulgarian);
    AddConstraint(*standards, "RO", RainChoices::StandardRomanian);
    const auto standard = AddChoice(category, "CALC_STANDARD", 6129, standards);
    standard->SetDependency(CUtility::Format("0:0:%s$1:0:%s$2:1:%s", "RO", "RO", "RO"));
    AddDialog(category, "RO", 6130, 0.0, CPropIDPRO::ControlId);
}

} // namespace

boost::shared_ptr<CFlowCalculatorParameters> RainITPForm::Make() {
    auto parameters = CalculatorForm::MakeParameters();
    AddRain(*parameters);
    AddSettings(*parameters);
    const auto limits = AddCategory(*parameters, 2287);
    AddNumber(limits, "PIPE_FILL", 2294, 100);
    AddNumber(limits, "MINIMAL_DIAMETAR", 2295, 0);
    CCustomDialogRegistry::Instance()->RegisterDialog(boost::make_shared<CPropIDPTurkish>());
    CCustomDialogRegistry::Instance()->RegisterDialog(boost::make_shared<CPropIDPRO>());
    return parameters;
}

void RainITPForm::OfferFrequencies(CPropertyEx& property, const CIDFCurves& curves) {
    const auto constraints = boost::make_shared<CConstraints>();
    if (curves.IsValid())
        for (const auto& [frequency, curve] : curves.GetCurves())
            AddConstraint(*constraints, CUtility::Format("%.2f", frequency), frequency);
    property.SetConstraints(constraints);
    const bool isPreset = constraints->GetMaxConstraintOrd() > 1;
    const auto first = constraints->GetConstraintByOrd(1);
    property.SetHiddenValue(isPreset ? first->GetHiddenValue() : CDataBox(0.0));
    property.SetValue(isPreset ? first->GetValue() : CDataBox(""));
}

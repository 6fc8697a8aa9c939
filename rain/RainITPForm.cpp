// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/RainITPForm.h"

#include "flow/FormFields.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "rain/curves/FormFields.h"
#include "rain/curves/IDFCurves.h"
#include "rain/curves/RainChoices.h"
#include "rain/editions/Editions.h"

#include <boost/make_shared.hpp>

using Flow::MakeConstraints;
using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Topology::CConstraints;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace {

constexpr const char* IgnoreCarriers = "IGNORE_CARRIER_PIPES";

// Messages: categories, then labels and choices of properties.
constexpr int RainCategory = 2482;
constexpr int SettingsCategory = 2286;
constexpr int LimitsCategory = 2287;
constexpr int RainfallModeLabel = 2482;
constexpr int PartialAreaLabel = 11264;
constexpr int PartialAreaOff = 11265;
constexpr int PartialAreaByChains = 11266;
constexpr int PartialAreaBySearch = 11267;
constexpr int IgnoreCarriersLabel = 11092;
constexpr int UseExistingPipeLabel = 11262;
constexpr int IgnoreExistingPipe = 11263;
constexpr int KeepExistingPipe = 11086;
constexpr int TakeExistingGroup = 11261;
constexpr int SavePipeLabel = 11048;
constexpr int PrecisionLabel = 2288;
constexpr int ViscosityLabel = 2289;
constexpr int PipeGroupLabel = 2291;
constexpr int TimeRuleLabel = 11084;
constexpr int BranchingLabel = 11087;
constexpr int StandardLabel = 6129;
constexpr int PipeFillLabel = 2294;
constexpr int MinimalDiameterLabel = 2295;

Rain::CCategoryPtr AddCategory(CFlowCalculatorParameters& parameters, int nameMessage) {
    return Flow::AddCategory(*parameters.m_properties, parameters.m_properties->GetMaxCategoryOrd() + 1, nameMessage);
}

/// The source of the rain with the fields of each choice.
void AddRain(CFlowCalculatorParameters& parameters) {
    const auto category = AddCategory(parameters, RainCategory);
    const auto rainfalls = Rain::MakeRainfalls();
    const auto choices = boost::make_shared<CConstraints>();
    for (const auto& rainfall : rainfalls)
        Rain::AddConstraint(*choices, Msg(rainfall->GetMode()), rainfall->GetMode());
    const auto mode = Rain::AddChoices(category, "RAINFALL_MODE", RainfallModeLabel, choices);
    std::vector<int> modes;
    std::vector<Rain::CShownField> fields;
    Rain::CShownField carriers{IgnoreCarriers, {}};
    for (const auto& rainfall : rainfalls) {
        modes.push_back(rainfall->GetMode());
        for (const char* tag : rainfall->AddFields(category))
            fields.push_back({tag, {rainfall->GetMode()}});
        if (!rainfall->HasRunningInletTime())
            carriers.m_choices.push_back(rainfall->GetMode());
    }
    fields.push_back(carriers);
    mode->SetDependency(Rain::MakeDependency(modes, fields));
}

/// The standard with the fields of each choice.
void AddStandards(const Rain::CCategoryPtr& category) {
    const auto standards = Rain::MakeStandards();
    const auto choices = boost::make_shared<CConstraints>();
    for (const auto& standard : standards)
        Rain::AddConstraint(*choices, standard->GetName(), standard->GetCode());
    const auto property = Rain::AddChoices(category, "CALC_STANDARD", StandardLabel, choices);
    std::vector<int> codes;
    std::vector<Rain::CShownField> fields;
    for (const auto& standard : standards) {
        codes.push_back(standard->GetCode());
        for (const char* tag : standard->AddFields(category))
            fields.push_back({tag, {standard->GetCode()}});
    }
    property->SetDependency(Rain::MakeDependency(codes, fields));
}

void AddSettings(CFlowCalculatorParameters& parameters) {
    const auto category = AddCategory(parameters, SettingsCategory);
    Rain::AddChoices(category, "PARTIAL_AREA_EFFECT", PartialAreaLabel,
                     MakeConstraints({{PartialAreaOff, 0},
                                      {PartialAreaByChains, RainChoices::PartialAreaChains},
                                      {PartialAreaBySearch, RainChoices::PartialAreaSearch}}));
    Flow::AddCheckBox(category, IgnoreCarriers, IgnoreCarriersLabel);
    Rain::AddChoices(category, "USE_EXISTING_PIPE", UseExistingPipeLabel,
                     MakeConstraints({{IgnoreExistingPipe, 0},
                                      {KeepExistingPipe, RainChoices::KeepExistingPipe},
                                      {TakeExistingGroup, RainChoices::ExistingPipeGroup}}));
    Flow::AddCheckBox(category, "SAVE_PIPE", SavePipeLabel);
    Flow::AddNumber(category, "PRECISION", PrecisionLabel, 0.5);
    Flow::AddNumber(category, "WATER_VISCOSITY", ViscosityLabel, 0.000001);
    const auto group =
        Rain::AddField(category, "PIPE_GROUP", enmPropertyEditorType::CatalogPicker, PipeGroupLabel, "", "", "", "");
    group->SetCIPicker_CatalogId("PIPE");
    group->SetCIPicker_GroupsOnly(1);
    group->SetCIPicker_Single(1);
    group->SetCIPicker_UseDisk(1);
    Rain::AddChoices(category, "STORM_CAD", TimeRuleLabel,
                     MakeConstraints({{RainChoices::TimeToLowerEnd, RainChoices::TimeToLowerEnd},
                                      {RainChoices::TimeToUpperEnd, RainChoices::TimeToUpperEnd}}));
    Rain::AddChoices(category, "BRANCHING_FLOW_TIME", BranchingLabel,
                     MakeConstraints({{RainChoices::LongestBranch, RainChoices::LongestBranch},
                                      {RainChoices::ShortestBranch, RainChoices::ShortestBranch}}));
    AddStandards(category);
}

} // namespace

boost::shared_ptr<CFlowCalculatorParameters> RainITPForm::Make() {
    auto parameters = Flow::MakeParameters();
    AddRain(*parameters);
    AddSettings(*parameters);
    const auto limits = AddCategory(*parameters, LimitsCategory);
    Flow::AddNumber(limits, "PIPE_FILL", PipeFillLabel, 100);
    Flow::AddNumber(limits, "MINIMAL_DIAMETAR", MinimalDiameterLabel, 0);
    return parameters;
}

void RainITPForm::OfferFrequencies(CPropertyEx& property, const CIDFCurves* curves) {
    const auto constraints = boost::make_shared<CConstraints>();
    if (curves != nullptr && curves->IsValid())
        for (const auto& [frequency, curve] : curves->GetCurves())
            Rain::AddConstraint(*constraints, CUtility::Format("%.2f", frequency), frequency);
    property.SetConstraints(constraints);
    const bool isPreset = constraints->GetMaxConstraintOrd() > 1;
    const auto first = constraints->GetConstraintByOrd(1);
    property.SetHiddenValue(isPreset ? first->GetHiddenValue() : CDataBox(0.0));
    property.SetValue(isPreset ? first->GetValue() : CDataBox(""));
}

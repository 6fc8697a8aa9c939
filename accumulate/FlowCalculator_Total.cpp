// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/FlowCalculator_Total.h"

#include "flow/Edition.h"
#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "flow/FormFields.h"
#include "flow/InputLacks.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/sewage_core/SewageCalculationConfigurator.h"
#include "host/workspace_core/WsManager.h"

#include <array>
#include <vector>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::CSewageCalculationConfigurator;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Utility::Msg;
using OLMGis::Workspace::CLogLine;
using OLMGis::Workspace::CWsManager;

namespace {

namespace Messages {

constexpr int Name = 11167;
constexpr int GroupName = 7653;
constexpr int Category = 2150;
constexpr int OwnFlow = 2143;
constexpr int Transit = 2144;
constexpr int RainByCurves = 2145;
constexpr int WasteWithPeakFactor = 9010;
constexpr int BulgarianHousehold = 8939;
constexpr int TurkishHousehold = 9338;
constexpr int FlowsStored = 2050;

} // namespace Messages

/// A switch of the form and the flow of a section that it brings in.
struct Component {
    const char* tag;
    const char* key;
};

/// In the order of addition, which is fixed and differs from the order of the form. Two of the switches bear the name
/// of an attribute: form and attributes are separate stores.
constexpr std::array<Component, 6> Components{{
    {"FLOW_ITP", Flow::Keys::RainCurves},
    {"FLOW_BLG", Flow::Keys::WasteHomeBulgarian},
    {"FLOW_UNEVEN", Flow::Keys::WasteUneven},
    {"FLOW_TRANSIT", Flow::Keys::Transit},
    {"FLOW_TOTAL_OWN", Flow::Keys::SectionTotal},
    {"FLOW_WASTE_HOME_TUR", Flow::Keys::TurkishWasteHome},
}};

/// The flows that a form switches on, in the order of addition. A switch that the form lacks is off.
std::vector<const CDataDefinition*> FlowsSwitchedOn(const CPropertiesEx& form) {
    std::vector<const CDataDefinition*> flows;
    for (const auto& [tag, key] : Components)
        if (form.GetIntProperty(tag, 0, 1) != 0)
            flows.push_back(FindDefinition(key));
    return flows;
}

double Sum(const CSection& section, const std::vector<const CDataDefinition*>& flows) {
    double sum = 0.0;
    for (const CDataDefinition* flow : flows)
        sum += Flow::ReadValueOr(section, flow, 0.0);
    return sum;
}

} // namespace

CFlowCalculator_Total::CFlowCalculator_Total() {
    m_key = "04_FC_TOTAL";
    m_outputDefinitions = Flow::Outputs::Definitions({Flow::Keys::Total});
    m_outputDefinitionsWithKind = Flow::Outputs::DefinitionsWithKind({Flow::Keys::Total});
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_Total::CreateParameters() {
    m_parameters = Flow::MakeParameters();
    const auto category = Flow::AddCategory(*m_parameters->m_properties, 0, Messages::Category);
    Flow::AddCheckBox(category, "FLOW_TOTAL_OWN", Messages::OwnFlow);
    Flow::AddCheckBox(category, "FLOW_ITP", Messages::RainByCurves);
    Flow::AddCheckBox(category, "FLOW_TRANSIT", Messages::Transit);
    Flow::AddCheckBox(category, "FLOW_UNEVEN", Messages::WasteWithPeakFactor);
    if (Flow::Edition::Is(Flow::Edition::Bulgarian))
        Flow::AddCheckBox(category, "FLOW_BLG", Messages::BulgarianHousehold);
    if (CSewageCalculationConfigurator::IsTurkishExtensionAllowed() != 0)
        Flow::AddCheckBox(category, "FLOW_WASTE_HOME_TUR", Messages::TurkishHousehold);
    return m_parameters;
}

double CFlowCalculator_Total::GetSectionTotal(const CFlowCalculatorParameters* params,
                                              const boost::shared_ptr<CSection>& section) {
    if (params == nullptr || !params->m_properties || !section)
        return 0.0;
    return Sum(*section, FlowsSwitchedOn(*params->m_properties));
}

int CFlowCalculator_Total::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params, int /*write*/,
                                     CReport* /*report*/, IUserInteraction* /*interaction*/) {
    if (params == nullptr || !params->m_properties || sections.empty())
        return 0;
    const CDataBox serialized(params->Serialize());
    const auto flows = FlowsSwitchedOn(*params->m_properties);
    const CDataDefinition* const totalKey = FindDefinition(Flow::Keys::Total);
    const CDataDefinition* const parametersKey = FindDefinition(GetParametersDataId());
    // Fixed: only the last section decides.
    bool wrote = false;
    CDataBox total;
    for (const auto& section : sections) {
        if (!section)
            continue;
        total.SetDouble(Sum(*section, flows));
        wrote = CDataRW::Write(totalKey, section, total, nullptr) != 0;
        CDataRW::Write(parametersKey, section, serialized, nullptr);
    }
    if (wrote)
        CWsManager::Instance()->LogMessage(CLogLine::Stored, Msg(Messages::FlowsStored));
    return wrote ? 1 : 0;
}

std::string CFlowCalculator_Total::GetCalculatorName() {
    return Msg(Messages::Name);
}

std::string CFlowCalculator_Total::GetCalculatorGroupName() {
    return Msg(Messages::GroupName);
}

std::string CFlowCalculator_Total::GetParametersDataId() {
    return Flow::Keys::TotalParameters;
}

std::vector<std::string> CFlowCalculator_Total::GetReadKeys() const {
    std::vector<std::string> keys;
    keys.reserve(Components.size());
    for (const Component& component : Components)
        keys.emplace_back(component.key);
    return keys;
}

std::vector<std::string> CFlowCalculator_Total::GetWrittenKeys(bool /*inAnyEdition*/) const {
    return {Flow::Keys::Total, Flow::Keys::TotalParameters};
}

std::vector<std::string> CFlowCalculator_Total::GetNeededResults(const CPropertiesEx& form) const {
    std::vector<std::string> keys;
    for (const CDataDefinition* flow : FlowsSwitchedOn(form))
        keys.push_back(flow->m_id);
    return keys;
}

std::vector<OLMGis::Sewage::CLack> CFlowCalculator_Total::FindLacks(const CSectionList& /*sections*/,
                                                                    CFlowCalculatorParameters& params) const {
    std::vector<OLMGis::Sewage::CLack> lacks;
    std::vector<std::string> tags;
    for (const auto& property : params.m_properties->GetAllProperties())
        tags.push_back(property->GetTag());
    Flow::InputLacks::AddNothingSwitchedOn(*params.m_properties, tags, lacks);
    return lacks;
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/FlowCalculator_Transit.h"

#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "flow/FormFields.h"
#include "flow/InputLacks.h"
#include "flow/MainOutlets.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/Selector.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/sewage_core/SewageCalculationConfigurator.h"

#include <vector>

using Accumulate::CTransitWalk;
using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::CSewageCalculationConfigurator;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CEntity;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyMultiStorage;
using OLMGis::Utility::Msg;

namespace {

namespace Messages {

constexpr int Name = 11168;
constexpr int GroupName = 7653;
constexpr int Category = 2150;

} // namespace Messages

constexpr const char* MainOutletKey = Flow::Keys::MainOutlet;

/// A switch of the form and the flow of a section that it brings in.
struct Component {
    const char* tag;
    int message; ///< of its label
    const char* key;
};

/// In the order of the form. Those from FirstTurkish on exist only where the Turkish extension is allowed.
constexpr std::array<Component, std::tuple_size_v<TransitSwitches>> Components{{
    {"FC_WASTE_PER", 2147, Flow::Keys::WastePercent},
    {"FC_HOUSEWASTE_AREA", 2148, Flow::Keys::WasteHome},
    {"FC_INDWASTE_AREA", 2149, Flow::Keys::WasteIndustry},
    {"FC_RAIN_SIMPLE", 2129, Flow::Keys::Rain},
    {"FC_POINT", 2136, Flow::Keys::Point},
    {"FC_FOREIGN", 2132, Flow::Keys::Foreign},
    {"FC_ADDITIONAL_RAIN_IN_WASTE_CH", 2139, Flow::Keys::Additional},
    {"FC_USER", 2141, Flow::Keys::User},
    {"FC_IND_TUR", 9339, Flow::Keys::TurkishWasteIndustry},
    {"FC_FOREIGN_TUR", 9340, Flow::Keys::TurkishInfiltration},
}};
constexpr std::size_t FirstTurkish = 8;

/// The order in which components are added up, as places of the form. It differs from the order of the form and is
/// fixed: the last digit of a sum depends on it.
constexpr std::array<std::size_t, Components.size()> SumOrder{6, 1, 0, 2, 3, 5, 4, 7, 8, 9};

TransitSwitches ReadSwitches(const CFlowCalculatorParameters& params) {
    TransitSwitches switches{};
    for (std::size_t i = 0; i < switches.size(); ++i)
        switches[i] = params.m_properties->GetIntProperty(Components[i].tag, 0, 1);
    return switches;
}

/// Sums the flows of a section that are switched on; what a run needs of the switches is determined once.
class COwnFlowSum {
public:
    explicit COwnFlowSum(const TransitSwitches& switches) {
        for (const std::size_t i : SumOrder)
            if (switches[i] != 0)
                (i < FirstTurkish ? m_marked : m_plain).push_back(FindDefinition(Components[i].key));
    }

    double operator()(const CSection& section) const {
        double sum = 0.0;
        for (const CDataDefinition* flow : m_marked)
            if (const double value = Flow::ReadFlowValue(section, flow); value != Flow::AbsentValue)
                sum += value;
        for (const CDataDefinition* flow : m_plain)
            sum += Flow::ReadValueOr(section, flow, 0.0);
        return sum;
    }

private:
    std::vector<const CDataDefinition*> m_marked; ///< a stored Flow::AbsentValue counts as absent
    std::vector<const CDataDefinition*> m_plain;  ///< the Turkish flows, after all others: any stored number counts
};

} // namespace

CFlowCalculator_Transit::CFlowCalculator_Transit() {
    m_key = "03_FC_TRANSIT";
    m_outputDefinitions = Flow::Outputs::Definitions({Flow::Keys::SectionTotal, Flow::Keys::Transit});
    m_outputDefinitionsWithKind = Flow::Outputs::DefinitionsWithKind({Flow::Keys::SectionTotal, Flow::Keys::Transit});
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_Transit::CreateParameters() {
    m_parameters = Flow::MakeParameters();
    const auto category = Flow::AddCategory(*m_parameters->m_properties, 0, Messages::Category);
    const bool isTurkish = CSewageCalculationConfigurator::IsTurkishExtensionAllowed() != 0;
    for (std::size_t i = 0; i < Components.size(); ++i)
        if (i < FirstTurkish || isTurkish)
            Flow::AddCheckBox(category, Components[i].tag, Components[i].message);
    return m_parameters;
}

int CFlowCalculator_Transit::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params, int write,
                                       CReport* report, IUserInteraction* interaction) {
    return CalculateTransit(sections, params, write, report, interaction);
}

int CFlowCalculator_Transit::CalculateTransit(const CSectionList& sections, CFlowCalculatorParameters* params,
                                              int /*write*/, CReport* /*report*/, IUserInteraction* interaction) {
    if (params == nullptr || !params->m_properties)
        return 0;
    const std::string serialized = params->Serialize();
    if (Flow::MainOutlets::ChooseMissing(Flow::MainOutlets::CollectStartingNodes(sections), interaction) == 0) {
        acedAlert(Msg(Flow::MainOutlets::MissingMessage));
        return 0;
    }
    m_sectionFlows.clear();
    m_nodeFlows.clear();
    m_walk.Run(sections, COwnFlowSum(ReadSwitches(*params)));
    WriteResults(sections, serialized);
    return 1;
}

void CFlowCalculator_Transit::WriteResults(const CSectionList& sections, const std::string& serialized) {
    const CDataDefinition* const totalKey = FindDefinition(Flow::Keys::SectionTotal);
    const CDataDefinition* const parametersKey = FindDefinition(GetParametersDataId());
    const CDataDefinition* const transitKey = FindDefinition(Flow::Keys::Transit);
    const CDataBox parameters(serialized);
    CDataBox flow;
    for (const auto& section : sections) {
        const auto* record = section ? m_walk.Find(*section) : nullptr;
        if (record == nullptr)
            continue;
        flow.SetDouble(record->own);
        CDataRW::Write(totalKey, section, flow, nullptr);
        CDataRW::Write(parametersKey, section, parameters, nullptr);
        flow.SetDouble(0.0 > record->transit ? 0.0 : record->transit);
        CDataRW::Write(transitKey, section, flow, nullptr);
    }
}

const std::map<std::string, TransitSectionFlow>& CFlowCalculator_Transit::GetSectionFlows() const {
    const auto& flows = m_walk.GetSectionFlows();
    if (!m_sectionFlows.empty())
        return m_sectionFlows;
    for (std::uint32_t row = 0; row < flows.size(); ++row) {
        if (!flows[row].hasRecord)
            continue;
        const auto& section = m_walk.GetTopology()->GetSectionAt(row);
        m_sectionFlows.try_emplace(std::string(section->GetGuid()),
                                   TransitSectionFlow{section, flows[row].transit, flows[row].own});
    }
    return m_sectionFlows;
}

const std::map<std::string, TransitNodeFlow>& CFlowCalculator_Transit::GetNodeFlows() const {
    const auto& flows = m_walk.GetNodeFlows();
    if (!m_nodeFlows.empty())
        return m_nodeFlows;
    for (std::uint32_t row = 0; row < flows.size(); ++row) {
        const CTransitWalk::CNodeFlow& flow = flows[row];
        if (!flow.hasRecord)
            continue;
        const auto& node = m_walk.GetTopology()->GetNodeAt(row);
        m_nodeFlows.try_emplace(
            std::string(node->GetGuid()),
            TransitNodeFlow{flow.sectionsIn, std::string(node->GetName()), flow.processedIn, flow.accumulated});
    }
    return m_nodeFlows;
}

boost::shared_ptr<CSection> CFlowCalculator_Transit::GetMainOutletOf(const boost::shared_ptr<CEntity>& entity) {
    CDataBox guid;
    if (CDataRW::Read(MainOutletKey, entity, guid, 0, nullptr) == 0)
        return nullptr;
    return CTopologyMultiStorage::Instance()->GetActiveTopology()->GetSectionByGuid(guid.TextView());
}

int CFlowCalculator_Transit::SetMainOutletOf(const boost::shared_ptr<CEntity>& entity,
                                             const boost::shared_ptr<CSection>& section) {
    return entity && section ? CDataRW::Write(MainOutletKey, entity, CDataBox(section->GetGuid()), nullptr) : 0;
}

void CFlowCalculator_Transit::SaveMainOutlets() {
    OLMGis::Selection::CSelectionSet set;
    OLMGis::Selection::CSelector::LoopInstance()->selectActSysAllElements(set);
    for (const auto& entity : set.GetEntities())
        m_savedMainOutlets[entity] = GetMainOutletOf(entity);
}

void CFlowCalculator_Transit::RestoreMainOutlets() {
    for (const auto& [entity, outlet] : m_savedMainOutlets)
        if (entity)
            SetMainOutletOf(entity, outlet);
}

double CFlowCalculator_Transit::ReadTransit(const boost::shared_ptr<CSection>& section) {
    return Flow::ReadFlowValue(section, Flow::Keys::Transit);
}

int CFlowCalculator_Transit::WriteSectionTotal(const boost::shared_ptr<CSection>& section, double value) {
    return CDataRW::Write(Flow::Keys::SectionTotal, section, CDataBox(value), nullptr);
}

double CFlowCalculator_Transit::GetOwnFlow(const boost::shared_ptr<CSection>& section,
                                           const CFlowCalculatorParameters* params) {
    if (!section || params == nullptr || !params->m_properties)
        return 0.0;
    return BuildSectionFlow(section, ReadSwitches(*params)).own;
}

TransitSectionFlow CFlowCalculator_Transit::BuildSectionFlow(const boost::shared_ptr<CSection>& section,
                                                             const TransitSwitches& switches) {
    return {section, CTransitWalk::NotReached, COwnFlowSum(switches)(*section)};
}

std::string CFlowCalculator_Transit::GetCalculatorName() {
    return Msg(Messages::Name);
}

std::string CFlowCalculator_Transit::GetCalculatorGroupName() {
    return Msg(Messages::GroupName);
}

std::string CFlowCalculator_Transit::GetParametersDataId() {
    return Flow::Keys::TransitParameters;
}

std::vector<std::string> CFlowCalculator_Transit::GetReadKeys() const {
    std::vector<std::string> keys{MainOutletKey};
    for (const Component& component : Components)
        keys.emplace_back(component.key);
    return keys;
}

std::vector<std::string> CFlowCalculator_Transit::GetWrittenKeys(bool /*inAnyEdition*/) const {
    return {Flow::Keys::SectionTotal, Flow::Keys::Transit, Flow::Keys::TransitParameters};
}

std::vector<std::string> CFlowCalculator_Transit::GetNeededResults(const OLMGis::Topology::CPropertiesEx& form) const {
    std::vector<std::string> keys;
    for (const Component& component : Components)
        if (form.GetIntProperty(component.tag, 0, 1) != 0)
            keys.emplace_back(component.key);
    return keys;
}

std::vector<OLMGis::Sewage::CLack> CFlowCalculator_Transit::FindLacks(const CSectionList& sections,
                                                                      CFlowCalculatorParameters& params) const {
    std::vector<OLMGis::Sewage::CLack> lacks;
    std::vector<std::string> tags;
    for (const Component& component : Components)
        if (params.m_properties->GetPropertyExByTag(component.tag))
            tags.emplace_back(component.tag);
    Flow::InputLacks::AddNothingSwitchedOn(*params.m_properties, tags, lacks);
    Flow::InputLacks::AddMainOutlets(sections, lacks);
    return lacks;
}

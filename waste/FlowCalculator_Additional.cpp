// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/FlowCalculator_Additional.h"

#include "flow/CalculatorForm.h"
#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/Catchment.h"
#include "host/sewage_core/CatchmentAreaManager.h"

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::CModuleConfiguration;

namespace {

/// Ways of reckoning foreign water, as the form stores them.
enum enmForeignWater : int { ByInhabitants = 0, ByWasteFlows = 1, ByLength = 2 };

/// Puts in force exactly the number that the chosen way of reckoning foreign water uses.
constexpr const char* ForeignWaterDependency = "0:0:FC_ADD_FW_FACTOR_M#FC_ADD_FW_SPECIFIC_FLOW$0:1:FC_ADD_FW_COEFF"
                                               "$1:0:FC_ADD_FW_SPECIFIC_FLOW#FC_ADD_FW_COEFF$1:1:FC_ADD_FW_FACTOR_M"
                                               "$2:0:FC_ADD_FW_FACTOR_M#FC_ADD_FW_COEFF$2:1:FC_ADD_FW_SPECIFIC_FLOW";

/// What was typed. Numbers fall back to 1.0, whatever their fields start with: a set without the field reckons in
/// units.
struct Input {
    explicit Input(const CPropertiesEx& form)
        : hasForeign(form.GetIntProperty("FC_ADD_FW", 0, 1)), foreignWay(form.GetIntProperty("FC_ADD_FW_OPTION", 0, 1)),
          hasPoint(form.GetIntProperty("FC_ADD_POINT", 0, 1)),
          pointDirection(form.GetIntProperty("FC_ADD_POINT_OPTION", 0, 1)),
          hasAdditional(form.GetIntProperty("FC_ADD_ADDITIONAL", 0, 1)),
          hasUser(form.GetIntProperty("FC_ADD_USER", 0, 1)),
          foreignPerInhabitant(form.GetDblProperty("FC_ADD_FW_COEFF", 1.0, 1)),
          foreignFactor(form.GetDblProperty("FC_ADD_FW_FACTOR_M", 1.0, 1)),
          foreignPerLength(form.GetDblProperty("FC_ADD_FW_SPECIFIC_FLOW", 1.0, 1)),
          point(form.GetDblProperty("FC_ADD_POINT_VAL", 1.0, 1)),
          additionalPerInhabitant(form.GetDblProperty("FC_ADD_ADDITIONAL_VAL", 1.0, 1)),
          user(form.GetDblProperty("FC_ADD_USER_VAL", 1.0, 1)) {}

    int hasForeign; ///< 0 off, as the other switches
    int foreignWay; ///< enmForeignWater; another value stores nothing
    int hasPoint;
    int pointDirection; ///< 0 adds, any other value subtracts
    int hasAdditional;
    int hasUser;
    double foreignPerInhabitant;    ///< l/s
    double foreignFactor;           ///< -, to the waste flows
    double foreignPerLength;        ///< l/s per m
    double point;                   ///< l/s
    double additionalPerInhabitant; ///< l/s
    double user;                    ///< l/s
};

/// One run: what was typed, the definitions behind the keys, and the outcome so far.
class CRun {
public:
    explicit CRun(const CFlowCalculatorParameters& parameters)
        : m_in(*parameters.m_properties), m_serialized(parameters.Serialize()) {}

    void Store(const boost::shared_ptr<CSection>& section) {
        if (m_in.hasForeign != 0)
            StoreForeign(section);
        if (m_in.hasPoint != 0) {
            const double flow = m_in.point / 1000.0;
            StoreCounted(m_pointKey, section, m_in.pointDirection == 0 ? flow : -flow);
        }
        if (m_in.hasAdditional != 0) {
            // Stored in any case, so that a section without catchments loses the flow of an earlier run. An area
            // without a density gives a nonsense flow that nobody overlooks.
            const CHousehold household(section);
            StoreCounted(m_additionalKey, section,
                         household.density * household.area / 1000.0 * m_in.additionalPerInhabitant);
        }
        if (m_in.hasUser != 0)
            StoreCounted(m_userKey, section, m_in.user / 1000.0);
        CDataRW::Write(m_parametersKey, section, m_serialized, nullptr);
    }

    int GetResult() const { return m_result; }

private:
    /// Household area (ha) and density (inhabitants/ha) of a section.
    struct CHousehold {
        explicit CHousehold(const boost::shared_ptr<CSection>& section) {
            const auto* const catchments = CCatchmentAreaManager::Instance();
            catchments->GetCATotalArea(section, area, OLMGis::Topology::CatchmentHousehold);
            catchments->GetCAAverageDensityInhab(section, density);
        }
        double area = 0.0;
        double density = 1.0;
    };

    void StoreForeign(const boost::shared_ptr<CSection>& section) {
        switch (m_in.foreignWay) {
        case ByInhabitants: {
            const CHousehold household(section);
            const double people = household.area * household.density;
            // Fixed: this write alone doesn't count for the result. Foreign water by inhabitants accompanies the other
            // kinds; a run that stores nothing else ends with 0.
            if (people > 0.0)
                CDataRW::Write(m_foreignKey, section, CDataBox(people * m_in.foreignPerInhabitant / 1000.0), nullptr);
            break;
        }
        case ByWasteFlows: {
            const double home = ReadFlowValue(*section, m_homeKey);
            const double industry = ReadFlowValue(*section, m_industryKey);
            if (home != AbsentValue && industry != AbsentValue)
                StoreCounted(m_foreignKey, section, (industry + home) * m_in.foreignFactor);
            break;
        }
        case ByLength:
            StoreCounted(m_foreignKey, section, section->GetLength2D() * m_in.foreignPerLength / 1000.0);
            break;
        default:
            break;
        }
    }

    void StoreCounted(const CDataDefinition* key, const boost::shared_ptr<CSection>& section, double flow) {
        m_result = CDataRW::Write(key, section, CDataBox(flow), nullptr) != 0 ? 1 : 0;
    }

    const Input m_in;
    const CDataBox m_serialized;
    const CDataDefinition* const m_foreignKey = FindDefinition(FlowKeys::Foreign);
    const CDataDefinition* const m_pointKey = FindDefinition(FlowKeys::Point);
    const CDataDefinition* const m_additionalKey = FindDefinition(FlowKeys::Additional);
    const CDataDefinition* const m_userKey = FindDefinition(FlowKeys::User);
    const CDataDefinition* const m_homeKey = FindDefinition(FlowKeys::WasteHome);
    const CDataDefinition* const m_industryKey = FindDefinition(FlowKeys::WasteIndustry);
    const CDataDefinition* const m_parametersKey = FindDefinition(FlowKeys::AdditionalParameters);
    int m_result = 0;
};

} // namespace

CFlowCalculator_Additional::CFlowCalculator_Additional() {
    m_key = "02_ADDITIONAL";
    // Additional and user flow are stored too but not shown as results of their own.
    m_outputDefinitions = FlowOutputs::Definitions({FlowKeys::Foreign, FlowKeys::Point});
    m_outputDefinitionsWithKind = FlowOutputs::DefinitionsWithKind({FlowKeys::Foreign, FlowKeys::Point});
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_Additional::CreateParameters() {
    using namespace CalculatorForm;
    m_parameters = MakeParameters();
    constexpr auto Edit = enmPropertyEditorType::Edit;

    const auto foreign = AddCategory(*m_parameters, 0, 2132);
    AddCheckBox(foreign, "FC_ADD_FW", 2132);
    AddChoice(foreign, "FC_ADD_FW_OPTION", 3564, {{2133, ByInhabitants}, {2134, ByWasteFlows}, {6922, ByLength}})
        ->SetDependency(ForeignWaterDependency);
    AddProperty(foreign, "FC_ADD_FW_COEFF", Edit, 2107, 1.0);
    // Fixed: the field starts with a tenth of the waste flow, while its default, foreign water as large as the waste
    // flow, stands in the other boxes.
    AddProperty(foreign, "FC_ADD_FW_FACTOR_M", Edit, 2135, 1.0)->SetValue(0.1);
    AddProperty(foreign, "FC_ADD_FW_SPECIFIC_FLOW", Edit, 3919, 0.01);

    const auto point = AddCategory(*m_parameters, 1, 50050);
    AddCheckBox(point, "FC_ADD_POINT", 50050);
    AddChoice(point, "FC_ADD_POINT_OPTION", 50050, {{2137, 0}, {2138, 1}});
    AddProperty(point, "FC_ADD_POINT_VAL", Edit, 9948, 10.0);

    const auto additional = AddCategory(*m_parameters, 2, 2139);
    AddCheckBox(additional, "FC_ADD_ADDITIONAL", 2139);
    AddProperty(additional, "FC_ADD_ADDITIONAL_VAL", Edit, 2140, 0.2);

    const auto user = AddCategory(*m_parameters, 3, 2141);
    AddCheckBox(user, "FC_ADD_USER", 2141);
    AddProperty(user, "FC_ADD_USER_VAL", Edit, 2142, 0.0);
    return m_parameters;
}

int CFlowCalculator_Additional::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params,
                                          int /*write*/, CReport* /*report*/, IUserInteraction* /*interaction*/) {
    if (params == nullptr || !params->m_properties)
        return 0;
    CRun run(*params);
    for (const auto& section : sections)
        if (section)
            run.Store(section);
    return run.GetResult();
}

std::string CFlowCalculator_Additional::GetCalculatorName() {
    return CModuleConfiguration::Instance()->GetMsg(2130);
}

std::string CFlowCalculator_Additional::GetCalculatorGroupName() {
    return CModuleConfiguration::Instance()->GetMsg(2130);
}

std::string CFlowCalculator_Additional::GetParametersDataId() {
    return FlowKeys::AdditionalParameters;
}

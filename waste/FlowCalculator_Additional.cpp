// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/FlowCalculator_Additional.h"

#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "flow/FormFields.h"
#include "flow/InputLacks.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/Catchment.h"
#include "host/sewage_core/CatchmentAreaManager.h"

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::Formulas::LitresPerCubicMetre;
using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Utility::Msg;

namespace Keys = Flow::Keys;

namespace Waste {

using Flow::AbsentValue;
using Flow::ReadFlowValue;

namespace {

namespace Messages {

constexpr int Name = 2130; ///< also of the group
constexpr int Infiltration = 2132;
constexpr int InfiltrationMethod = 3564;
constexpr int MethodInhabitants = 2133;
constexpr int MethodWasteFlows = 2134;
constexpr int MethodLength = 6922;
constexpr int InfiltrationPerInhabitant = 2107;
constexpr int InfiltrationFactor = 2135;
constexpr int InfiltrationPerLength = 3919;
constexpr int Point = 50050;
constexpr int PointAdds = 2137;
constexpr int PointSubtracts = 2138;
constexpr int PointFlow = 9948;
constexpr int Additional = 2139;
constexpr int AdditionalPerInhabitant = 2140;
constexpr int User = 2141;
constexpr int UserFlow = 2142;

} // namespace Messages

/// Methods for infiltration water, as the form stores them.
enum enmInfiltration : int { ByInhabitants = 0, ByWasteFlows = 1, ByLength = 2 };

/// Enables only the number that the chosen method for infiltration water uses.
constexpr const char* InfiltrationDependency = "0:0:FC_ADD_FW_FACTOR_M#FC_ADD_FW_SPECIFIC_FLOW$0:1:FC_ADD_FW_COEFF"
                                               "$1:0:FC_ADD_FW_SPECIFIC_FLOW#FC_ADD_FW_COEFF$1:1:FC_ADD_FW_FACTOR_M"
                                               "$2:0:FC_ADD_FW_FACTOR_M#FC_ADD_FW_COEFF$2:1:FC_ADD_FW_SPECIFIC_FLOW";

/// The values of the form. A number without its field is 1.0, not the value that a new form has; fixed: others rely on
/// it.
struct AdditionalInput {
    explicit AdditionalInput(const CPropertiesEx& form)
        : hasInfiltration(form.GetIntProperty("FC_ADD_FW", 0, 1)),
          infiltrationMethod(form.GetIntProperty("FC_ADD_FW_OPTION", 0, 1)),
          hasPoint(form.GetIntProperty("FC_ADD_POINT", 0, 1)),
          pointDirection(form.GetIntProperty("FC_ADD_POINT_OPTION", 0, 1)),
          hasAdditional(form.GetIntProperty("FC_ADD_ADDITIONAL", 0, 1)),
          hasUser(form.GetIntProperty("FC_ADD_USER", 0, 1)),
          infiltrationPerInhabitant(form.GetDblProperty("FC_ADD_FW_COEFF", 1.0, 1)),
          infiltrationFactor(form.GetDblProperty("FC_ADD_FW_FACTOR_M", 1.0, 1)),
          infiltrationPerLength(form.GetDblProperty("FC_ADD_FW_SPECIFIC_FLOW", 1.0, 1)),
          point(form.GetDblProperty("FC_ADD_POINT_VAL", 1.0, 1)),
          additionalPerInhabitant(form.GetDblProperty("FC_ADD_ADDITIONAL_VAL", 1.0, 1)),
          user(form.GetDblProperty("FC_ADD_USER_VAL", 1.0, 1)) {}

    int hasInfiltration;    ///< 0 is off, as for the other switches
    int infiltrationMethod; ///< enmInfiltration; another value stores nothing
    int hasPoint;
    int pointDirection; ///< 0 adds, any other value subtracts
    int hasAdditional;
    int hasUser;
    double infiltrationPerInhabitant; ///< l/s
    double infiltrationFactor;        ///< -, of the dry-weather flows
    double infiltrationPerLength;     ///< l/s per m
    double point;                     ///< l/s
    double additionalPerInhabitant;   ///< l/s
    double user;                      ///< l/s
};

/// One run: the values of the form, the definitions of the keys, and the result so far.
class CAdditionalRun {
public:
    explicit CAdditionalRun(const CFlowCalculatorParameters& parameters)
        : m_in(*parameters.m_properties), m_serialized(parameters.Serialize()) {}

    void Store(const boost::shared_ptr<CSection>& section) {
        if (m_in.hasInfiltration != 0)
            StoreInfiltration(section);
        if (m_in.hasPoint != 0) {
            const double flow = m_in.point / LitresPerCubicMetre;
            StoreCounted(m_pointKey, section, m_in.pointDirection == 0 ? flow : -flow);
        }
        if (m_in.hasAdditional != 0) {
            // Stored for every section, so that one without catchments does not keep the flow of an earlier run. An
            // area without a density gives a large negative flow; fixed: others rely on it.
            const CHousehold household(section);
            StoreCounted(m_additionalKey, section,
                         household.density * household.area / LitresPerCubicMetre * m_in.additionalPerInhabitant);
        }
        if (m_in.hasUser != 0)
            StoreCounted(m_userKey, section, m_in.user / LitresPerCubicMetre);
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

    void StoreInfiltration(const boost::shared_ptr<CSection>& section) {
        switch (m_in.infiltrationMethod) {
        case ByInhabitants: {
            const CHousehold household(section);
            const double people = household.area * household.density;
            // This write alone does not count for the result; fixed: others rely on it.
            if (people > 0.0)
                CDataRW::Write(m_infiltrationKey, section,
                               CDataBox(people * m_in.infiltrationPerInhabitant / LitresPerCubicMetre), nullptr);
            break;
        }
        case ByWasteFlows: {
            const double home = Flow::ReadFlowValue(*section, m_homeKey);
            const double industry = Flow::ReadFlowValue(*section, m_industryKey);
            if (home != Flow::AbsentValue && industry != Flow::AbsentValue)
                StoreCounted(m_infiltrationKey, section, (industry + home) * m_in.infiltrationFactor);
            break;
        }
        case ByLength:
            StoreCounted(m_infiltrationKey, section,
                         section->GetLength2D() * m_in.infiltrationPerLength / LitresPerCubicMetre);
            break;
        default:
            break;
        }
    }

    void StoreCounted(const CDataDefinition* key, const boost::shared_ptr<CSection>& section, double flow) {
        m_result = CDataRW::Write(key, section, CDataBox(flow), nullptr) != 0 ? 1 : 0;
    }

    const AdditionalInput m_in;
    const CDataBox m_serialized;
    const CDataDefinition* const m_infiltrationKey = FindDefinition(Keys::Foreign);
    const CDataDefinition* const m_pointKey = FindDefinition(Keys::Point);
    const CDataDefinition* const m_additionalKey = FindDefinition(Keys::Additional);
    const CDataDefinition* const m_userKey = FindDefinition(Keys::User);
    const CDataDefinition* const m_homeKey = FindDefinition(Keys::WasteHome);
    const CDataDefinition* const m_industryKey = FindDefinition(Keys::WasteIndustry);
    const CDataDefinition* const m_parametersKey = FindDefinition(Keys::AdditionalParameters);
    int m_result = 0;
};

} // namespace

} // namespace Waste

CFlowCalculator_Additional::CFlowCalculator_Additional() {
    m_key = "02_ADDITIONAL";
    // Additional and user flow are stored too but not listed; fixed: others rely on it.
    m_outputDefinitions = Flow::Outputs::Definitions({Keys::Foreign, Keys::Point});
    m_outputDefinitionsWithKind = Flow::Outputs::DefinitionsWithKind({Keys::Foreign, Keys::Point});
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_Additional::CreateParameters() {
    using namespace Flow;
    using namespace Waste;
    m_parameters = MakeParameters();
    CPropertiesEx& form = *m_parameters->m_properties;

    const auto infiltration = AddCategory(form, 0, Messages::Infiltration);
    AddCheckBox(infiltration, "FC_ADD_FW", Messages::Infiltration);
    AddChoice(infiltration, "FC_ADD_FW_OPTION", Messages::InfiltrationMethod,
              {{Messages::MethodInhabitants, ByInhabitants},
               {Messages::MethodWasteFlows, ByWasteFlows},
               {Messages::MethodLength, ByLength}})
        ->SetDependency(InfiltrationDependency);
    AddNumber(infiltration, "FC_ADD_FW_COEFF", Messages::InfiltrationPerInhabitant, 1.0);
    // The shown value alone differs from the other boxes; fixed: others rely on it.
    AddNumber(infiltration, "FC_ADD_FW_FACTOR_M", Messages::InfiltrationFactor, 1.0)->SetValue(0.1);
    AddNumber(infiltration, "FC_ADD_FW_SPECIFIC_FLOW", Messages::InfiltrationPerLength, 0.01);

    const auto point = AddCategory(form, 1, Messages::Point);
    AddCheckBox(point, "FC_ADD_POINT", Messages::Point);
    AddChoice(point, "FC_ADD_POINT_OPTION", Messages::Point, {{Messages::PointAdds, 0}, {Messages::PointSubtracts, 1}});
    AddNumber(point, "FC_ADD_POINT_VAL", Messages::PointFlow, 10.0);

    const auto additional = AddCategory(form, 2, Messages::Additional);
    AddCheckBox(additional, "FC_ADD_ADDITIONAL", Messages::Additional);
    AddNumber(additional, "FC_ADD_ADDITIONAL_VAL", Messages::AdditionalPerInhabitant, 0.2);

    const auto user = AddCategory(form, 3, Messages::User);
    AddCheckBox(user, "FC_ADD_USER", Messages::User);
    AddNumber(user, "FC_ADD_USER_VAL", Messages::UserFlow, 0.0);
    return m_parameters;
}

int CFlowCalculator_Additional::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params,
                                          int /*write*/, CReport* /*report*/, IUserInteraction* /*interaction*/) {
    if (params == nullptr || !params->m_properties)
        return 0;
    Waste::CAdditionalRun run(*params);
    for (const auto& section : sections)
        if (section)
            run.Store(section);
    return run.GetResult();
}

std::string CFlowCalculator_Additional::GetCalculatorName() {
    return Msg(Waste::Messages::Name);
}

std::string CFlowCalculator_Additional::GetCalculatorGroupName() {
    return Msg(Waste::Messages::Name);
}

std::string CFlowCalculator_Additional::GetParametersDataId() {
    return Keys::AdditionalParameters;
}

std::vector<std::string> CFlowCalculator_Additional::GetReadKeys() const {
    return {Keys::CatchmentKinds, Keys::CatchmentArea, Keys::CatchmentDensity,
            Keys::WasteHome,      Keys::WasteIndustry, Keys::Length};
}

std::vector<std::string> CFlowCalculator_Additional::GetWrittenKeys(bool /*inAnyEdition*/) const {
    return {Keys::Foreign, Keys::Point, Keys::Additional, Keys::User, Keys::AdditionalParameters};
}

std::vector<std::string> CFlowCalculator_Additional::GetNeededResults(const CPropertiesEx& form) const {
    const Waste::AdditionalInput in(form);
    if (in.hasInfiltration == 0 || in.infiltrationMethod != Waste::ByWasteFlows)
        return {};
    return {Keys::WasteHome, Keys::WasteIndustry};
}

std::vector<OLMGis::Sewage::CLack> CFlowCalculator_Additional::FindLacks(const CSectionList& sections,
                                                                         CFlowCalculatorParameters& params) const {
    const Waste::AdditionalInput in(*params.m_properties);
    std::vector<OLMGis::Sewage::CLack> lacks;
    Flow::InputLacks::AddNothingSwitchedOn(*params.m_properties,
                                           {"FC_ADD_FW", "FC_ADD_POINT", "FC_ADD_ADDITIONAL", "FC_ADD_USER"}, lacks);
    if ((in.hasInfiltration != 0 && in.infiltrationMethod == Waste::ByInhabitants) || in.hasAdditional != 0)
        Flow::InputLacks::AddDensities(sections, lacks);
    return lacks;
}

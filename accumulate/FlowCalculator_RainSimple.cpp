// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/FlowCalculator_RainSimple.h"

#include "flow/CalculatorForm.h"
#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/sewage_core/CatchmentAreaManager.h"

#include <boost/make_shared.hpp>

#include <cmath>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Sewage::CCatchmentAreaManager;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::CModuleConfiguration;

namespace {

constexpr int CoefficientsMessage = 2625;
constexpr int TimeCoefficientMessage = 2627;

/// Makes a required property; shown is the value of the shown boxes, hidden that of the hidden ones.
boost::shared_ptr<CPropertyEx> AddRequired(CCategory& category, const char* tag, enmPropertyEditorType editor,
                                           int message, const CDataBox& shown, const CDataBox& hidden) {
    auto property = boost::make_shared<CPropertyEx>();
    property->SetTag(tag);
    property->SetEditorType(editor);
    property->SetMsgName(message);
    property->SetMsgDescription(message);
    property->SetValue(shown);
    property->SetHiddenValue(hidden);
    property->SetDefaultValue(shown);
    property->SetDefaultHiddenValue(hidden);
    property->SetIsRequired(1);
    property->SetReadOnly(0);
    property->SetOrd(category.GetMaxPropertyOrd() + 1);
    category.AddPropertyEx(property);
    return property;
}

/// How the intensity is reduced on a section, by the values stored there.
class CReduction {
public:
    explicit CReduction(bool isByTime)
        : m_isByTime(isByTime),
          m_first(FindDefinition(isByTime ? FlowKeys::RainFrequency : FlowKeys::RetardationCoefficient)),
          m_second(FindDefinition(isByTime ? FlowKeys::RainDuration : FlowKeys::ReductionCoefficient)) {}

    /// Flow (m³/s) of a corrected area (ha) under an intensity (l/(s·ha)). Not limited to any range: a frequency above
    /// 0.3684^-4 per year gives a negative flow, one of 0 an infinite one, one below 0 not-a-number.
    double Flow(const CSection& section, double area, double intensity) const {
        const double a = OneIfAbsent(ReadFlowValue(section, m_first));
        const double b = OneIfAbsent(ReadFlowValue(section, m_second));
        if (!m_isByTime)
            return b * a * area * intensity / 1000.0;
        return (intensity / 1000.0) * TimeCoefficient(a, b) * area;
    }

private:
    static double OneIfAbsent(double value) { return value == AbsentValue ? 1.0 : value; }

    /// Ratio (-) of the rain of frequency n (1/year) and duration (min) to the rain of 15 minutes once a year.
    /// Source: Reinhold 1940. The constant is fixed at its four decimals, do not refine: with the 0.369 that is often
    /// printed the rain of 15 minutes once a year comes out a thousandth short of 1.
    static double TimeCoefficient(double n, double duration) {
        return (1.0 / std::pow(n, 0.25) - 0.3684) * (38.0 / (duration + 9.0));
    }

    bool m_isByTime;
    const CDataDefinition* m_first;
    const CDataDefinition* m_second;
};

} // namespace

CFlowCalculator_RainSimple::CFlowCalculator_RainSimple() {
    m_key = "00_RAIN_SIMPLE";
    m_outputDefinitions = FlowOutputs::Definitions({FlowKeys::Rain, FlowKeys::Intensity});
    m_outputDefinitionsWithKind = FlowOutputs::DefinitionsWithKind({FlowKeys::Rain, FlowKeys::Intensity});
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_RainSimple::CreateParameters() {
    m_parameters = CalculatorForm::MakeParameters();
    const auto category = CalculatorForm::AddCategory(*m_parameters, 0, 3459);
    const std::string& coefficients = CModuleConfiguration::Instance()->GetMsg(CoefficientsMessage);
    const auto type = AddRequired(*category, "CALC_TYPE", enmPropertyEditorType::ComboBox, 3565, coefficients, 0);
    type->SetConstraints(CalculatorForm::MakeConstraints({{CoefficientsMessage, 0}, {TimeCoefficientMessage, 1}}));
    AddRequired(*category, "VALUE_INTENSITY", enmPropertyEditorType::Edit, 2128, 120.0, 120.0);
    return m_parameters;
}

int CFlowCalculator_RainSimple::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params,
                                          int /*write*/, CReport* /*report*/, IUserInteraction* /*interaction*/) {
    if (params == nullptr || !params->m_properties)
        return 0;
    const CDataDefinition* const intensityKey = FindDefinition(FlowKeys::Intensity);
    const CDataDefinition* const flowKey = FindDefinition(FlowKeys::Rain);
    const CDataDefinition* const parametersKey = FindDefinition(FlowKeys::RainParameters);
    const CDataBox serialized(params->Serialize());
    // Without its field an intensity counts as no rain, not as the 120 that the field starts with.
    const double intensity = params->m_properties->GetDblProperty("VALUE_INTENSITY", 0.0, 1);
    const CReduction reduction(params->m_properties->GetIntProperty("CALC_TYPE", 0, 1) != 0);

    for (const auto& section : sections) {
        if (!section)
            continue;
        double area = 0.0;
        CCatchmentAreaManager::Instance()->GetCATotalCorectedArea(section, area);
        const double flow = area > 0.0 ? reduction.Flow(*section, area, intensity) : 0.0;
        CDataRW::Write(intensityKey, section, CDataBox(intensity), nullptr);
        CDataRW::Write(flowKey, section, CDataBox(flow), nullptr);
        CDataRW::Write(parametersKey, section, serialized, nullptr);
    }
    return 0;
}

std::string CFlowCalculator_RainSimple::GetCalculatorName() {
    return CModuleConfiguration::Instance()->GetMsg(11163);
}

std::string CFlowCalculator_RainSimple::GetCalculatorGroupName() {
    return CModuleConfiguration::Instance()->GetMsg(11166);
}

std::string CFlowCalculator_RainSimple::GetParametersDataId() {
    return FlowKeys::RainParameters;
}

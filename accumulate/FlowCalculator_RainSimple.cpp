// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "accumulate/FlowCalculator_RainSimple.h"

#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "flow/FormFields.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/sewage_core/CatchmentAreaManager.h"

#include <cmath>

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
using OLMGis::Topology::CSection;
using OLMGis::Utility::Msg;

namespace {

namespace Messages {

constexpr int Name = 11163;
constexpr int GroupName = 11166;
constexpr int Category = 3459;
constexpr int Method = 3565;
constexpr int Coefficients = 2625;
constexpr int TimeCoefficient = 2627;
constexpr int Intensity = 2128;

} // namespace Messages

/// How the intensity is reduced on a section, by the values stored there.
class CReduction {
public:
    explicit CReduction(bool isByTime)
        : m_isByTime(isByTime),
          m_first(FindDefinition(isByTime ? Flow::Keys::RainFrequency : Flow::Keys::RetardationCoefficient)),
          m_second(FindDefinition(isByTime ? Flow::Keys::RainDuration : Flow::Keys::ReductionCoefficient)) {}

    /// Flow (m³/s) of a corrected area (ha) under an intensity (l/(s·ha)). Not limited to any range: a frequency above
    /// 0.3684^-4 per year gives a negative flow, one of 0 an infinite one, one below 0 not-a-number.
    double Flow(const CSection& section, double area, double intensity) const {
        const double a = OneIfAbsent(Flow::ReadFlowValue(section, m_first));
        const double b = OneIfAbsent(Flow::ReadFlowValue(section, m_second));
        if (!m_isByTime)
            return b * a * area * intensity / LitresPerCubicMetre;
        return (intensity / LitresPerCubicMetre) * TimeCoefficient(a, b) * area;
    }

private:
    static double OneIfAbsent(double value) { return value == Flow::AbsentValue ? 1.0 : value; }

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
    m_outputDefinitions = Flow::Outputs::Definitions({Flow::Keys::Rain, Flow::Keys::Intensity});
    m_outputDefinitionsWithKind = Flow::Outputs::DefinitionsWithKind({Flow::Keys::Rain, Flow::Keys::Intensity});
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_RainSimple::CreateParameters() {
    m_parameters = Flow::MakeParameters();
    const auto category = Flow::AddCategory(*m_parameters->m_properties, 0, Messages::Category);
    Flow::AddChoice(category, "CALC_TYPE", Messages::Method,
                    {{Messages::Coefficients, 0}, {Messages::TimeCoefficient, 1}})
        ->SetIsRequired(1);
    Flow::AddNumber(category, "VALUE_INTENSITY", Messages::Intensity, 120.0)->SetIsRequired(1);
    return m_parameters;
}

int CFlowCalculator_RainSimple::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params,
                                          int /*write*/, CReport* /*report*/, IUserInteraction* /*interaction*/) {
    if (params == nullptr || !params->m_properties)
        return 0;
    const CDataDefinition* const intensityKey = FindDefinition(Flow::Keys::Intensity);
    const CDataDefinition* const flowKey = FindDefinition(Flow::Keys::Rain);
    const CDataDefinition* const parametersKey = FindDefinition(Flow::Keys::RainParameters);
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
    return Msg(Messages::Name);
}

std::string CFlowCalculator_RainSimple::GetCalculatorGroupName() {
    return Msg(Messages::GroupName);
}

std::string CFlowCalculator_RainSimple::GetParametersDataId() {
    return Flow::Keys::RainParameters;
}

std::vector<std::string> CFlowCalculator_RainSimple::GetReadKeys() const {
    using namespace Flow::Keys;
    return {RetardationCoefficient, ReductionCoefficient, RainFrequency,       RainDuration,
            CatchmentKinds,         CatchmentArea,        CatchmentCoefficient};
}

std::vector<std::string> CFlowCalculator_RainSimple::GetWrittenKeys(bool /*inAnyEdition*/) const {
    return {Flow::Keys::Intensity, Flow::Keys::Rain, Flow::Keys::RainParameters};
}

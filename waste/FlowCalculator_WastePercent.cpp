// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/FlowCalculator_WastePercent.h"

#include "flow/CalculatorForm.h"
#include "flow/Edition.h"
#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"

#include <fmt/format.h>

#include <cmath>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::CModuleConfiguration;

namespace {

/// What was typed. The corrections fall back to 1.0 although their fields start elsewhere: in an edition without the
/// fields they must have no effect.
struct Input {
    explicit Input(const CPropertiesEx& form)
        : yearlyGrowth(form.GetDblProperty("PRIRAST", 2.0, 1)),
          inhabitants(form.GetDblProperty("BROJ_STANOVNIKA", 5000.0, 1)),
          period(form.GetDblProperty("PERIOD", 30.0, 1)), hourlyVariation(form.GetDblProperty("COEFF_VAR_H", 1.5, 1)),
          dailyVariation(form.GetDblProperty("COEFF_VAR_D", 1.5, 1)),
          consumption(form.GetDblProperty("POTROSNJA", 150.0, 1)), correctionS(form.GetDblProperty("RO_CS", 1.0, 1)),
          correctionP(form.GetDblProperty("RO_CP", 1.0, 1)), correctionR(form.GetDblProperty("RO_CR", 1.0, 1)) {}

    double yearlyGrowth;    ///< %
    double inhabitants;     ///< now
    double period;          ///< years
    double hourlyVariation; ///< -, greatest hour to mean hour of the greatest day
    double dailyVariation;  ///< -, greatest day to mean day
    double consumption;     ///< l per inhabitant and day
    double correctionS;     ///< -, Romanian edition only, on the mean day
    double correctionP;     ///< -, Romanian edition only, on the mean day
    double correctionR;     ///< -, Romanian edition only, on the greatest hour
};

/// From population to the flow of the greatest hour.
struct Forecast {
    Forecast(const Input& in, bool isRomanian)
        : population(in.inhabitants * std::pow(1.0 + in.yearlyGrowth / 100.0, in.period)),
          dayAverage(population * in.consumption) {
        if (isRomanian)
            dayAverage = dayAverage * in.correctionS * in.correctionP;
        dayMaximum = dayAverage * in.dailyVariation;
        hourMaximum = dayMaximum * in.hourlyVariation / 24.0;
        if (isRomanian)
            hourMaximum = hourMaximum * in.correctionR;
        hourAverage = dayAverage / 24.0;
    }

    double population;        ///< inhabitants at the end of the period
    double dayAverage;        ///< l/day
    double dayMaximum = 0.0;  ///< l/day
    double hourMaximum = 0.0; ///< l/h
    double hourAverage = 0.0; ///< l/h, for the report only
};

/// Lengths of the given sections (m): plain, and weighted by the density coefficient.
struct Lengths {
    double sum = 0.0;
    double weighted = 0.0;
};

double DensityCoefficient(const CSection& section, const CDataDefinition* key) {
    return ReadValueOr(section, key, 1.0);
}

Lengths SumLengths(const CSectionList& sections, const CDataDefinition* coefficientKey) {
    Lengths lengths;
    for (const auto& section : sections) {
        if (!section)
            continue;
        const double length = section->GetLength2D();
        lengths.sum += length;
        lengths.weighted += length * DensityCoefficient(*section, coefficientKey);
    }
    return lengths;
}

void AppendReport(CReport& report, const Input& in, const Forecast& forecast, const Lengths& lengths,
                  double specificFlow) {
    const auto row = [&report](int message, double value) {
        report.emplace_back(CModuleConfiguration::Instance()->GetMsg(message), fmt::format("{:.4f}", value));
    };
    row(2066, in.consumption);
    row(2067, in.inhabitants);
    row(2064, in.yearlyGrowth);
    row(2065, in.period);
    row(2068, in.dailyVariation);
    row(2069, in.hourlyVariation);
    report.emplace_back("======================", "");
    row(2051, forecast.population);
    row(2052, forecast.dayAverage);
    row(2053, forecast.hourAverage);
    row(2054, forecast.dayMaximum);
    row(2055, forecast.hourMaximum);
    row(6930, 1.0); // fixed: every report shows it
    row(2056, lengths.sum);
    row(2057, lengths.weighted);
    row(2058, specificFlow); // l/s per m, before the conversion to m³/s
}

} // namespace

CFlowCalculator_WastePercent::CFlowCalculator_WastePercent() {
    m_key = "01_WASTE_PERCENT";
    m_outputDefinitions = FlowOutputs::Definitions({FlowKeys::SpecificFlow, FlowKeys::WastePercent});
    m_outputDefinitionsWithKind = FlowOutputs::DefinitionsWithKind({FlowKeys::SpecificFlow, FlowKeys::WastePercent});
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_WastePercent::CreateParameters() {
    m_parameters = CalculatorForm::MakeParameters();
    const auto category = CalculatorForm::AddCategory(*m_parameters, 0, 464);
    category->SetMsgDescription(464);
    const auto add = [&category](const char* tag, int message, const CDataBox& value) {
        CalculatorForm::AddProperty(category, tag, enmPropertyEditorType::Edit, message, value);
    };
    add("POTROSNJA", 2066, 150);
    add("BROJ_STANOVNIKA", 2067, 5000);
    add("PRIRAST", 2064, 2.0);
    add("PERIOD", 2065, 30.0);
    add("COEFF_VAR_D", 2068, 1.5);
    add("COEFF_VAR_H", 2069, 1.5);
    if (Edition::Is(Edition::Romanian)) {
        add("RO_CS", 4685, 1.1);
        add("RO_CP", 4686, 1.1);
        add("RO_CR", 4687, 0.8);
    }
    return m_parameters;
}

int CFlowCalculator_WastePercent::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params, int write,
                                            CReport* report, IUserInteraction* /*interaction*/) {
    if (params == nullptr || !params->m_properties)
        return 0;
    const CDataDefinition* const coefficientKey = FindDefinition(FlowKeys::DensityCoefficient);
    const CDataDefinition* const parametersKey = FindDefinition(FlowKeys::WastePercentParameters);
    const CDataDefinition* const specificFlowKey = FindDefinition(FlowKeys::SpecificFlow);
    const CDataDefinition* const flowKey = FindDefinition(FlowKeys::WastePercent);

    const CDataBox serialized(params->Serialize());
    const Input in(*params->m_properties);
    const Lengths lengths = SumLengths(sections, coefficientKey);
    const Forecast forecast(in, Edition::Is(Edition::Romanian));
    const double specificFlow = lengths.weighted == 0.0 ? 0.0 : forecast.hourMaximum / 3600.0 / lengths.weighted;

    int result = 0;
    for (const auto& section : sections) {
        if (!section)
            continue;
        // Also in a preview: the parameters entered last stay with the sections, though no flow does.
        CDataRW::Write(parametersKey, section, serialized, nullptr);
        const double coefficient = DensityCoefficient(*section, coefficientKey);
        const double flow = section->GetLength2D() * coefficient * specificFlow / 1000.0;
        if (write != 0) {
            CDataRW::Write(specificFlowKey, section, CDataBox(specificFlow / 1000.0), nullptr);
            CDataRW::Write(flowKey, section, CDataBox(flow), nullptr);
            result = 1;
        }
    }
    if (report != nullptr)
        AppendReport(*report, in, forecast, lengths, specificFlow);
    return result;
}

std::string CFlowCalculator_WastePercent::GetCalculatorName() {
    return CModuleConfiguration::Instance()->GetMsg(11165);
}

std::string CFlowCalculator_WastePercent::GetCalculatorGroupName() {
    return CModuleConfiguration::Instance()->GetMsg(2313);
}

std::string CFlowCalculator_WastePercent::GetParametersDataId() {
    return FlowKeys::WastePercentParameters;
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "waste/FlowCalculator_WastePercent.h"

#include "flow/Edition.h"
#include "flow/FlowKeys.h"
#include "flow/FlowOutputs.h"
#include "flow/FlowValue.h"
#include "flow/FormFields.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"

#include <fmt/format.h>

#include <cmath>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::Formulas::HoursPerDay;
using OLMGis::Formulas::LitresPerCubicMetre;
using OLMGis::Sewage::CFlowCalculatorParameters;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CSectionList;
using OLMGis::Sewage::IUserInteraction;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Utility::Msg;

namespace Edition = Flow::Edition;
namespace Keys = Flow::Keys;

namespace Waste {

namespace {

namespace Messages {

constexpr int Name = 11165;
constexpr int GroupName = 2313;
constexpr int Category = 464;

// Fields of the form; the first six are in the report too.
constexpr int Consumption = 2066;
constexpr int Inhabitants = 2067;
constexpr int YearlyGrowth = 2064;
constexpr int Period = 2065;
constexpr int DailyPeakFactor = 2068;
constexpr int HourlyPeakFactor = 2069;
constexpr int CorrectionS = 4685;
constexpr int CorrectionP = 4686;
constexpr int CorrectionR = 4687;

// Results in the report.
constexpr int Population = 2051;
constexpr int DayAverage = 2052;
constexpr int HourAverage = 2053;
constexpr int DayMaximum = 2054;
constexpr int HourMaximum = 2055;
constexpr int Unity = 6930;
constexpr int Length = 2056;
constexpr int WeightedLength = 2057;
constexpr int SpecificFlow = 2058;

} // namespace Messages

/// The values of the form. A correction without its field is 1.0, so that it has no effect in the other editions.
struct PercentInput {
    explicit PercentInput(const CPropertiesEx& form)
        : yearlyGrowth(form.GetDblProperty("PRIRAST", 2.0, 1)),
          inhabitants(form.GetDblProperty("BROJ_STANOVNIKA", 5000.0, 1)),
          period(form.GetDblProperty("PERIOD", 30.0, 1)), hourlyPeakFactor(form.GetDblProperty("COEFF_VAR_H", 1.5, 1)),
          dailyPeakFactor(form.GetDblProperty("COEFF_VAR_D", 1.5, 1)),
          consumption(form.GetDblProperty("POTROSNJA", 150.0, 1)), correctionS(form.GetDblProperty("RO_CS", 1.0, 1)),
          correctionP(form.GetDblProperty("RO_CP", 1.0, 1)), correctionR(form.GetDblProperty("RO_CR", 1.0, 1)) {}

    double yearlyGrowth;     ///< %
    double inhabitants;      ///< today
    double period;           ///< design horizon, years
    double hourlyPeakFactor; ///< -, peak hour to mean hour of the peak day
    double dailyPeakFactor;  ///< -, peak day to mean day
    double consumption;      ///< l/(inh·d)
    double correctionS;      ///< -, Romanian edition only, on the mean day
    double correctionP;      ///< -, Romanian edition only, on the mean day
    double correctionR;      ///< -, Romanian edition only, on the peak hour
};

/// From the population to the flow of the peak hour.
struct Forecast {
    Forecast(const PercentInput& in, bool isRomanian)
        : population(in.inhabitants * std::pow(1.0 + in.yearlyGrowth / OLMGis::Formulas::Percent, in.period)),
          dayAverage(population * in.consumption) {
        if (isRomanian)
            dayAverage = dayAverage * in.correctionS * in.correctionP;
        dayMaximum = dayAverage * in.dailyPeakFactor;
        hourMaximum = dayMaximum * in.hourlyPeakFactor / HoursPerDay;
        if (isRomanian)
            hourMaximum = hourMaximum * in.correctionR;
        hourAverage = dayAverage / HoursPerDay;
    }

    double population;        ///< inhabitants at the design horizon
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
    return Flow::ReadValueOr(section, key, 1.0);
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

void AppendReport(CReport& report, const PercentInput& in, const Forecast& forecast, const Lengths& lengths,
                  double specificFlow) {
    const auto row = [&report](int message, double value) {
        report.emplace_back(Msg(message), fmt::format("{:.4f}", value));
    };
    row(Messages::Consumption, in.consumption);
    row(Messages::Inhabitants, in.inhabitants);
    row(Messages::YearlyGrowth, in.yearlyGrowth);
    row(Messages::Period, in.period);
    row(Messages::DailyPeakFactor, in.dailyPeakFactor);
    row(Messages::HourlyPeakFactor, in.hourlyPeakFactor);
    report.emplace_back("======================", "");
    row(Messages::Population, forecast.population);
    row(Messages::DayAverage, forecast.dayAverage);
    row(Messages::HourAverage, forecast.hourAverage);
    row(Messages::DayMaximum, forecast.dayMaximum);
    row(Messages::HourMaximum, forecast.hourMaximum);
    row(Messages::Unity, 1.0); // fixed: others rely on it
    row(Messages::Length, lengths.sum);
    row(Messages::WeightedLength, lengths.weighted);
    row(Messages::SpecificFlow, specificFlow); // in l/s per m
}

} // namespace

} // namespace Waste

CFlowCalculator_WastePercent::CFlowCalculator_WastePercent() {
    m_key = "01_WASTE_PERCENT";
    m_outputDefinitions = Flow::Outputs::Definitions({Keys::SpecificFlow, Keys::WastePercent});
    m_outputDefinitionsWithKind = Flow::Outputs::DefinitionsWithKind({Keys::SpecificFlow, Keys::WastePercent});
}

boost::shared_ptr<CFlowCalculatorParameters> CFlowCalculator_WastePercent::CreateParameters() {
    using namespace Waste;
    m_parameters = Flow::MakeParameters();
    const auto category = Flow::AddCategory(*m_parameters->m_properties, 0, Messages::Category);
    category->SetMsgDescription(Messages::Category);
    Flow::AddNumber(category, "POTROSNJA", Messages::Consumption, 150);
    Flow::AddNumber(category, "BROJ_STANOVNIKA", Messages::Inhabitants, 5000);
    Flow::AddNumber(category, "PRIRAST", Messages::YearlyGrowth, 2.0);
    Flow::AddNumber(category, "PERIOD", Messages::Period, 30.0);
    Flow::AddNumber(category, "COEFF_VAR_D", Messages::DailyPeakFactor, 1.5);
    Flow::AddNumber(category, "COEFF_VAR_H", Messages::HourlyPeakFactor, 1.5);
    if (Flow::Edition::Is(Flow::Edition::Romanian)) {
        Flow::AddNumber(category, "RO_CS", Messages::CorrectionS, 1.1);
        Flow::AddNumber(category, "RO_CP", Messages::CorrectionP, 1.1);
        Flow::AddNumber(category, "RO_CR", Messages::CorrectionR, 0.8);
    }
    return m_parameters;
}

int CFlowCalculator_WastePercent::Calculate(const CSectionList& sections, CFlowCalculatorParameters* params, int write,
                                            CReport* report, IUserInteraction* /*interaction*/) {
    using namespace Waste;
    if (params == nullptr || !params->m_properties)
        return 0;
    const CDataDefinition* const coefficientKey = FindDefinition(Keys::DensityCoefficient);
    const CDataDefinition* const parametersKey = FindDefinition(Keys::WastePercentParameters);
    const CDataDefinition* const specificFlowKey = FindDefinition(Keys::SpecificFlow);
    const CDataDefinition* const flowKey = FindDefinition(Keys::WastePercent);

    const CDataBox serialized(params->Serialize());
    const PercentInput in(*params->m_properties);
    const Lengths lengths = SumLengths(sections, coefficientKey);
    const Forecast forecast(in, Flow::Edition::Is(Flow::Edition::Romanian));
    const double specificFlow =
        lengths.weighted == 0.0 ? 0.0 : forecast.hourMaximum / OLMGis::Formulas::SecondsPerHour / lengths.weighted;

    int result = 0;
    for (const auto& section : sections) {
        if (!section)
            continue;
        // Also in a preview, which stores no flow; fixed: others rely on it.
        CDataRW::Write(parametersKey, section, serialized, nullptr);
        const double coefficient = DensityCoefficient(*section, coefficientKey);
        const double flow = section->GetLength2D() * coefficient * specificFlow / LitresPerCubicMetre;
        if (write != 0) {
            CDataRW::Write(specificFlowKey, section, CDataBox(specificFlow / LitresPerCubicMetre), nullptr);
            CDataRW::Write(flowKey, section, CDataBox(flow), nullptr);
            result = 1;
        }
    }
    if (report != nullptr)
        AppendReport(*report, in, forecast, lengths, specificFlow);
    return result;
}

std::string CFlowCalculator_WastePercent::GetCalculatorName() {
    return Msg(Waste::Messages::Name);
}

std::string CFlowCalculator_WastePercent::GetCalculatorGroupName() {
    return Msg(Waste::Messages::GroupName);
}

std::string CFlowCalculator_WastePercent::GetParametersDataId() {
    return Keys::WastePercentParameters;
}

std::vector<std::string> CFlowCalculator_WastePercent::GetReadKeys() const {
    return {Keys::DensityCoefficient, Keys::Length};
}

std::vector<std::string> CFlowCalculator_WastePercent::GetWrittenKeys(bool /*inAnyEdition*/) const {
    return {Keys::SpecificFlow, Keys::WastePercent, Keys::WastePercentParameters};
}

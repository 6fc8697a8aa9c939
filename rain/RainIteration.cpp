// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// The iteration of the rain calculation: a consistent set of time, intensity, flow, pipe and velocity for one section.
//
// Start value: the inlet time alone, whatever lies upstream. Stopping test: the intensity with which a pass began and
// the one for the times that it found differ by at most a given part of the former. Pass limit: given. Non-convergence:
// no record, and the run ends.
#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/PipeManager.h"
#include "rain/FlowCalculator_RainITP.h"
#include "rain/RainTrace.h"

#include <boost/make_shared.hpp>

#include <cmath>

using OLMGis::Topology::CPipeManager;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CUtility;

namespace {

constexpr int NoPipeLargeEnough = 9454;
constexpr int ExistingPipeOverfull = 11085;

constexpr double PerThousand = 1000.0;
constexpr double MillimetresPerMetre = 1000.0;
constexpr double LitresPerCubicMetre = 1000.0;
constexpr double SecondsPerMinute = 60.0;

const std::string& Msg(int number) {
    return CModuleConfiguration::Instance()->GetMsg(number);
}

/// Time coefficient of Reinhold 1940 for a frequency n (1/year) and a time (min), applied to a base intensity.
/// 0.369 is fixed here, do not refine: the simple rain calculation has its own constant.
double FormulaIntensity(double frequency, double time, double baseIntensity) {
    return (1.0 / std::pow(frequency, 0.25) - 0.369) * ((38.0 / (time + 9.0)) * baseIntensity);
}

} // namespace

CFlowCalculator_RainITP::CRecordPtr CFlowCalculator_RainITP::MakeRecord(const CSectionPtr& section) {
    return boost::make_shared<CSectionDataIDF>(section, m_params, m_inputs.Of(section), [&] {
        return m_areaSums.Sum(section, m_params.m_selectedSections, m_inputs);
    });
}

CFlowCalculator_RainITP::CRecordPtr CFlowCalculator_RainITP::ComputeSection(const CSectionPtr& section,
                                                                            const CRecordPtr& previous,
                                                                            double tolerance, int maxPasses) {
    CRecordPtr record = MakeRecord(section);
    if (!record->m_error.empty()) {
        acedAlert(record->m_error);
        return nullptr;
    }
    if (const auto* start = m_nodeData.Find(section->GetStartingNodeRow()))
        record->m_startNode = *start;
    CRecordList* const list = m_sectionData.Find(section->GetRow());
    if (list == nullptr || IterateSection(*record, previous, tolerance, maxPasses) == 0)
        return nullptr;
    if (m_params.m_partialArea != 0)
        record->KeepChainArea();
    list->push_back(record);
    return record;
}

int CFlowCalculator_RainITP::IterateSection(CSectionDataIDF& record, const CRecordPtr& previous, double tolerance,
                                            int maxPasses) {
    for (int pass = 1; pass <= maxPasses; ++pass) {
        if (CalculatePass(record, previous) == 0)
            return 0;
        // The intensity for the new times is only looked at: the record keeps the one that its flow was made of. A
        // negative one, which tells that there is no curve, never passes the test.
        const double next = GetIntensity(&record);
        if (m_passTrace != nullptr)
            m_passTrace->NoteEnd(record, pass, next);
        if (std::abs(record.m_intensity - next) <= record.m_intensity * tolerance / 100.0)
            return 1;
    }
    RainTrace::NoteNotConverged(record, GetIntensity(&record));
    return 0;
}

int CFlowCalculator_RainITP::CalculatePass(CSectionDataIDF& record, const CRecordPtr& previous) {
    if (record.m_previous != previous)
        record.m_previous = previous;
    if (m_params.m_rainfallMode == RainChoices::TurkishParameters && previous)
        record.m_inletTime = previous->m_inletTime + previous->m_flowTime;
    if (m_passTrace != nullptr)
        m_passTrace->NoteBegin(record);
    record.m_intensity = GetIntensity(&record);
    record.m_flow = record.GetEffectiveArea() * record.m_intensity / LitresPerCubicMetre;
    if (record.m_flow < 0.0)
        record.m_flow = 0.0;
    if (m_params.m_calcStandard == RainChoices::StandardRomanian)
        record.m_flow *= m_params.m_roCoefficients.GetCoefficient(record.m_inletTime);
    if (record.m_flow == 0.0) {
        record.m_velocity = 0.0;
        record.m_innerDiameter = 0.0;
        record.m_flowTime = 0.0;
        record.m_sizing = {};
    } else if (SizeSection(record) == 0) {
        return 0;
    }
    const double base = previous ? previous->m_upstreamTime : 0.0;
    if (m_params.m_stormCad == RainChoices::TimeToLowerEnd)
        record.m_upstreamTime = base + record.GetTimeContribution();
    else if (m_params.m_stormCad == RainChoices::TimeToUpperEnd)
        record.m_upstreamTime = previous ? base + previous->GetTimeContribution() : base;
    record.m_carrierTime = 0.0;
    if (record.IsCarrier() != 0)
        record.m_carrierTime = previous ? record.m_flowTime + previous->m_carrierTime : record.m_flowTime;
    return 1;
}

double CFlowCalculator_RainITP::GetIntensity(const CSectionDataIDF* record) const {
    if (record == nullptr)
        return 0.0;
    const double time = record->GetConcentrationTime();
    switch (m_params.m_rainfallMode) {
    case RainChoices::CurveFile:
        return m_params.m_curves.GetCurveIntensity(m_params.m_frequency, time);
    case RainChoices::Formula:
        return FormulaIntensity(m_params.m_frequencyN, time, m_params.m_rainIntensity);
    case RainChoices::TurkishParameters:
        return m_params.m_turkParams.getIntesity(record->GetEffectiveArea(), time);
    default:
        return 0.0;
    }
}

int CFlowCalculator_RainITP::SizeSection(CSectionDataIDF& record) {
    auto& sizing = record.m_sizing;
    sizing.m_roughness = record.GetRoughness();
    m_hydraulics->SetDPad(record.m_slope / PerThousand);
    m_hydraulics->SetDProtok(record.m_flow);
    m_hydraulics->SetDHrapavost(sizing.m_roughness / MillimetresPerMetre);
    m_hydraulics->SetDViskozitet(m_params.m_waterViscosity);
    m_hydraulics->CalculateMinimumDiameterMinHidRad();
    double diameter = m_hydraulics->GetDMinPromjerHidRad() * MillimetresPerMetre;
    sizing.m_fullDiameter = diameter;
    if (!(diameter > m_params.m_minimalDiameter))
        diameter = m_params.m_minimalDiameter;
    diameter = CPipeManager::Instance()->CalculateMinDiameter(record.GetPipeTypeId(), diameter);
    if (!FitPipe(record, diameter))
        return 0;
    record.m_velocity = m_hydraulics->GetDBrzinaDjelomicnoIsp();
    record.m_flowTime = record.m_length / record.m_velocity / SecondsPerMinute;
    if (m_params.m_calcStandard == RainChoices::StandardBulgarian)
        record.m_flowTime = record.m_retention * record.m_flowTime;
    return 1;
}

/// Finds a pipe that carries the record's flow within the allowed filling, from a diameter (mm) on; false with an alert
/// when there is none.
bool CFlowCalculator_RainITP::FitPipe(CSectionDataIDF& record, double diameter) {
    auto* const pipes = CPipeManager::Instance();
    const auto fill = [&] {
        m_hydraulics->SetPipe(record.m_pipe.get());
        record.m_innerDiameter = pipes->GetInnerDiameter(record.m_pipe);
        m_hydraulics->CalculateFillingHeight();
        m_hydraulics->CalculateVelocityForPartiallyFilled();
        m_hydraulics->CalculateHydraulicsValues();
        record.m_sizing.m_filling = m_hydraulics->GetDPostotakIspunjnosti();
        return !(record.m_sizing.m_filling > m_params.m_pipeFill);
    };
    if (m_params.m_useExistingPipe != 0 && record.m_existingPipe) {
        record.m_pipe = record.m_existingPipe;
        if (fill())
            return true;
        acedAlert(CUtility::Format("%s %s", record.m_name, Msg(ExistingPipeOverfull)));
        return false;
    }
    while (true) {
        record.m_pipe = pipes->GetPipeByInnerDiameter(record.m_pipeGroupName, diameter, 1);
        if (!record.m_pipe) {
            const std::string what = CUtility::Format(Msg(NoPipeLargeEnough), diameter / MillimetresPerMetre);
            acedAlert(CUtility::Format("%s %s %s", record.m_name, what, record.m_pipeGroupName));
            return false;
        }
        record.m_minDiameter = diameter;
        if (fill())
            return true;
        diameter = record.m_innerDiameter + 1.0;
    }
}

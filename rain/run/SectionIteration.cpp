// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "rain/run/SectionIteration.h"

#include "host/formulas/Units.h"
#include "host/network_core/PipeManager.h"

#include <cmath>

using OLMGis::Formulas::LitresPerCubicMetre;
using OLMGis::Formulas::MillimetresPerMetre;
using OLMGis::Formulas::Percent;
using OLMGis::Formulas::PerMille;
using OLMGis::Formulas::SecondsPerMinute;
using OLMGis::Topology::CPipeManager;

namespace Rain {

namespace {

CRunStop StopAt(const CSectionDataIDF& record, CRunStop::enmReason reason) {
    CRunStop stop;
    stop.m_reason = reason;
    stop.m_problem = record.m_problem;
    stop.m_section = record.m_section;
    stop.m_name = record.m_name;
    stop.m_pipeGroup = record.m_pipeGroupName;
    return stop;
}

} // namespace

CRunStop CSectionIteration::Iterate(CSectionDataIDF& record, const CSectionDataIDF* previous) {
    if (record.m_problem != enmInputProblem::None)
        return StopAt(record, CRunStop::enmReason::BadInput);
    double next = 0.0;
    for (int pass = 1; pass <= MostPasses; ++pass) {
        if (const CRunStop stop = CalculatePass(record, previous); stop.IsStopped())
            return stop;
        // The record keeps the intensity that its flow was made of.
        next = IntensityFor(record);
        if (m_watch != nullptr)
            m_watch->OnEnd(record, pass, next);
        if (std::abs(record.m_intensity - next) <= record.m_intensity * m_settings.m_precision / Percent)
            return {};
    }
    CRunStop stop = StopAt(record, CRunStop::enmReason::NotConverged);
    stop.m_intensity = record.m_intensity;
    stop.m_nextIntensity = next;
    return stop;
}

double CSectionIteration::IntensityFor(const CSectionDataIDF& record) const {
    return m_settings.GetIntensity(record.GetConcentrationTime(), record.GetEffectiveArea());
}

CRunStop CSectionIteration::CalculatePass(CSectionDataIDF& record, const CSectionDataIDF* previous) {
    record.m_previous = previous;
    if (previous != nullptr && m_settings.HasRunningInletTime())
        record.m_inletTime = previous->m_inletTime + previous->m_flowTime;
    if (m_watch != nullptr)
        m_watch->OnBegin(record);
    record.m_intensity = IntensityFor(record);
    record.m_flow = record.GetEffectiveArea() * record.m_intensity / LitresPerCubicMetre;
    if (record.m_flow < 0.0)
        record.m_flow = 0.0;
    record.m_flow *= m_settings.GetFlowFactor(record.m_inletTime);
    if (record.m_flow == 0.0) {
        record.m_velocity = 0.0;
        record.m_innerDiameter = 0.0;
        record.m_flowTime = 0.0;
        record.m_sizing = {};
    } else if (const CRunStop stop = SizeSection(record); stop.IsStopped()) {
        return stop;
    }
    const double base = previous == nullptr ? 0.0 : previous->m_upstreamTime;
    if (m_settings.m_stormCad == RainChoices::TimeToLowerEnd)
        record.m_upstreamTime = base + record.GetTimeContribution();
    else if (m_settings.m_stormCad == RainChoices::TimeToUpperEnd)
        record.m_upstreamTime = previous == nullptr ? base : base + previous->GetTimeContribution();
    record.m_carrierTime = 0.0;
    if (record.IsCarrier() != 0)
        record.m_carrierTime = previous == nullptr ? record.m_flowTime : record.m_flowTime + previous->m_carrierTime;
    return {};
}

/// Diameter, pipe, velocity and flow time for the record's flow (not 0).
CRunStop CSectionIteration::SizeSection(CSectionDataIDF& record) {
    auto& sizing = record.m_sizing;
    sizing.m_roughness = record.GetRoughness();
    m_hydraulics.SetDPad(record.m_slope / PerMille);
    m_hydraulics.SetDProtok(record.m_flow);
    m_hydraulics.SetDHrapavost(sizing.m_roughness / MillimetresPerMetre);
    m_hydraulics.SetDViskozitet(m_settings.m_waterViscosity);
    m_hydraulics.CalculateMinimumDiameterMinHidRad();
    double diameter = m_hydraulics.GetDMinPromjerHidRad() * MillimetresPerMetre;
    sizing.m_fullDiameter = diameter;
    if (!(diameter > m_settings.m_minimalDiameter))
        diameter = m_settings.m_minimalDiameter;
    diameter = CPipeManager::Instance()->CalculateMinDiameter(record.GetPipeTypeId(), diameter);
    if (const CRunStop stop = FitPipe(record, diameter); stop.IsStopped())
        return stop;
    record.m_velocity = m_hydraulics.GetDBrzinaDjelomicnoIsp();
    record.m_flowTime = record.m_retention * (record.m_length / record.m_velocity / SecondsPerMinute);
    return {};
}

/// Finds a pipe that carries the record's flow within the allowed filling, from a diameter (mm) on.
CRunStop CSectionIteration::FitPipe(CSectionDataIDF& record, double diameter) {
    if (m_settings.m_useExistingPipe != 0 && record.m_existingPipe) {
        record.m_pipe = record.m_existingPipe;
        return Fits(record) ? CRunStop() : StopAt(record, CRunStop::enmReason::ExistingPipeTooFull);
    }
    while (true) {
        record.m_pipe = CPipeManager::Instance()->GetPipeByInnerDiameter(record.m_pipeGroupName, diameter, 1);
        if (!record.m_pipe) {
            CRunStop stop = StopAt(record, CRunStop::enmReason::NoPipe);
            stop.m_diameter = diameter;
            return stop;
        }
        record.m_minDiameter = diameter;
        if (Fits(record))
            return {};
        diameter = record.m_innerDiameter + 1.0;
    }
}

bool CSectionIteration::Fits(CSectionDataIDF& record) {
    m_hydraulics.SetPipe(record.m_pipe.get());
    record.m_innerDiameter = CPipeManager::Instance()->GetInnerDiameter(record.m_pipe);
    m_hydraulics.CalculateFillingHeight();
    m_hydraulics.CalculateVelocityForPartiallyFilled();
    m_hydraulics.CalculateHydraulicsValues();
    record.m_sizing.m_filling = m_hydraulics.GetDPostotakIspunjnosti();
    return !(record.m_sizing.m_filling > m_settings.m_pipeFill);
}

} // namespace Rain

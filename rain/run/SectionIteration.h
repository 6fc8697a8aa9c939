// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/sewage_core/SewageHydraulics.h"
#include "rain/run/SectionDataIDF.h"

namespace Rain {

/// Sees each pass of an iteration, for explanations.
class IPassWatch {
public:
    virtual ~IPassWatch() = default;
    virtual void OnBegin(const CSectionDataIDF& record) = 0;

    /// next: intensity (l/(s·ha)) for the times that the pass found.
    virtual void OnEnd(const CSectionDataIDF& record, int pass, double next) = 0;
};

/// The iteration of one section: a consistent set of time, intensity, flow, pipe and velocity. The intensity depends
/// on the time, the time on the velocity, the velocity on the pipe, the pipe on the flow, the flow on the intensity.
///
/// Start value: the inlet time alone, whatever is upstream. Stopping test: the intensity with which a pass began and
/// the one for the times that it found differ by at most the precision (%) of the former; a negative one, which means
/// that there is no curve, never passes. Pass limit: MostPasses. Non-convergence stops the run.
///
/// Records come and go as plain values; pipes are looked up in the catalogue of the active project.
class CSectionIteration {
public:
    static constexpr int MostPasses = 20;

    /// settings and watch (may be null) are not owned.
    explicit CSectionIteration(const CRunSettings& settings, IPassWatch* watch = nullptr)
        : m_settings(settings), m_watch(watch) {}

    /// Calculates a record with its inputs and its total area on an upstream record (may be null, outlives it).
    CRunStop Iterate(CSectionDataIDF& record, const CSectionDataIDF* previous);

private:
    CRunStop CalculatePass(CSectionDataIDF& record, const CSectionDataIDF* previous);
    CRunStop SizeSection(CSectionDataIDF& record);
    CRunStop FitPipe(CSectionDataIDF& record, double diameter);
    bool Fits(CSectionDataIDF& record);
    double IntensityFor(const CSectionDataIDF& record) const;

    const CRunSettings& m_settings;
    IPassWatch* m_watch;
    OLMGis::Sewage::CSewageHydraulics m_hydraulics;
};

} // namespace Rain

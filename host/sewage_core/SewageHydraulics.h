// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/formulas/Filling.h"
#include "host/network_core/Catalog.h"

#include <string_view>

namespace OLMGis::Sewage {

/// Uniform flow in a pipe of the catalogue: Prandtl-Colebrook with the hydraulic radius, see host/formulas. Everything
/// is in m and s; the sizes of the catalogue are converted when the pipe is set. Inputs and results are kept until they
/// are set or calculated again. Before the first calculation every result is 0.
class CSewageHydraulics {
public:
    void SetDPad(double slope) { m_conditions.m_slope = slope; }                    ///< (-), a ratio
    void SetDProtok(double flow) { m_flow = flow; }                                 ///< m³/s
    void SetDHrapavost(double roughness) { m_conditions.m_roughness = roughness; }  ///< k (m)
    void SetDViskozitet(double viscosity) { m_conditions.m_viscosity = viscosity; } ///< m²/s

    /// The pipe by the GUID of its catalogue item in the active project; an unknown GUID is no pipe. One hash look-up.
    void SetStrPipeGuid(std::string_view guid);

    /// The same without a look-up. Null and an item that is not a pipe are no pipe. The item is read and not kept.
    void SetPipe(const Topology::CCatalogItem* pipe);

    /// The circular diameter whose full-pipe capacity equals the flow. Needs no pipe.
    void CalculateMinimumDiameterMinHidRad();

    /// m; to a relative error of 1e-12. 0 for a flow of 0 or below, infinite where no diameter carries the flow (slope
    /// of 0 or below), never NaN.
    double GetDMinPromjerHidRad() const { return m_leastDiameter; }

    /// The uniform flow in the pipe, in this order: the depth; the velocity at it; the other figures at it.
    void CalculateFillingHeight();
    void CalculateVelocityForPartiallyFilled();
    void CalculateHydraulicsValues();

    /// 100 h / H (%), h the smallest depth at which Q(h) equals the flow. A flow above the full-pipe capacity is
    /// overfull: 100 Q / Qfull, infinite without capacity (no pipe, no diameter, slope of 0 or below). 0 for a flow of
    /// 0 or below.
    double GetDPostotakIspunjnosti() const { return m_percent; }

    /// v at that depth (m/s); overfull: Q / A_full. 0 without a flow, without a pipe and for a slope of 0 or below.
    double GetDBrzinaDjelomicnoIsp() const { return m_velocity; }

    /// The other figures, after CalculateHydraulicsValues: full-pipe capacity (m³/s), depth (m) and hydraulic radius
    /// (m) at the depth. When overfull they are those of the full pipe.
    double GetFullBoreFlow() const { return m_values.m_fullFlow; }
    double GetDepth() const { return m_values.m_depth; }
    double GetHydraulicRadius() const { return m_values.m_wet.GetHydraulicRadius(); }
    bool IsOverfull() const { return m_values.m_isOverfull; }

private:
    Formulas::CFlowConditions m_conditions;
    double m_flow = 0.0;
    Formulas::CSectionShape m_shape;
    Formulas::CFilling m_filling; ///< of the last CalculateFillingHeight
    Formulas::CFilling m_values;  ///< of the last CalculateHydraulicsValues
    double m_leastDiameter = 0.0;
    double m_percent = 0.0;
    double m_velocity = 0.0;
};

} // namespace OLMGis::Sewage

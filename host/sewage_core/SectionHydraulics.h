// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/network_core/Section.h"
#include "host/sewage_core/SewageHydraulics.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

namespace OLMGis::Sewage {

/// The first value in this order that a section lacks for its hydraulics.
enum class enmHydraulicsGap {
    None,
    Flow,        ///< no flow is stored
    Pipe,        ///< no pipe reference
    UnknownPipe, ///< a pipe reference that is not in the catalogue
    Slope,       ///< SECTION_SLOPE is null
};

/// Uniform flow in the pipe of one section.
struct CSectionHydraulics {
    enmHydraulicsGap m_gap = enmHydraulicsGap::Flow;
    const Data::CDataDefinition* m_flowKey = nullptr; ///< attribute of the flow; null without one
    boost::shared_ptr<Topology::CCatalogItem> m_pipe; ///< null without one
    double m_flow = 0.0;                              ///< m³/s
    double m_slope = 0.0;                             ///< 1/1000
    double m_roughness = 0.0;                         ///< mm
    double m_filling = 0.0;                           ///< %, see CSewageHydraulics::GetDPostotakIspunjnosti
    double m_velocity = 0.0;                          ///< m/s
    double m_capacity = 0.0;                          ///< full-pipe capacity, m³/s
    double m_depth = 0.0;                             ///< m
    double m_shearStress = 0.0;                       ///< mean wall shear stress, N/m²; 0 for a slope of 0 or below
    bool m_isOverfull = false;
};

/// The keys of attributes of sections that the hydraulics read and store.
std::vector<std::string> GetHydraulicsReadKeys();
std::vector<std::string> GetHydraulicsWrittenKeys();

/// The hydraulics of sections as designed: the flow is a given attribute, or FLOW_TOTAL, without it FLOW_RAIN_IDF, the
/// design flow of a storm-water network without calculated totals; the slope is SECTION_SLOPE; the roughness is
/// PIPE_ROUGHNESS, without it that of the pipe.
class CSectionHydraulicsReader {
public:
    /// Viscosity in m²/s; flow: attribute of a section in m³/s, null for the flow of the design.
    explicit CSectionHydraulicsReader(double viscosity, const Data::CDataDefinition* flow = nullptr);

    /// Figures of a section; those that need the missing value are 0. Null has no flow.
    CSectionHydraulics Calculate(const boost::shared_ptr<Topology::CSection>& section);

    /// The same with a pipe of the catalogue in place of the section's own; null is no pipe.
    CSectionHydraulics Calculate(const boost::shared_ptr<Topology::CSection>& section,
                                 const boost::shared_ptr<Topology::CCatalogItem>& pipe);

    /// Stores filling, velocity and capacity as HYD_FILLING, HYD_VELOCITY and HYD_CAPACITY. On a section that lacks a
    /// value it sets results of an earlier calculation to null. Non-zero when numbers were stored.
    int Store(const boost::shared_ptr<Topology::CSection>& section, const CSectionHydraulics& figures) const;

private:
    CSectionHydraulics ReadFlow(const boost::shared_ptr<Topology::CSection>& section) const;
    void CalculateInPipe(const boost::shared_ptr<Topology::CSection>& section, CSectionHydraulics& figures);

    std::vector<const Data::CDataDefinition*> m_flows; ///< the first with a value counts
    const Data::CDataDefinition* m_slope;
    const Data::CDataDefinition* m_roughness;
    const Data::CDataDefinition* m_filling;
    const Data::CDataDefinition* m_velocity;
    const Data::CDataDefinition* m_capacity;
    CSewageHydraulics m_hydraulics;
};

} // namespace OLMGis::Sewage

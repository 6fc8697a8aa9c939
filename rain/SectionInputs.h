// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/FetchAhead.h"
#include "host/network_core/Catalog.h"
#include "host/network_core/Section.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <string_view>
#include <vector>

/// What a rain calculation reads of a section.
struct CSectionInput {
    std::string_view m_name;  ///< belongs to the network, which outlives the run
    double m_slope = 0.0;     ///< 1/1000
    double m_inletTime = 0.0; ///< min
    double m_roughness = 0.0; ///< stored on the section, mm
    double m_retention = 0.0; ///< multiplier of the flow time, -
    double m_ownArea = 0.0;   ///< corrected catchment area, ha; 0 without a rain catchment
    double m_length = 0.0;    ///< plan length, m
    boost::shared_ptr<OLMGis::Topology::CCatalogItem> m_existingPipe; ///< may be null
    bool m_hasSlope = false;
    bool m_hasInletTime = false;
    bool m_hasRoughness = false;
    bool m_hasRetention = false;
    bool m_isGathered = false;
};

/// The inputs of the sections of one network, each read once in a run, at its first use.
class CSectionInputs {
public:
    CSectionInputs();

    /// Forgets what was read: attributes and catchments may have changed since.
    void Reset() { std::vector<CSectionInput>().swap(m_byRow); }

    /// The inputs of a section. Valid until another section is asked for.
    const CSectionInput& Of(const boost::shared_ptr<OLMGis::Topology::CSection>& section);

    /// Reads the inputs of all sections (nulls are left out) in their order, which is that of the memory: a walk jumps
    /// about in it.
    void Gather(const std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>& sections);

    /// Has fetched what Of looks at for a section of this row.
    void Fetch(std::uint32_t row) const { OLMGis::Utility::FetchElementAhead(m_byRow, row); }

private:
    const OLMGis::Data::CDataDefinition* m_slope;
    const OLMGis::Data::CDataDefinition* m_inletTime;
    const OLMGis::Data::CDataDefinition* m_roughness;
    const OLMGis::Data::CDataDefinition* m_retention;
    std::vector<CSectionInput> m_byRow;
};

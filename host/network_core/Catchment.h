// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/Entity.h"
#include "host/network_core/Geometry.h"

#include <boost/shared_ptr.hpp>

namespace OLMGis::Topology {

class CSection;

/// What a catchment drains to its section; any combination, as a sum of bits.
enum enmCatchmentKind : int { CatchmentRain = 1, CatchmentHousehold = 2, CatchmentIndustrial = 4 };

/// An area that hangs on one section. Kinds, area, coefficient and density are attributes like any other ("kinds",
/// "area" in ha, "coefficient", "density" in inhabitants/ha).
class CCatchment final : public CEntity {
public:
    CCatchment(CEntityKey, CTopologyStorage& topology, Data::CAttributeStore& store, Data::CKeptText guid,
               Data::CKeptText name, CSection* section, CRings rings)
        : CEntity(topology, store, Data::enmEntityKind::Catchment, guid, name), m_section(section),
          m_rings(std::move(rings)) {}

    /// Null only when its section was deleted.
    boost::shared_ptr<CSection> GetSection() const;

    /// Empty when it was never drawn.
    const CRings& GetRings() const { return m_rings; }

private:
    friend class CTopologyStorage;
    CSection* m_section;
    CCatchment* m_next = nullptr; ///< next one of the same section, in the order of entering
    CRings m_rings;
};

} // namespace OLMGis::Topology

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/SewageHydraulics.h"

#include "host/formulas/Units.h"
#include "host/network_core/PipeManager.h"

namespace OLMGis::Sewage {

using Formulas::CSectionShape;
using Formulas::enmSectionShape;
using Formulas::MillimetresPerMetre;
using Topology::CPipeData;

namespace {

/// Copies the inside of a pipe into a shape; reuses the memory of its levels. A null pipe gives a shape without a size.
void CopyShape(CSectionShape& shape, const CPipeData* pipe) {
    shape.m_levels.clear();
    shape.m_kind = pipe == nullptr ? enmSectionShape::Circle : pipe->m_shape;
    shape.m_width = pipe == nullptr ? 0.0 : pipe->m_innerWidth / MillimetresPerMetre;
    shape.m_height = pipe == nullptr ? 0.0 : pipe->m_innerHeight / MillimetresPerMetre;
    if (pipe != nullptr && shape.m_kind == enmSectionShape::Table)
        for (const Topology::CShapePoint& point : pipe->m_table)
            shape.m_levels.push_back({point.m_height / MillimetresPerMetre, point.m_width / MillimetresPerMetre});
}

} // namespace

void CSewageHydraulics::SetStrPipeGuid(std::string_view guid) {
    SetPipe(Topology::CPipeManager::Instance()->GetPipe(guid).get());
}

void CSewageHydraulics::SetPipe(const Topology::CCatalogItem* pipe) {
    CopyShape(m_shape, pipe == nullptr ? nullptr : pipe->GetPipeData());
}

void CSewageHydraulics::CalculateMinimumDiameterMinHidRad() {
    m_leastDiameter = Formulas::LeastDiameter(m_flow, m_conditions);
}

void CSewageHydraulics::CalculateFillingHeight() {
    m_filling = Formulas::FillShape(m_shape, m_flow, m_conditions);
    m_percent = m_filling.m_percent;
}

void CSewageHydraulics::CalculateVelocityForPartiallyFilled() {
    m_velocity = m_filling.m_velocity;
}

void CSewageHydraulics::CalculateHydraulicsValues() {
    m_values = m_filling;
}

} // namespace OLMGis::Sewage

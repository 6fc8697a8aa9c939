// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ResultOrigins.h"

#include "host/gis_core/ProjectContext.h"

#include <algorithm>
#include <utility>

namespace OLMGis::Data {

namespace {

constexpr auto ByCalculator = [](const CResultOrigin& origin, std::string_view calculator) {
    return origin.m_calculator < calculator;
};

} // namespace

CResultOrigins* CResultOrigins::Instance() {
    static const System::CContextSlot<CResultOrigins> slot;
    return slot.Get();
}

const CResultOrigin* CResultOrigins::Find(std::string_view calculator) const {
    const auto found = std::lower_bound(m_origins.begin(), m_origins.end(), calculator, ByCalculator);
    return found == m_origins.end() || found->m_calculator != calculator ? nullptr : &*found;
}

void CResultOrigins::Put(CResultOrigin origin) {
    auto place = std::lower_bound(m_origins.begin(), m_origins.end(), origin.m_calculator, ByCalculator);
    if (place != m_origins.end() && place->m_calculator == origin.m_calculator)
        place = m_origins.erase(place);
    if (!origin.m_results.empty())
        m_origins.insert(place, std::move(origin));
}

void CResultOrigins::SetAll(std::vector<CResultOrigin> origins) {
    m_origins.clear();
    for (CResultOrigin& origin : origins)
        Put(std::move(origin));
}

} // namespace OLMGis::Data

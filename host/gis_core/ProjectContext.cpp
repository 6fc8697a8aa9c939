// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ProjectContext.h"

namespace OLMGis::System {

namespace {

CProjectContext*& ActivePointer() {
    static CProjectContext* active = nullptr;
    return active;
}

} // namespace

CProjectContext& CProjectContext::Active() {
    CProjectContext*& active = ActivePointer();
    if (active == nullptr) {
        static CProjectContext first;
        active = &first;
    }
    return *active;
}

CProjectContext::~CProjectContext() {
    for (auto place = m_filled.rbegin(); place != m_filled.rend(); ++place)
        m_places[*place].reset();
    if (ActivePointer() == this)
        ActivePointer() = nullptr;
}

std::size_t CProjectContext::AllocatePlace() {
    static std::size_t count = 0;
    return count++;
}

std::shared_ptr<void>& CProjectContext::AtPlace(std::size_t place) {
    if (place >= m_places.size())
        m_places.resize(place + 1);
    return m_places[place];
}

CContextActivation::CContextActivation(CProjectContext& context) : m_former(&CProjectContext::Active()) {
    ActivePointer() = &context;
}

CContextActivation::~CContextActivation() {
    ActivePointer() = m_former;
}

} // namespace OLMGis::System

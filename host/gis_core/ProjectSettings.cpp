// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ProjectSettings.h"

#include "host/gis_core/InputNotes.h"
#include "host/gis_core/ProjectContext.h"

namespace OLMGis::System {

CProjectSettings* CProjectSettings::Instance() {
    static const CContextSlot<CProjectSettings> slot;
    return slot.Get();
}

std::string CProjectSettings::Get(std::string_view name, std::string_view fallback) const {
    Data::NoteInput(Data::Inputs::Settings, name);
    const auto found = m_values.find(name);
    return found == m_values.end() ? std::string(fallback) : found->second;
}

} // namespace OLMGis::System

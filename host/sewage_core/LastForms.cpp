// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/LastForms.h"

#include "host/gis_core/ProjectContext.h"

#include <filesystem>
#include <system_error>

namespace OLMGis::Sewage {

namespace {

/// The full path of a file as typed. Links to its folder are resolved, as those of project files are.
std::string FullPath(const std::string& typed) {
    if (typed.empty())
        return typed;
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(typed, error);
    const auto folder = std::filesystem::weakly_canonical(full.parent_path(), error);
    return error ? typed : (folder / full.filename()).lexically_normal().string();
}

} // namespace

CLastForm TakeLastForm(const Topology::CPropertiesEx& form) {
    CLastForm values;
    for (const auto& property : form.GetAllProperties()) {
        CLastValue value{property->GetTag(), property->GetEffectiveValue(),
                         property->GetEditorType() == Topology::enmPropertyEditorType::FilePath};
        if (value.m_isFile)
            value.m_value = Data::CDataBox(FullPath(value.m_value.AsText()));
        values.push_back(std::move(value));
    }
    return values;
}

CLastForms* CLastForms::Instance() {
    static const System::CContextSlot<CLastForms> slot;
    return slot.Get();
}

const CLastForm* CLastForms::Find(std::string_view calculator) const {
    const auto found = m_forms.find(calculator);
    return found == m_forms.end() ? nullptr : &found->second;
}

} // namespace OLMGis::Sewage

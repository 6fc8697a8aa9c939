// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/SectionReferences.h"

#include "host/gis_core/HashTableGrowth.h"
#include "host/project_io/base/AttributeText.h"

#include <fmt/format.h>

namespace OLMGis::ProjectIo {

using Topology::CSection;
using Utility::BadInput;
using Utility::Result;

CSectionReferences::CSectionReferences(const Topology::CTopologyStorage& topology) : m_topology(topology) {
    Utility::MakeRoom(m_byName, topology.GetSections().size());
    for (const auto& section : topology.GetSections())
        if (const auto [entry, isNew] = m_byName.insert({section->GetName(), section.get()}); !isNew)
            entry->second = nullptr;
}

std::string_view CSectionReferences::ReferenceTo(const CSection& section) const {
    const auto found = m_byName.find(section.GetName());
    const bool isOnly = found != m_byName.end() && found->second == &section;
    // A name that equals the GUID of another section would be read as that GUID.
    return isOnly && !m_topology.GetSectionByGuid(section.GetName()) ? section.GetName() : section.GetGuid();
}

Result<boost::shared_ptr<CSection>> CSectionReferences::Find(std::string_view text) const {
    if (auto section = m_topology.GetSectionByGuid(text))
        return section;
    const auto found = m_byName.find(text);
    if (found == m_byName.end())
        return BadInput(fmt::format("found {}, expected the name or GUID of a section", Quote(text)));
    if (found->second == nullptr)
        return BadInput(
            fmt::format("found {}, a name that several sections have, expected the GUID of one of them", Quote(text)));
    return found->second->GetShared();
}

} // namespace OLMGis::ProjectIo

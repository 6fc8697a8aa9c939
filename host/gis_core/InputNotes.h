// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"

#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace OLMGis::Data {

/// Names of inputs that are not attributes of nodes or sections, as reports of outdated results show them.
namespace Inputs {
inline constexpr std::string_view Catchments = "catchments";
inline constexpr std::string_view Topology = "topology";
inline constexpr std::string_view Catalog = "catalog";
inline constexpr std::string_view Settings = "settings";
inline constexpr std::string_view File = "FILE_PATH";
} // namespace Inputs

/// What a run reads: the attribute columns, and by name and detail everything else. Set at the attribute store for the
/// time of a run (CInputNotesScope); whoever hands out data of the project notes it there.
class CInputNotes {
public:
    void NoteAttribute(const CDataDefinition& definition) {
        if (definition.m_index >= m_isRead.size())
            m_isRead.resize(definition.m_index + 1, false);
        m_isRead[definition.m_index] = true;
    }
    bool HasRead(const CDataDefinition& definition) const {
        return definition.m_index < m_isRead.size() && m_isRead[definition.m_index];
    }

    /// Cheap for what was noted last: loops note the same input again and again.
    void Note(std::string_view name, std::string_view detail) {
        if (name != m_lastName || detail != m_lastDetail)
            NoteOther(name, detail);
    }

    /// Names with details, in alphabetical order, each once.
    const std::set<std::pair<std::string, std::string>>& GetOthers() const { return m_others; }

private:
    void NoteOther(std::string_view name, std::string_view detail);

    std::vector<bool> m_isRead; ///< by index of the definition
    std::set<std::pair<std::string, std::string>> m_others;
    std::string m_lastName;
    std::string m_lastDetail;
};

class CAttributeStore;

/// Sets notes at a store for its own lifetime and puts the former ones back. Nothing is owned.
class CInputNotesScope {
public:
    CInputNotesScope(CAttributeStore& store, CInputNotes& notes);
    ~CInputNotesScope();
    CInputNotesScope(const CInputNotesScope&) = delete;
    CInputNotesScope& operator=(const CInputNotesScope&) = delete;

private:
    CAttributeStore& m_store;
    CInputNotes* m_former;
};

/// Notes an input at the store of the active project; without open notes nothing happens.
void NoteInput(std::string_view name, std::string_view detail);

} // namespace OLMGis::Data

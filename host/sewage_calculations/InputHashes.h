// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace OLMGis::Sewage {

/// Hashes of the content of a project's inputs. One per project context. A hash depends on values and on the GUIDs of
/// the entities that have them, not on rows, so that a project saved and opened again has the same; equal numbers have
/// equal hashes, and not-a-number, which the project file keeps as null, counts as null.
///
/// Hashes are kept until their input changes. Cost of making one: linear in the entities; the lists of GUIDs are hashed
/// once.
class CInputHashes {
public:
    static CInputHashes* Instance();

    /// Of the values of an attribute.
    std::uint64_t HashAttribute(const Data::CDataDefinition& definition);

    /// Of another input, by the name and detail under which CInputNotes lists it. Null where it can't be read now, as a
    /// file that is not there. An unknown name gives null as well.
    std::optional<std::uint64_t> HashOther(std::string_view name, std::string_view detail);

private:
    using CChangeCounts = std::pair<std::uint64_t, std::uint64_t>;
    struct CKept {
        CChangeCounts m_counts{};
        std::uint64_t m_hash = 0;
        bool m_isMade = false;
    };

    template <class Make>
    std::uint64_t Keep(CKept& kept, const CChangeCounts& counts, Make make);
    const std::vector<std::uint64_t>& GetGuidHashes(Data::enmEntityKind kind);
    std::uint64_t HashConnections();
    std::uint64_t HashGeometry();
    std::uint64_t HashAttachment();

    std::vector<CKept> m_attributes; ///< by index of the definition
    CKept m_connections;
    CKept m_geometry;
    CKept m_attachment;
    std::array<std::vector<std::uint64_t>, Data::EntityKindCount> m_guidHashes; ///< by row
};

} // namespace OLMGis::Sewage

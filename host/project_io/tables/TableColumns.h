// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"
#include "host/project_io/tables/UnitConversion.h"

#include <istream>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// What a table is read for: a new network needs places and ends, which values for an existing one cannot change.
enum class enmTableUse { Network, Values };

/// A column that is no attribute.
struct COwnColumn {
    std::string_view m_key;
    int m_labelMessage; ///< number of its label
    bool m_isNetwork;   ///< only in tables of a new network
};

/// The columns of one kind of entity that are no attributes, in the order of a template.
std::span<const COwnColumn> GetOwnColumns(Data::enmEntityKind kind);

/// The attribute that a short name of a column stands for: `terrain` for TERRAIN_1, `pipe` for PIPE_REF. Null for
/// another text.
const Data::CDataDefinition* FindByShortName(std::string_view name, Data::enmEntityKind kind);

/// One column of a table.
struct CTableColumn {
    std::string m_head;                                  ///< as in the file
    std::string m_key;                                   ///< empty for a column that the mapping leaves out
    const Data::CDataDefinition* m_definition = nullptr; ///< null for a column that is no attribute
    std::string m_unit;                                  ///< as in the head; empty for none
    CUnitConversion m_conversion;                        ///< from that unit to the attribute's
};

/// A mapping file: JSON, one object from heads of columns to keys. null leaves the column out.
class CColumnMap {
public:
    static Utility::Result<CColumnMap> Read(std::istream& stream, const std::string& name);

    /// Null where the file does not have the head. An empty key leaves the column out.
    const std::string* Find(std::string_view head) const;
    const std::string& GetName() const { return m_name; }

private:
    std::string m_name; ///< of the file
    std::map<std::string, std::string, std::less<>> m_keys;
};

/// Finds what each head of a table means: by the mapping, else as a key, else as a label in any language of the
/// program (case, accents, blanks and underscores do not count). A unit may follow in brackets. faults gets one text
/// for each head that means nothing or what another column means already: "column X: found ..., expected ...".
std::vector<CTableColumn> FindColumns(std::span<const std::string> heads, Data::enmEntityKind kind, enmTableUse use,
                                      const CColumnMap* map, std::vector<std::string>& faults);

/// The kinds of a catchment by their labels in all languages of the program, folded. Reads the texts of all languages.
using CKindLabels = std::map<std::string, int, std::less<>>;
CKindLabels GetKindLabels();

/// Kinds as a sum of bits from labels joined by blanks, "+", "|" or commas; 0 for another text.
int KindsOfLabels(std::string_view text, const CKindLabels& labels);

} // namespace OLMGis::ProjectIo

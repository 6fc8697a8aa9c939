// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/ValueRange.h"

#include <cstdint>
#include <string>

namespace OLMGis::Data {

/// What carries attributes.
enum class enmEntityKind : std::uint8_t { Node = 0, Section = 1, Catchment = 2 };
inline constexpr int EntityKindCount = 3;

/// How an attribute is stored.
enum class enmDataType : std::uint8_t { Int, Double, Text };

/// The definition of one attribute: its key, where it lives and how it is shown. Made once by CDataConfiguration and
/// never moved, so that a pointer to it is the fastest name of the attribute.
struct CDataDefinition {
    std::string m_id;                         ///< key, as scripts and files spell it
    enmEntityKind m_entityKind{};             ///< the kind of entity that carries it
    enmDataType m_type = enmDataType::Double; ///< how it is stored
    std::string m_unit;                       ///< unit of the value, empty for texts and codes, "-" for ratios
    int m_decimals = 0;                       ///< decimals to show
    int m_labelMessage = 0;                   ///< message number of the label
    bool m_isEditable = true;                 ///< whether a person may set it
    CValueRange m_range;                      ///< possible and usual values, in m_unit; of texts without meaning
    std::uint32_t m_index = 0;                ///< place in the list of all definitions, and of its column
};

} // namespace OLMGis::Data

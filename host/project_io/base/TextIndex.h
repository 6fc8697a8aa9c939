// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/PlaceIndex.h"
#include "host/gis_core/TextPool.h"
#include "host/gis_core/Utility.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// The place of nothing in a list of records.
inline constexpr std::uint32_t NoRecord = Utility::NoPlace;

/// The text at a place of a list; the list is borrowed and may grow.
struct CTextAt {
    const std::vector<Data::CKeptText>* m_texts;
    std::string_view operator()(std::uint32_t place) const { return (*m_texts)[place].View(); }
};

/// Names compare by plain characters; GUIDs compare without letter case and braces.
using CNameIndex = Utility::CPlaceIndex<CTextAt, std::hash<std::string_view>, std::equal_to<std::string_view>>;
using CGuidIndex = Utility::CPlaceIndex<CTextAt, Utility::GuidHash, Utility::GuidEqual>;

} // namespace OLMGis::ProjectIo

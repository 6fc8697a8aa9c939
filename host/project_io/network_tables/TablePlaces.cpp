// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/network_tables/TablePlaces.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

std::string CTablePlaces::Label(std::size_t feature, std::string_view /*label*/) const {
    const CPlace& place = m_places[feature - 1];
    return fmt::format("{}: line {}", place.m_table->GetName(), place.m_line);
}

std::string CTablePlaces::Fault(std::size_t feature, std::string_view /*label*/, std::string_view key,
                                std::string_view text) const {
    return Listed(feature, key, text);
}

std::string CTablePlaces::Listed(std::size_t feature, std::string_view key, std::string_view text) const {
    const auto& columns = m_places[feature - 1].m_table->GetColumns();
    const std::string_view shown = key == "pipe" ? std::string_view("PIPE_REF") : key;
    const auto column =
        std::find_if(columns.begin(), columns.end(), [&](const CTableColumn& each) { return each.m_key == shown; });
    const std::string_view head = column == columns.end() ? key : std::string_view(column->m_head);
    return fmt::format("{}{}{}: {}", Label(feature, {}), head.empty() ? "" : ", column ", head, text);
}

} // namespace OLMGis::ProjectIo

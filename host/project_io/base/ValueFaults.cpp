// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/ValueFaults.h"

#include "host/project_io/base/AttributeText.h"

#include <fmt/format.h>

#include <array>

namespace OLMGis::ProjectIo {

std::string ShownName(std::string_view name) {
    constexpr std::size_t longest = 80;
    const std::string shown = Utility::ToShown(std::string(name));
    std::size_t characters = 0;
    for (std::size_t i = 0; i < shown.size(); ++i)
        if ((static_cast<unsigned char>(shown[i]) & 0xC0U) != 0x80U && ++characters > longest)
            return shown.substr(0, i) + "...";
    return shown;
}

std::string PlaceOfValue(const Data::CDataDefinition& key, std::string_view name, double value) {
    constexpr std::array<std::string_view, Data::EntityKindCount> kinds = {"node", "section", "catchment of section"};
    return fmt::format("{} {}: {} {}, expected {}", kinds[static_cast<std::size_t>(key.m_entityKind)], ShownName(name),
                       key.m_id, TextOfAttribute(Data::CDataBox(value)), Data::PossibleValues(key.m_range, key.m_unit));
}

void CValueFaults::Add(std::string place) {
    if (IsListed())
        m_places.push_back(std::move(place));
    ++m_count;
}

std::string CValueFaults::ToText(std::string_view fileName, std::string_view advice, std::string_view thing) const {
    std::string text = fmt::format("{}: found {} {}{}", fileName, m_count, thing, m_count == 1 ? "" : "s");
    if (m_count > m_places.size())
        text += fmt::format(", of which these are the first {}", m_places.size());
    if (!advice.empty())
        text += fmt::format(". {}", advice);
    text += ':';
    for (const std::string& place : m_places)
        text += "\n  " + place;
    return text;
}

Utility::Status CValueFaults::ToStatus(std::string_view fileName, std::string_view advice,
                                       std::string_view thing) const {
    if (m_count == 0)
        return Utility::Done();
    // Not through BadInput, which would join the lines; the places were made fit to be shown one by one.
    return Utility::Error{Utility::enmErrorKind::BadInput,
                          ToText(Utility::ToShown(std::string(fileName)), advice, thing)};
}

void CUnusualValues::Add(std::string_view name, std::string_view value) {
    constexpr std::size_t most = 5;
    ++m_count;
    if (m_count <= most)
        m_first += fmt::format("{}{}: {}", m_first.empty() ? "" : ", ", ShownName(name), value);
    else if (m_count == most + 1)
        m_first += ", ...";
}

void CUnusualValues::Report(std::string_view key, std::string_view expected, std::vector<std::string>& list) const {
    if (m_count > 0)
        list.push_back(
            fmt::format("{}: {} unusual value{} ({}); {}", key, m_count, m_count == 1 ? "" : "s", m_first, expected));
}

} // namespace OLMGis::ProjectIo

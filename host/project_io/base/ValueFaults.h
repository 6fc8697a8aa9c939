// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// An entity as messages call it, with an impossible value: "section S1: length -500, expected 0 to 1000000 m". Of a
/// catchment, name is the name of its section.
std::string PlaceOfValue(const Data::CDataDefinition& key, std::string_view name, double value);

/// A name as messages show it: without control characters, cut after 80 characters.
std::string ShownName(std::string_view name);

/// What a reader found to be impossible: the first places for a message, and how many there are.
class CValueFaults {
public:
    static constexpr std::size_t MostPlaces = 20; ///< of a message; a listing takes all

    explicit CValueFaults(std::size_t mostPlaces = MostPlaces) : m_mostPlaces(mostPlaces) {}

    /// Whether the next place will be in the message: a text that will not be need not be made.
    bool IsListed() const { return m_count < m_mostPlaces; }

    /// place: one line of text.
    void Add(std::string place);

    std::size_t GetCount() const { return m_count; }
    const std::vector<std::string>& GetPlaces() const { return m_places; }

    /// One sentence with the number, then the places, a line each. advice: what to do next, may be empty. thing: what
    /// one place is.
    std::string ToText(std::string_view fileName, std::string_view advice,
                       std::string_view thing = "impossible value") const;

    /// Done without faults, else BadInput with ToText.
    Utility::Status ToStatus(std::string_view fileName, std::string_view advice,
                             std::string_view thing = "impossible value") const;

private:
    std::vector<std::string> m_places;
    std::size_t m_count = 0;
    std::size_t m_mostPlaces;
};

/// The unusual values of one key: the first ones for a message, and how many there are.
class CUnusualValues {
public:
    /// name: where it was found, see ShownName.
    void Add(std::string_view name, std::string_view value);

    /// Appends a sentence when there are any: "PIPE_ROUGHNESS: 1 unusual value (S1: 0.00075); usual are 0.01 to 10 mm".
    void Report(std::string_view key, std::string_view expected, std::vector<std::string>& list) const;

private:
    std::size_t m_count = 0;
    std::string m_first;
};

} // namespace OLMGis::ProjectIo

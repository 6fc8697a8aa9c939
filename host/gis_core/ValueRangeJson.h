// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/ValueRange.h"

#include <nlohmann/json.hpp>

namespace OLMGis::Data {

/// The range of a definition in a data file, from the members min, max, usual_min, usual_max (numbers), min_excluded,
/// max_excluded, result (true or false), marks (list of numbers); all may be left out. Throws nlohmann::json::exception
/// for members of another type.
inline void from_json(const nlohmann::json& definition, CValueRange& range) {
    const auto readBound = [&definition](const char* key, std::optional<double>& bound) {
        if (const auto member = definition.find(key); member != definition.end())
            bound = member->get<double>();
    };
    readBound("min", range.m_min);
    readBound("max", range.m_max);
    readBound("usual_min", range.m_usualMin);
    readBound("usual_max", range.m_usualMax);
    range.m_isMinExcluded = definition.value("min_excluded", false);
    range.m_isMaxExcluded = definition.value("max_excluded", false);
    range.m_isResult = definition.value("result", false);
    range.m_marks = definition.value("marks", std::vector<double>());
}

} // namespace OLMGis::Data

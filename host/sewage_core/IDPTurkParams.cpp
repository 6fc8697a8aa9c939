// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/IDPTurkParams.h"

#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/Utility.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

namespace OLMGis::Sewage {

using Utility::CUtility;

namespace {

std::optional<CIDPTurkParams::CRow> ParseRow(const std::string& text) {
    std::vector<std::string> parts;
    if (CUtility::SplitString(text, parts, ':') != 4)
        return std::nullopt;
    const auto limit = CUtility::ParseDouble(parts[0]);
    const auto a = CUtility::ParseDouble(parts[1]);
    const auto b = CUtility::ParseDouble(parts[2]);
    const auto c = CUtility::ParseDouble(parts[3]);
    if (!limit || !a || !b || !c)
        return std::nullopt;
    return CIDPTurkParams::CRow{*limit, *a, *b, *c};
}

} // namespace

int CIDPTurkParams::Load() {
    m_constantTime = 0.0;
    m_rows.clear();
    const auto text =
        Utility::InstallationPaths::ReadWholeFile(Utility::InstallationPaths::DataFile("rain/turkish.txt"));
    if (!text)
        return 0;
    std::vector<std::string> lines;
    CUtility::SplitString(text.Value(), lines, '\n');
    const auto line = std::find_if(lines.begin(), lines.end(), [](const std::string& l) { return l[0] != '*'; });
    return line == lines.end() ? 0 : setValue(*line);
}

int CIDPTurkParams::setValue(std::string_view text) {
    // An empty time is an error: splitting would drop it and read the first row as the time.
    const std::string_view trimmed = CUtility::Trim(text);
    std::vector<std::string> parts;
    if (trimmed.starts_with(';') || CUtility::SplitString(trimmed, parts, ';') < 2)
        return 0;
    const auto time = CUtility::ParseDouble(parts.front());
    if (!time)
        return 0;
    std::vector<CRow> rows;
    for (std::size_t i = 1; i < parts.size(); ++i) {
        const auto row = ParseRow(parts[i]);
        if (!row)
            return 0;
        rows.push_back(*row);
    }
    m_constantTime = *time;
    m_rows = std::move(rows);
    return 1;
}

const CIDPTurkParams::CRow* CIDPTurkParams::FindRow(double area) const {
    if (m_rows.empty())
        return nullptr;
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [area](const CRow& r) { return r.m_limit >= area; });
    return row == m_rows.end() ? &m_rows.back() : &*row;
}

double CIDPTurkParams::getIntesity(double area, double time) const {
    const CRow* const row = FindRow(area);
    if (row == nullptr)
        return 0.0;
    const double t = m_constantTime > 0.0 ? m_constantTime : time;
    return row->m_a / std::pow(t + row->m_b, row->m_c);
}

} // namespace OLMGis::Sewage

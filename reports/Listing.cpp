// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/Listing.h"

#include "host/gis_core/ProjectSettings.h"
#include "reports/TablePrinting.h"

namespace Reports {

namespace {

void PrintBlocks(std::ostream& stream, const CListing& listing) {
    bool isFirst = true;
    for (const CBlock& block : listing.m_blocks) {
        if (block.m_text.empty() && block.m_table.IsEmpty())
            continue;
        if (!isFirst)
            stream << '\n';
        isFirst = false;
        if (!block.m_text.empty())
            stream << block.m_text << '\n';
        PrintAsText(stream, block.m_table, block.m_isIndented ? "  " : "");
    }
}

} // namespace

std::optional<enmFormat> FindFormat(std::string_view name) {
    if (name == "table")
        return enmFormat::Text;
    if (name == "csv")
        return enmFormat::Csv;
    if (name == "json")
        return enmFormat::Json;
    if (name == "geojson")
        return enmFormat::GeoJson;
    return std::nullopt;
}

void Print(std::ostream& stream, const CListing& listing, enmFormat format) {
    using OLMGis::System::CProjectSettings;
    static const CTable none;
    const CTable& table = listing.m_table            ? *listing.m_table
                          : listing.m_blocks.empty() ? none
                                                     : listing.m_blocks.front().m_table;
    switch (format) {
    case enmFormat::Text:
        return PrintBlocks(stream, listing);
    case enmFormat::Csv:
        return PrintAsCsv(stream, table);
    case enmFormat::GeoJson:
        return PrintAsGeoJson(stream, table, CProjectSettings::Instance()->Get(CProjectSettings::Crs));
    case enmFormat::Json:
        if (listing.m_printDocument)
            return listing.m_printDocument(stream);
        return PrintAsJson(stream, table);
    }
}

} // namespace Reports

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/Formats.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/exchange/ExchangeExport.h"
#include "host/project_io/exchange/ExchangeImport.h"
#include "host/project_io/inp/InpImport.h"
#include "host/project_io/tables/CsvExport.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <filesystem>

namespace OLMGis::ProjectIo {

using Utility::BadArguments;
using Utility::Result;
using Utility::Status;

namespace {

using CFormatList = std::vector<const CFormat*>;

Status WriteExchange(std::ostream& stream, const CExportChoice& /*choice*/) {
    return ExportExchange(stream);
}

Status WriteValues(std::ostream& stream, const CExportChoice& choice) {
    return ExportCsv(stream, choice.m_on);
}

Status WriteCatalog(std::ostream& stream, const CExportChoice& choice) {
    return ExportCatalogCsv(stream, choice.m_catalog);
}

template <class Direction>
CFormatList FormatsWith(Direction CFormat::*direction) {
    CFormatList formats;
    for (const CFormat& format : GetFormats())
        if (format.*direction != nullptr)
            formats.push_back(&format);
    return formats;
}

} // namespace

const std::vector<CFormat>& GetFormats() {
    static const std::vector<CFormat> formats{
        {"project",
         {".gpkg"},
         "project file (GeoPackage)",
         "all of a project",
         "all of a project: layers nodes, sections, catchments, findings with all attributes; settings, catalogues",
         ""},
        {"geojson",
         {".geojson", ".json"},
         "network exchange file",
         "nodes, sections, catchments, main outlets with all attributes; catalogues; coordinate system",
         "the same, in the order of the network",
         "findings, settings other than the coordinate system",
         ImportExchange,
         WriteExchange},
        {"inp",
         {".inp"},
         "storm-water network",
         "nodes, conduits, pumps, orifices, weirs, outlets, subcatchments, cross-sections, coordinates",
         "",
         "time series, controls, water quality, options of the simulation",
         ImportInp},
        {"tables",
         {".csv"},
         "tables of a network",
         "nodes, sections, catchments with all attributes, one table each",
         "",
         "catalogues, polygons"},
        {"csv",
         {".csv"},
         "table of attribute values of one kind of entity",
         "values for entities that the project has; new catchments",
         "name, GUID and all attributes that have a value; of sections their nodes, of catchments their section",
         "geometry",
         nullptr,
         WriteValues},
        {"catalog",
         {".csv"},
         "table of catalogue pipes or manholes",
         "groups and items of one catalogue",
         "the project's own groups and items of one catalogue",
         "",
         nullptr,
         WriteCatalog},
        {"terrain",
         {".tif", ".tiff", ".asc"},
         "raster of ground levels",
         "the first band, its place and its coordinate system",
         "",
         "other bands"},
        {"curves",
         {".txt"},
         "rain intensity curves",
         "blocks of one return period with durations and intensities",
         "",
         "comments"},
        {"parameters",
         {".json"},
         "parameter file of a design",
         "values of the forms of calculators and checks",
         "",
         ""},
    };
    return formats;
}

CFormatList GetImportFormats() {
    return FormatsWith(&CFormat::m_import);
}

CFormatList GetExportFormats() {
    return FormatsWith(&CFormat::m_export);
}

Result<const CFormat*> FindFormat(const CFormatList& formats, std::string_view key) {
    std::vector<std::string_view> keys;
    for (const CFormat* format : formats) {
        if (format->m_key == key)
            return format;
        keys.push_back(format->m_key);
    }
    return BadArguments(fmt::format("format: found \"{}\", expected one of {}", key, fmt::join(keys, ", ")));
}

Result<const CFormat*> FindImportFormat(std::string_view key) {
    return FindFormat(GetImportFormats(), key);
}

Result<const CFormat*> GuessImportFormat(const std::string& path) {
    const std::string suffix = Utility::CUtility::ToLower(std::filesystem::path(path).extension().string());
    std::vector<std::string_view> known;
    for (const CFormat* format : GetImportFormats()) {
        if (std::find(format->m_suffixes.begin(), format->m_suffixes.end(), suffix) != format->m_suffixes.end())
            return format;
        known.insert(known.end(), format->m_suffixes.begin(), format->m_suffixes.end());
    }
    return BadArguments(fmt::format("{}: found {}, expected a file name that ends in one of {}", path,
                                    suffix.empty() ? "no suffix" : "the suffix " + suffix, fmt::join(known, ", ")));
}

std::string TextOfSuffixes(const CFormat& format) {
    return fmt::format("{}", fmt::join(format.m_suffixes, ", "));
}

} // namespace OLMGis::ProjectIo

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/Result.h"
#include "host/project_io/base/ImportSummary.h"
#include "host/project_io/tables/CatalogCsv.h"

#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// What an export asks beside the project; each format reads what concerns it.
struct CExportChoice {
    Data::enmEntityKind m_on = Data::enmEntityKind::Section; ///< entities of a table
    enmCatalogKind m_catalog = enmCatalogKind::Pipe;         ///< catalogue to write
};

/// Fills the active project, which must be empty, from the stream; name: what messages call the file. After an error
/// the caller throws the project away.
using CFormatImport = Utility::Result<CImportSummary>(std::istream& stream, const std::string& name);

/// Writes the active project to the stream.
using CFormatExport = Utility::Status(std::ostream& stream, const CExportChoice& choice);

/// One format of files. All texts are English, without line ends; docs/formats.md has the same ones.
struct CFormat {
    std::string_view m_key;                   ///< how the command line names the format; unique
    std::vector<std::string_view> m_suffixes; ///< in lower case with the point, the usual one first; never empty
    std::string_view m_title;                 ///< one line: what such a file is
    std::string_view m_reads;                 ///< what we take from such a file; empty where we read none
    std::string_view m_writes;                ///< what we put into such a file; empty where we write none
    std::string_view m_loses;                 ///< what does not pass in either direction; empty for nothing
    CFormatImport* m_import = nullptr;        ///< makes a project of a file; null where none can be made
    CFormatExport* m_export = nullptr;        ///< null where a project cannot be exported to the format
};

/// Every format that goes in or out, in the order in which lists show them. A new format is a new entry: the command
/// line takes its choices and help texts from here.
const std::vector<CFormat>& GetFormats();

/// The formats with m_import, and those with m_export, in the order of GetFormats; no nulls.
std::vector<const CFormat*> GetImportFormats();
std::vector<const CFormat*> GetExportFormats();

/// The format of that key among some (no nulls); BadArguments, listing the keys, when there is none.
Utility::Result<const CFormat*> FindFormat(const std::vector<const CFormat*>& formats, std::string_view key);

/// The same among those with m_import.
Utility::Result<const CFormat*> FindImportFormat(std::string_view key);

/// The format with m_import that has the suffix of the file's name, letter case ignored; BadArguments, listing the
/// known suffixes, when there is none. The file is not opened.
Utility::Result<const CFormat*> GuessImportFormat(const std::string& path);

/// Suffixes of a format for people: ".geojson, .json".
std::string TextOfSuffixes(const CFormat& format);

} // namespace OLMGis::ProjectIo

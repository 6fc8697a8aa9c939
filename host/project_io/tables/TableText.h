// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <istream>
#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// The text of a table as UTF-8.
struct CTableText {
    std::string m_text;
    bool m_isWindows1250 = false; ///< the file was not UTF-8
};

/// Reads a whole file: as UTF-8 where its bytes are, else as Windows-1250, which spreadsheets of Central Europe write.
/// BadInput, naming the line, for bytes that are neither. Linear; the file is in memory.
Utility::Result<CTableText> ReadTableText(std::istream& stream, const std::string& name);

/// A text for comparisons of what people type: small letters, Latin letters without accents, and one blank for each
/// run of blanks, underscores and hyphens; none at the ends.
std::string FoldText(std::string_view text);

} // namespace OLMGis::ProjectIo

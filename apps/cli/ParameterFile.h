// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/WordFormEditor.h"
#include "host/gis_core/Result.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Cli {

/// A parameter file: one JSON object that holds, by key of the calculator, one object of tags and values.
class CParameterFile {
public:
    /// Refused when the file cannot be read; BadInput for text that is not of this shape, larger than a parameter file
    /// is, or names a calculator that is not among those known.
    static OLMGis::Utility::Result<CParameterFile> Read(const std::string& path,
                                                        const std::vector<std::string>& calculators);

    /// The same from text; path is what messages call it and where relative paths begin.
    static OLMGis::Utility::Result<CParameterFile> Parse(std::string_view text, const std::string& path,
                                                         const std::vector<std::string>& calculators);

    /// The values of a calculator in the order of the file, null when the file does not name it.
    const std::vector<CFormWord>* FindWords(std::string_view calculator) const;

private:
    std::map<std::string, std::vector<CFormWord>, std::less<>> m_words;
};

} // namespace Cli

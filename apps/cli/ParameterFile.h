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

/// A parameter file: one JSON object that holds, by key of the calculator, one object of tags and values; and under
/// "checks" the same by key of the check.
class CParameterFile {
public:
    /// Refused when the file cannot be read; BadInput for text that is not of this shape, larger than a parameter file
    /// is, or names a calculator or a check that is not among those known.
    static OLMGis::Utility::Result<CParameterFile>
    Read(const std::string& path, const std::vector<std::string>& calculators, const std::vector<std::string>& checks);

    /// The same from text; path is what messages call it and where relative paths begin.
    static OLMGis::Utility::Result<CParameterFile> Parse(std::string_view text, const std::string& path,
                                                         const std::vector<std::string>& calculators,
                                                         const std::vector<std::string>& checks);

    /// The values of a calculator in the order of the file, null when the file does not name it.
    const std::vector<CFormWord>* FindWords(std::string_view calculator) const { return Find(m_words, calculator); }

    /// The same of a check.
    const std::vector<CFormWord>* FindCheckWords(std::string_view check) const { return Find(m_checks, check); }

private:
    using CWordsByKey = std::map<std::string, std::vector<CFormWord>, std::less<>>;

    static const std::vector<CFormWord>* Find(const CWordsByKey& words, std::string_view key) {
        const auto found = words.find(key);
        return found == words.end() ? nullptr : &found->second;
    }

    CWordsByKey m_words;
    CWordsByKey m_checks;
};

} // namespace Cli

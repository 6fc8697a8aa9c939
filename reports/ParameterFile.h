// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <istream>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Reports {

/// One value for a form.
struct CFormValue {
    std::string m_tag;
    std::string m_text;
    std::string m_origin; ///< file and entry for messages about a value of a parameter file; else empty
    std::string m_folder; ///< of the parameter file, where relative paths begin; else empty

    /// From an earlier run: what the form lacks by now, or refuses while it is out of force, is left out.
    bool m_isRemembered = false;
};

/// A parameter file: one JSON object with, by key of the calculator, one object of tags and values; and under "checks"
/// the same by key of the check. A tag may be its alias. Members whose names begin with "_" are remarks: not read.
class CParameterFile {
public:
    /// path: for messages, and where relative paths begin. calculators, checks: all known keys. Refused when the stream
    /// cannot be read; BadInput for text that is not of this shape, is longer than 1 MiB, or names an unknown
    /// calculator or check.
    static OLMGis::Utility::Result<CParameterFile> Read(std::istream& stream, const std::string& path,
                                                        const std::vector<std::string>& calculators,
                                                        const std::vector<std::string>& checks);

    /// The same from text.
    static OLMGis::Utility::Result<CParameterFile> Parse(std::string_view text, const std::string& path,
                                                         const std::vector<std::string>& calculators,
                                                         const std::vector<std::string>& checks);

    /// The values of a calculator in the order of the file, null when the file does not name it.
    const std::vector<CFormValue>* FindValues(std::string_view calculator) const { return Find(m_values, calculator); }

    /// The same of a check.
    const std::vector<CFormValue>* FindCheckValues(std::string_view check) const { return Find(m_checks, check); }

private:
    using CValuesByKey = std::map<std::string, std::vector<CFormValue>, std::less<>>;

    static const std::vector<CFormValue>* Find(const CValuesByKey& values, std::string_view key) {
        const auto found = values.find(key);
        return found == values.end() ? nullptr : &found->second;
    }

    CValuesByKey m_values;
    CValuesByKey m_checks;
};

} // namespace Reports

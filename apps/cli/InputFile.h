// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <fstream>
#include <istream>
#include <string>

namespace Cli {

/// A file to read, or standard input for the path "-".
class CInputFile {
public:
    /// Refused, naming the system's reason, when it cannot be opened.
    static OLMGis::Utility::Result<CInputFile> Open(const std::string& path);

    std::istream& GetStream() { return m_isStandardInput ? GetStandardInput() : m_file; }

    /// What messages call it.
    const std::string& GetName() const { return m_name; }

private:
    CInputFile() = default;
    static std::istream& GetStandardInput();

    std::ifstream m_file;
    std::string m_name;
    bool m_isStandardInput = false;
};

} // namespace Cli

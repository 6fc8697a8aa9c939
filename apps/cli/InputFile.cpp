// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/InputFile.h"

#include <fmt/format.h>

#include <cerrno>
#include <filesystem>
#include <iostream>
#include <system_error>

namespace Cli {

using OLMGis::Utility::Refused;
using OLMGis::Utility::Result;

Result<CInputFile> CInputFile::Open(const std::string& path) {
    CInputFile input;
    input.m_isStandardInput = path == "-";
    input.m_name = input.m_isStandardInput ? "standard input" : path;
    if (input.m_isStandardInput)
        return input;
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        return Refused(fmt::format("{}: cannot be read: it is a folder", path));
    errno = 0;
    input.m_file.open(path, std::ios::binary);
    if (!input.m_file)
        return Refused(fmt::format("{}: cannot be opened: {}", path, std::generic_category().message(errno)));
    return input;
}

std::istream& CInputFile::GetStandardInput() {
    return std::cin;
}

} // namespace Cli

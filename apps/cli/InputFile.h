// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <istream>
#include <memory>
#include <string>

namespace Cli {

/// A file to read, or standard input for the path "-". Shows progress through a large file, and ends early once Ctrl+C
/// was pressed: what reads it then fails, and the program tells why (see Interrupt::Check).
class CInputFile {
public:
    /// Refused, naming the system's reason, when it cannot be opened.
    static OLMGis::Utility::Result<CInputFile> Open(const std::string& path);

    ~CInputFile();
    CInputFile(CInputFile&& other) noexcept;
    CInputFile& operator=(CInputFile&& other) noexcept;

    /// Goes bad when the system fails to read.
    std::istream& GetStream() { return *m_stream; }

    /// What messages call it.
    const std::string& GetName() const { return m_name; }

private:
    class CBuffer;
    CInputFile(std::unique_ptr<CBuffer> buffer, std::string name);

    std::unique_ptr<CBuffer> m_buffer;
    std::unique_ptr<std::istream> m_stream;
    std::string m_name;
};

} // namespace Cli

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <istream>
#include <memory>
#include <string>

namespace Cli {

/// A file to read, or standard input for the path "-". Shows progress through a large file. Ends early after Ctrl+C:
/// its reader then fails, and the program reports the interruption (see Interrupt::Check).
class CInputFile {
public:
    /// Refused, with the system's reason, when it cannot be opened.
    static OLMGis::Utility::Result<CInputFile> Open(const std::string& path);

    ~CInputFile();
    CInputFile(CInputFile&& other) noexcept;
    CInputFile& operator=(CInputFile&& other) noexcept;

    /// Goes bad when the system fails to read.
    std::istream& GetStream() { return *m_stream; }

    /// For messages.
    const std::string& GetName() const { return m_name; }

private:
    class CBuffer;
    CInputFile(std::unique_ptr<CBuffer> buffer, std::string name);

    std::unique_ptr<CBuffer> m_buffer;
    std::unique_ptr<std::istream> m_stream;
    std::string m_name;
};

} // namespace Cli

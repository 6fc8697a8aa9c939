// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <ostream>
#include <string>
#include <string_view>

namespace OLMGis::ProjectIo {

/// Writes a table of comma-separated values that CCsvReader reads back to the same texts. Lines end in LF. A field is
/// quoted only where necessary; one that a spreadsheet would run as a formula begins with an apostrophe.
class CCsvWriter {
public:
    /// The stream is borrowed.
    explicit CCsvWriter(std::ostream& stream) : m_stream(stream) {}

    /// The next field of the row.
    void Write(std::string_view field);
    void EndRow();

    /// Writes what is still in the buffer. Refused when the stream failed.
    Utility::Status Finish();

private:
    std::ostream& m_stream;
    std::string m_buffer;
    std::size_t m_rowStart = 0; ///< of the current row in the buffer
    bool m_hasFields = false;
};

} // namespace OLMGis::ProjectIo

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CsvWriter.h"

#include "host/project_io/tables/FormulaGuard.h"

namespace OLMGis::ProjectIo {

void CCsvWriter::Write(std::string_view field) {
    if (m_hasFields)
        m_buffer += ',';
    m_hasFields = true;
    std::string guarded;
    if (NeedsGuard(field))
        field = guarded.append("'").append(field);
    // Semicolons and blanks at the ends are quoted because some programs would read them differently.
    const bool isQuoted = field.find_first_of(",;\"\r\n") != std::string_view::npos ||
                          (!field.empty() && (field.front() == ' ' || field.back() == ' '));
    if (!isQuoted) {
        m_buffer += field;
        return;
    }
    m_buffer += '"';
    for (const char c : field) {
        if (c == '"')
            m_buffer += '"';
        m_buffer += c;
    }
    m_buffer += '"';
}

void CCsvWriter::EndRow() {
    constexpr std::size_t blockSize = std::size_t{1} << 16;
    // A row of one empty field would be an empty line, which readers skip.
    if (m_hasFields && m_buffer.size() == m_rowStart)
        m_buffer += "\"\"";
    m_buffer += '\n';
    m_hasFields = false;
    if (m_buffer.size() >= blockSize) {
        m_stream.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
        m_buffer.clear();
    }
    m_rowStart = m_buffer.size();
}

Utility::Status CCsvWriter::Finish() {
    m_stream.write(m_buffer.data(), static_cast<std::streamsize>(m_buffer.size()));
    m_buffer.clear();
    m_rowStart = 0;
    m_stream.flush();
    if (!m_stream)
        return Utility::Refused("the table could not be written");
    return Utility::Done();
}

} // namespace OLMGis::ProjectIo

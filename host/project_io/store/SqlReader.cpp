// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/SqlReader.h"

#include "host/gis_core/Utility.h"
#include "host/project_io/base/Failure.h"

#include <fmt/format.h>

#include <algorithm>

namespace OLMGis::ProjectIo {

using Layout::CColumn;

namespace {

/// The text with every byte that is not UTF-8 replaced.
std::string Repaired(std::string_view text) {
    constexpr std::string_view Replacement = "\xEF\xBF\xBD";
    constexpr std::size_t LongestCharacter = 4;
    std::string repaired;
    while (!text.empty()) {
        std::size_t size = 1;
        while (size <= std::min(LongestCharacter, text.size()) && !Utility::CUtility::IsUtf8(text.substr(0, size)))
            ++size;
        if (size > std::min(LongestCharacter, text.size())) {
            size = 1;
            repaired += Replacement;
        } else {
            repaired += text.substr(0, size);
        }
        text.remove_prefix(size);
    }
    return repaired;
}

std::string SelectStatement(std::string_view table, std::span<const std::string> columns, std::string_view order) {
    std::string list;
    for (const std::string& column : columns)
        list += (list.empty() ? "" : ", ") + Quoted(column);
    return fmt::format("SELECT {} FROM {} ORDER BY {}", list, Quoted(table), order);
}

} // namespace

std::vector<std::string> NamesOf(std::span<const CColumn> columns) {
    std::vector<std::string> names;
    for (const CColumn& column : columns)
        names.emplace_back(column.m_name);
    return names;
}

void CWarnings::Add(std::string warning) {
    if (m_warnings.size() < Most)
        m_warnings.push_back(std::move(warning));
    else
        ++m_leftOut;
}

std::vector<std::string> CWarnings::Take() {
    if (m_leftOut > 0)
        m_warnings.push_back(fmt::format("and {} more of the kind", m_leftOut));
    m_leftOut = 0;
    return std::move(m_warnings);
}

CFileTables::CFileTables(const CSqliteDatabase& database) : m_database(database) {
    // A view or a virtual table has no page of its own.
    CSqliteStatement list(database,
                          "SELECT name, rootpage > 0 FROM sqlite_schema WHERE type IN ('table', 'view') ORDER BY name");
    while (list.Step())
        m_isOrdinary.emplace(list.GetText(0), list.GetInteger(1) != 0);
}

std::vector<std::string> CFileTables::GetColumns(std::string_view table, std::span<const CColumn> expected) const {
    const auto found = m_isOrdinary.find(table);
    if (found == m_isOrdinary.end())
        FailBadInput(fmt::format("{}: found no table {}, expected it in a project file", m_database.GetName(), table));
    if (!found->second)
        FailBadInput(fmt::format("{}: {} is a view, expected a table", m_database.GetName(), table));
    std::vector<std::string> names;
    CSqliteStatement list(m_database, fmt::format("PRAGMA table_xinfo({})", Quoted(table)));
    constexpr int NameColumn = 1;
    constexpr int HiddenColumn = 6;
    while (list.Step()) {
        if (list.GetInteger(HiddenColumn) == 0)
            names.emplace_back(list.GetText(NameColumn));
    }
    for (const CColumn& column : expected)
        if (std::find(names.begin(), names.end(), column.m_name) == names.end())
            FailBadInput(fmt::format("{}: table {}: found no column {}, expected it in a project file",
                                     m_database.GetName(), table, column.m_name));
    return names;
}

CSqlReader::CSqlReader(const CSqliteDatabase& database, std::string_view table, std::span<const std::string> columns,
                       std::string_view order)
    : m_database(database), m_table(table), m_columns(columns.begin(), columns.end()),
      m_statement(database, SelectStatement(table, columns, order)), m_fileSize(database.GetSize()) {}

bool CSqlReader::Next() {
    constexpr std::int64_t LeastRowBytes = 4; // key, head, value of a column, and the pointer in the page
    m_repaired.clear();
    if (!m_statement.Step())
        return false;
    if (++m_rowCount > m_fileSize / LeastRowBytes)
        Fail(fmt::format("found more rows than its {} bytes has room for, expected an undamaged file", m_fileSize));
    return true;
}

void CSqlReader::CountBytes(std::size_t bytes) const {
    constexpr std::size_t MostReads = 8; // of one value; it may be longer here than in the file, which may be UTF-16
    m_byteCount += bytes;
    if (m_byteCount / MostReads > static_cast<std::size_t>(m_fileSize))
        Fail(fmt::format("found more text than its {} bytes has room for, expected an undamaged file", m_fileSize));
}

void CSqlReader::Fail(std::string_view what) const {
    FailBadInput(fmt::format("{}: table {}, row {}: {}", m_database.GetName(), m_table, GetKey(), what));
}

void CSqlReader::Expect(int column, enmStoredType type, std::string_view expected) const {
    if (const enmStoredType found = m_statement.GetType(column); found != type)
        Fail(fmt::format("column {}: found {}, expected {}", m_columns[static_cast<std::size_t>(column)], NameOf(found),
                         expected));
}

std::int64_t CSqlReader::GetInteger(int column) const {
    Expect(column, enmStoredType::Integer, "a whole number");
    return m_statement.GetInteger(column);
}

double CSqlReader::GetReal(int column) const {
    if (m_statement.GetType(column) != enmStoredType::Integer)
        Expect(column, enmStoredType::Real, "a number");
    return m_statement.GetReal(column);
}

std::string_view CSqlReader::GetText(int column) {
    if (m_statement.IsNull(column))
        return {};
    Expect(column, enmStoredType::Text, "a text");
    const std::string_view text = m_statement.GetText(column);
    CountBytes(text.size());
    if (Utility::CUtility::IsUtf8(text))
        return text;
    ++m_repairedCount;
    return m_repaired.emplace_back(Repaired(text));
}

std::span<const std::byte> CSqlReader::GetBlob(int column) const {
    if (m_statement.IsNull(column))
        return {};
    Expect(column, enmStoredType::Blob, "binary data");
    const auto blob = m_statement.GetBlob(column);
    CountBytes(blob.size());
    return blob;
}

} // namespace OLMGis::ProjectIo

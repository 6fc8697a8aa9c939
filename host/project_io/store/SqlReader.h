// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/store/GeoPackageLayout.h"
#include "host/project_io/store/SqliteDatabase.h"

#include <cstdint>
#include <deque>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::ProjectIo {

/// Warnings of an opening: whole sentences in order, limited in number.
class CWarnings {
public:
    void Add(std::string warning);

    /// All of them; where there were more than the limit, the last one says how many.
    std::vector<std::string> Take();

private:
    static constexpr std::size_t Most = 100;

    std::vector<std::string> m_warnings;
    std::size_t m_leftOut = 0;
};

/// The tables of a file as it declares them, unchecked.
class CFileTables {
public:
    explicit CFileTables(const CSqliteDatabase& database);

    bool Has(std::string_view table) const { return m_isOrdinary.find(table) != m_isOrdinary.end(); }

    /// The columns of a table but for computed ones. Fails when it is missing, is no ordinary table but a view or the
    /// like, or lacks one of the expected columns.
    std::vector<std::string> GetColumns(std::string_view table, std::span<const Layout::CColumn> expected) const;

private:
    const CSqliteDatabase& m_database;
    std::map<std::string, bool, std::less<>> m_isOrdinary; ///< by name
};

/// Reads the rows of one table and checks the type of each value. Throws CFailure, naming file, table and row. Columns
/// count from 0 in the order given; the first one is the key of the row.
class CSqlReader {
public:
    /// order: SQL terms to sort by.
    CSqlReader(const CSqliteDatabase& database, std::string_view table, std::span<const std::string> columns,
               std::string_view order);

    bool Next();

    std::int64_t GetKey() const { return m_statement.GetInteger(0); }
    bool IsNull(int column) const { return m_statement.IsNull(column); }

    /// Fail when the row stores another type; GetReal accepts whole numbers too.
    std::int64_t GetInteger(int column) const;
    double GetReal(int column) const;

    /// Empty for a null. Bytes that are not UTF-8 become the replacement character. Valid until Next.
    std::string_view GetText(int column);

    /// Empty for a null.
    std::span<const std::byte> GetBlob(int column) const;

    /// Number of texts that were not UTF-8.
    std::size_t GetRepairedCount() const { return m_repairedCount; }

    [[noreturn]] void Fail(std::string_view what) const;

private:
    void Expect(int column, enmStoredType type, std::string_view expected) const;
    void CountBytes(std::size_t bytes) const;

    const CSqliteDatabase& m_database;
    std::string m_table;
    std::vector<std::string> m_columns;
    CSqliteStatement m_statement;
    std::deque<std::string> m_repaired;
    std::size_t m_repairedCount = 0;
    std::int64_t m_fileSize;
    std::int64_t m_rowCount = 0;
    mutable std::size_t m_byteCount = 0; ///< of texts and blobs
};

/// Names of fixed columns.
std::vector<std::string> NamesOf(std::span<const Layout::CColumn> columns);

} // namespace OLMGis::ProjectIo

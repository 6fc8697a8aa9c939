// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace OLMGis::ProjectIo {

class CSqliteDatabase;

/// How a value of a row is stored.
enum class enmStoredType : std::uint8_t { Null, Integer, Real, Text, Blob };

/// What an error calls a stored type: "a text".
std::string_view NameOf(enmStoredType type);

/// A prepared statement. Places and columns count from 1 and from 0, as SQLite has it. Throws CFailure.
class CSqliteStatement {
public:
    CSqliteStatement(const CSqliteDatabase& database, const std::string& sql);

    /// Texts and blobs are not copied: they stay until the next Step or Run.
    CSqliteStatement& BindNull(int place);
    CSqliteStatement& Bind(int place, std::int64_t value);
    CSqliteStatement& Bind(int place, double value); ///< not-a-number is stored as null
    CSqliteStatement& Bind(int place, std::string_view text);
    CSqliteStatement& Bind(int place, std::span<const std::byte> blob);

    /// Goes to the next row; false behind the last one.
    bool Step();

    /// Carries out a statement without rows, ready for the next values.
    void Run();

    enmStoredType GetType(int column) const;
    bool IsNull(int column) const { return GetType(column) == enmStoredType::Null; }
    std::int64_t GetInteger(int column) const;
    double GetReal(int column) const;
    std::string_view GetText(int column) const;           ///< valid until the next Step
    std::span<const std::byte> GetBlob(int column) const; ///< valid until the next Step

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    void Check(int code) const;

    const CSqliteDatabase* m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

/// A connection to a file. Throws CFailure, whose message begins with the file's name as the user knows it: when
/// reading BadInput for what is wrong with the file, when writing always Refused.
class CSqliteDatabase {
public:
    enum class enmAccess : std::uint8_t {
        Read,      ///< nothing is written, but a lock keeps others from writing meanwhile
        ReadAlone, ///< the same without a lock: for a file that nobody writes into
        ReadCopy,  ///< of a private copy, whose unfinished business may be cleared up
        Write,     ///< into a new, empty file that nobody else knows
    };

    /// Opens path, which errors call name.
    CSqliteDatabase(const std::string& path, std::string name, enmAccess access);
    ~CSqliteDatabase();
    CSqliteDatabase(const CSqliteDatabase&) = delete;
    CSqliteDatabase& operator=(const CSqliteDatabase&) = delete;

    const std::string& GetName() const { return m_name; }

    /// Bytes of the file with what its log adds. Damage and malice may link its pages in circles: nothing that it is
    /// made to hold can be more than this.
    std::int64_t GetSize() const;

    void Execute(const std::string& sql);

    /// Ends the connection and tells what went wrong with that; the destructor can't.
    void Close();

    [[noreturn]] void Fail(int code) const;

private:
    friend class CSqliteStatement;

    void Configure();

    std::string m_name;
    sqlite3* m_connection = nullptr;
    enmAccess m_access;
};

/// An identifier for SQL text: in double quotes, inner ones doubled.
std::string Quoted(std::string_view identifier);

} // namespace OLMGis::ProjectIo

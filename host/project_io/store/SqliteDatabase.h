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

/// The type in which a value is stored.
enum class enmStoredType : std::uint8_t { Null, Integer, Real, Text, Blob };

/// Name of a stored type in errors: "a text".
std::string_view NameOf(enmStoredType type);

/// A prepared statement. Places of values count from 1, columns from 0, as in SQLite. Throws CFailure.
class CSqliteStatement {
public:
    CSqliteStatement(const CSqliteDatabase& database, const std::string& sql);

    /// Texts and blobs are not copied: they must stay valid until the next Step or Run.
    CSqliteStatement& BindNull(int place);
    CSqliteStatement& Bind(int place, std::int64_t value);
    CSqliteStatement& Bind(int place, double value); ///< not-a-number is stored as null
    CSqliteStatement& Bind(int place, std::string_view text);
    CSqliteStatement& Bind(int place, std::span<const std::byte> blob);

    /// Goes to the next row; false after the last one.
    bool Step();

    /// Runs a statement that gives no rows; it is then ready for the next values.
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

/// A connection to a file. Throws CFailure, whose message begins with the name of the file as the user knows it:
/// BadInput for a bad file when reading, always Refused when writing.
class CSqliteDatabase {
public:
    enum class enmAccess : std::uint8_t {
        Read,      ///< nothing is written; a lock keeps others from writing meanwhile
        ReadAlone, ///< the same without a lock, for a file that nobody writes to
        ReadCopy,  ///< of a private copy, in which SQLite may apply the log
        Write,     ///< into a new, empty file that no other program knows
    };

    /// Opens path; name: name of the file in errors.
    CSqliteDatabase(const std::string& path, std::string name, enmAccess access);
    ~CSqliteDatabase();
    CSqliteDatabase(const CSqliteDatabase&) = delete;
    CSqliteDatabase& operator=(const CSqliteDatabase&) = delete;

    const std::string& GetName() const { return m_name; }

    /// Bytes of the file and its log: an upper limit for its content, needed because the pages of a damaged file may be
    /// linked in a circle.
    std::int64_t GetSize() const;

    void Execute(const std::string& sql);

    /// Makes the content of another file available as the schema "source", for reading only. access: how that file can
    /// be read. Not within a transaction.
    void AttachSource(const std::string& path, enmAccess access);

    /// Ends writing with an error when the file grows by more than so many bytes.
    void LimitGrowth(std::int64_t bytes);

    /// Closes the connection and throws where that fails; the destructor ignores failures.
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

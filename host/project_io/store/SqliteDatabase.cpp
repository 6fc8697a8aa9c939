// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/SqliteDatabase.h"

#include "host/project_io/base/Failure.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <new>
#include <system_error>

namespace OLMGis::ProjectIo {

namespace {

/// A path as a URI, which can carry options.
std::string ToUri(const std::string& path) {
    constexpr std::string_view Plain = "/-._~ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    std::string uri = "file:";
    for (const char c : path) {
        if (Plain.find(c) != std::string_view::npos)
            uri += c;
        else
            uri += fmt::format("%{:02X}", static_cast<unsigned>(static_cast<unsigned char>(c)));
    }
    return uri;
}

/// Whether the system caused a failure and not the content of the file.
bool IsSystemMatter(int code) {
    switch (code & 0xFF) {
    case SQLITE_IOERR:
        return code != SQLITE_IOERR_SHORT_READ && code != SQLITE_IOERR_CORRUPTFS;
    case SQLITE_PERM:
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_READONLY:
    case SQLITE_FULL:
    case SQLITE_CANTOPEN:
        return true;
    default:
        return false;
    }
}

} // namespace

std::string_view NameOf(enmStoredType type) {
    switch (type) {
    case enmStoredType::Null:
        return "nothing";
    case enmStoredType::Integer:
        return "a whole number";
    case enmStoredType::Real:
        return "a number";
    case enmStoredType::Text:
        return "a text";
    case enmStoredType::Blob:
        return "binary data";
    }
    return "";
}

std::string Quoted(std::string_view identifier) {
    std::string quoted = "\"";
    for (const char c : identifier) {
        quoted += c;
        if (c == '"')
            quoted += c;
    }
    return quoted += '"';
}

void CSqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

CSqliteStatement::CSqliteStatement(const CSqliteDatabase& database, const std::string& sql) : m_database(&database) {
    sqlite3_stmt* statement = nullptr;
    Check(
        sqlite3_prepare_v2(database.m_connection, sql.c_str(), static_cast<int>(sql.size()) + 1, &statement, nullptr));
    m_statement.reset(statement);
}

void CSqliteStatement::Check(int code) const {
    if (code != SQLITE_OK)
        m_database->Fail(code);
}

CSqliteStatement& CSqliteStatement::BindNull(int place) {
    Check(sqlite3_bind_null(m_statement.get(), place));
    return *this;
}

CSqliteStatement& CSqliteStatement::Bind(int place, std::int64_t value) {
    Check(sqlite3_bind_int64(m_statement.get(), place, value));
    return *this;
}

CSqliteStatement& CSqliteStatement::Bind(int place, double value) {
    Check(sqlite3_bind_double(m_statement.get(), place, value));
    return *this;
}

CSqliteStatement& CSqliteStatement::Bind(int place, std::string_view text) {
    // SQLite reads a null pointer as a null value.
    const char* const data = text.data() == nullptr ? "" : text.data();
    Check(sqlite3_bind_text64(m_statement.get(), place, data, text.size(), SQLITE_STATIC, SQLITE_UTF8));
    return *this;
}

CSqliteStatement& CSqliteStatement::Bind(int place, std::span<const std::byte> blob) {
    Check(sqlite3_bind_blob64(m_statement.get(), place, blob.data(), blob.size(), SQLITE_STATIC));
    return *this;
}

bool CSqliteStatement::Step() {
    const int code = sqlite3_step(m_statement.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE)
        m_database->Fail(code);
    return code == SQLITE_ROW;
}

void CSqliteStatement::Run() {
    while (Step())
        ;
    Check(sqlite3_reset(m_statement.get()));
}

enmStoredType CSqliteStatement::GetType(int column) const {
    switch (sqlite3_column_type(m_statement.get(), column)) {
    case SQLITE_INTEGER:
        return enmStoredType::Integer;
    case SQLITE_FLOAT:
        return enmStoredType::Real;
    case SQLITE_TEXT:
        return enmStoredType::Text;
    case SQLITE_BLOB:
        return enmStoredType::Blob;
    default:
        return enmStoredType::Null;
    }
}

std::int64_t CSqliteStatement::GetInteger(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

double CSqliteStatement::GetReal(int column) const {
    return sqlite3_column_double(m_statement.get(), column);
}

std::string_view CSqliteStatement::GetText(int column) const {
    const void* const text = sqlite3_column_text(m_statement.get(), column);
    if (text == nullptr) {
        if (sqlite3_errcode(m_database->m_connection) == SQLITE_NOMEM)
            throw std::bad_alloc();
        return {};
    }
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return {static_cast<const char*>(text), static_cast<std::size_t>(size)};
}

std::span<const std::byte> CSqliteStatement::GetBlob(int column) const {
    const void* const blob = sqlite3_column_blob(m_statement.get(), column);
    if (blob == nullptr)
        return {};
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return {static_cast<const std::byte*>(blob), static_cast<std::size_t>(size)};
}

CSqliteDatabase::CSqliteDatabase(const std::string& path, std::string name, enmAccess access)
    : m_name(std::move(name)), m_access(access) {
    const bool isReading = access == enmAccess::Read || access == enmAccess::ReadAlone;
    std::string address = ToUri(path);
    if (access == enmAccess::ReadAlone)
        address += "?immutable=1";
    const int flags =
        (isReading ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE) | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(address.c_str(), &m_connection, flags, nullptr);
    try {
        if (code != SQLITE_OK)
            Fail(code);
        Configure();
    } catch (...) {
        sqlite3_close(m_connection);
        throw;
    }
}

CSqliteDatabase::~CSqliteDatabase() {
    sqlite3_close_v2(m_connection);
}

void CSqliteDatabase::Configure() {
    sqlite3_extended_result_codes(m_connection, 1);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
    sqlite3_limit(m_connection, SQLITE_LIMIT_ATTACHED, 0);
    // Those of other programs would be run by our own changes.
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    if (m_access == enmAccess::Write) {
        // The file replaces the old one as a whole or is discarded: no rollback within it is needed.
        Execute("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA locking_mode = EXCLUSIVE;");
        return;
    }
    // Against malicious files: views are not run, the schema is not trusted.
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    sqlite3_busy_timeout(m_connection, 3000);
    Execute("PRAGMA cell_size_check = ON; PRAGMA mmap_size = 0; PRAGMA query_only = ON; PRAGMA temp_store = MEMORY;");
}

std::int64_t CSqliteDatabase::GetSize() const {
    CSqliteStatement statement(*this, "SELECT page_count * page_size FROM pragma_page_count, pragma_page_size");
    return statement.Step() ? statement.GetInteger(0) : 0;
}

void CSqliteDatabase::Execute(const std::string& sql) {
    if (const int code = sqlite3_exec(m_connection, sql.c_str(), nullptr, nullptr, nullptr); code != SQLITE_OK)
        Fail(code);
}

void CSqliteDatabase::AttachSource(const std::string& path, enmAccess access) {
    sqlite3_limit(m_connection, SQLITE_LIMIT_ATTACHED, 1);
    // Only the private copy may be changed, by applying its log. Of other files the caller knows that nobody changes
    // them.
    const std::string address = ToUri(path) + (access == enmAccess::ReadCopy ? "" : "?immutable=1");
    CSqliteStatement(*this, "ATTACH ? AS source").Bind(1, std::string_view(address)).Run();
    // What is copied may fail, and then the statement has to leave no trace.
    Execute("PRAGMA cell_size_check = ON; PRAGMA main.journal_mode = MEMORY");
}

void CSqliteDatabase::LimitGrowth(std::int64_t bytes) {
    CSqliteStatement size(*this, "SELECT page_count, page_size FROM pragma_page_count, pragma_page_size");
    if (!size.Step())
        return;
    constexpr std::int64_t FewPages = 1000; // for tables that are nearly empty
    const std::int64_t most = size.GetInteger(0) + bytes / size.GetInteger(1) + FewPages;
    Execute(fmt::format("PRAGMA main.max_page_count = {}", most));
}

void CSqliteDatabase::Close() {
    if (const int code = sqlite3_close(m_connection); code != SQLITE_OK)
        Fail(code);
    m_connection = nullptr;
}

void CSqliteDatabase::Fail(int code) const {
    if ((code & 0xFF) == SQLITE_NOMEM)
        throw std::bad_alloc();
    const int extended = m_connection == nullptr ? code : sqlite3_extended_errcode(m_connection);
    std::string reason = m_connection == nullptr ? sqlite3_errstr(code) : sqlite3_errmsg(m_connection);
    const int system = m_connection == nullptr ? 0 : sqlite3_system_errno(m_connection);
    if (IsSystemMatter(extended) && system != 0)
        reason += fmt::format(" ({})", std::generic_category().message(system));
    if (m_access == enmAccess::Write)
        FailRefused(fmt::format("{}: cannot be written: {}", m_name, reason));
    if (IsSystemMatter(extended))
        FailRefused(fmt::format("{}: cannot be read: {}", m_name, reason));
    FailBadInput(fmt::format("{}: is damaged or not a project file: {}", m_name, reason));
}

} // namespace OLMGis::ProjectIo

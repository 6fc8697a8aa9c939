// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OLMGis::Data {
class CTextPool;
}

namespace OLMGis::ProjectIo {

class CSqliteDatabase;

/// The content of the meta table.
struct CProjectMeta {
    int m_schemaVersion = 0;
    int m_saveCounter = 0; ///< how often this file was saved, from 1
};

/// Texts shared by many rows, numbered from 1 in the order of their first use.
class CSharedTexts {
public:
    /// The number of a text of the pool. One hash look-up.
    std::int64_t GetNumber(std::uint32_t poolId);
    const std::vector<std::uint32_t>& GetPoolIds() const { return m_poolIds; }

private:
    std::unordered_map<std::uint32_t, std::int64_t> m_numbers;
    std::vector<std::uint32_t> m_poolIds;
};

/// The folder of a project file: paths in it begin there.
std::filesystem::path FolderOf(const CSqliteDatabase& database);

/// Write the active project into tables that exist already, or read it back. Throw CFailure.
void WriteMeta(CSqliteDatabase& database, int saveCounter);
void WriteSettings(CSqliteDatabase& database);
void WriteSharedTexts(CSqliteDatabase& database, const CSharedTexts& texts, const Data::CTextPool& pool);

/// Fails for another schema version than ours, naming both.
CProjectMeta ReadMeta(const CSqliteDatabase& database);
void ReadSettings(const CSqliteDatabase& database);

/// Enters the texts into the pool; returns their ids there by row of the table.
std::unordered_map<std::int64_t, std::uint32_t> ReadSharedTexts(const CSqliteDatabase& database, Data::CTextPool& pool);

} // namespace OLMGis::ProjectIo

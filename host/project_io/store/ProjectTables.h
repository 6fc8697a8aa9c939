// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace OLMGis::Data {
class CTextPool;
}

namespace OLMGis::ProjectIo {

class CSqliteDatabase;

/// What a project file says about itself.
struct CProjectMeta {
    int m_schemaVersion = 0;
    int m_saveCounter = 0; ///< how often this file was saved, from 1
};

/// Texts that many rows share, numbered from 1 in the order of their first use.
class CSharedTexts {
public:
    /// The number of a text of the pool. One hash look-up.
    std::int64_t GetNumber(std::uint32_t poolId);
    const std::vector<std::uint32_t>& GetPoolIds() const { return m_poolIds; }

private:
    std::unordered_map<std::uint32_t, std::int64_t> m_numbers;
    std::vector<std::uint32_t> m_poolIds;
};

/// These write into tables that are there, of the active project. Throw CFailure, like the way back.
void WriteMeta(CSqliteDatabase& database, int saveCounter);
void WriteSettings(CSqliteDatabase& database);
void WriteSharedTexts(CSqliteDatabase& database, const CSharedTexts& texts, const Data::CTextPool& pool);

/// Fails for another schema version than ours, telling both.
CProjectMeta ReadMeta(const CSqliteDatabase& database);
void ReadSettings(const CSqliteDatabase& database);

/// Enters the texts into the pool; answers their ids there by row of the table.
std::unordered_map<std::int64_t, std::uint32_t> ReadSharedTexts(const CSqliteDatabase& database, Data::CTextPool& pool);

} // namespace OLMGis::ProjectIo

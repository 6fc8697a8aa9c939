// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/store/ProjectFile.h"
#include "tests/support/TestProject.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>

/// A folder for one test, removed at the end.
class CTestFolder {
public:
    CTestFolder() {
        std::string path = (std::filesystem::temp_directory_path() / "drenova-test-XXXXXX").string();
        if (::mkdtemp(path.data()) == nullptr)
            ADD_FAILURE() << "no folder for the test";
        m_path = path;
    }
    ~CTestFolder() {
        std::error_code ignored;
        std::filesystem::permissions(m_path, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(m_path, ignored);
    }
    CTestFolder(const CTestFolder&) = delete;
    CTestFolder& operator=(const CTestFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::string File(std::string_view name) const { return (m_path / name).string(); }

    /// Names of all files in it, sorted, separated by blanks.
    std::string List() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_path))
            names.insert(entry.path().filename().string());
        return fmt::format("{}", fmt::join(names, " "));
    }

private:
    std::filesystem::path m_path;
};

inline std::string BytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

inline void WriteBytes(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

/// Opens a file as a GIS does: with the functions that the triggers of the spatial index need, here for a point at 0,0.
inline sqlite3* OpenAsGis(const std::string& path) {
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    const auto zero = [](sqlite3_context* context, int, sqlite3_value**) { sqlite3_result_int(context, 0); };
    for (const char* name : {"ST_IsEmpty", "ST_MinX", "ST_MaxX", "ST_MinY", "ST_MaxY"})
        sqlite3_create_function(database, name, 1, SQLITE_UTF8 | SQLITE_INNOCUOUS, nullptr, zero, nullptr, nullptr);
    return database;
}

/// Runs SQL on a file as another program would; the last value of the last row as text.
inline std::string RunSql(const std::string& path, const std::string& sql) {
    sqlite3* const database = OpenAsGis(path);
    sqlite3_exec(database, "PRAGMA synchronous = OFF", nullptr, nullptr, nullptr);
    std::string value;
    char* error = nullptr;
    const auto keep = [](void* kept, int count, char** values, char** /*names*/) {
        *static_cast<std::string*>(kept) = count > 0 && values[count - 1] != nullptr ? values[count - 1] : "null";
        return 0;
    };
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), keep, &value, &error), SQLITE_OK)
        << sql << ": " << (error != nullptr ? error : "");
    sqlite3_free(error);
    sqlite3_close(database);
    return value;
}

inline OLMGis::Topology::CTopologyStorage& ActiveTopology() {
    return *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
}

/// Everything that a project file keeps of the active project, as text: equal texts mean equal projects.
std::string DescribeProject();

/// Fills the active project with a small network of everything that can occur, different for each seed.
void FillRandomly(unsigned seed);

/// Fills the active project with two nodes, a section between them and a catchment.
void FillSmall();

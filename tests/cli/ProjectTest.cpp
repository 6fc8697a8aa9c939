// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <signal.h>
#include <string>
#include <unistd.h>

using nlohmann::json;
using testing::HasSubstr;

namespace {

class Town : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Drenova({"import", SampleNetwork(), "-o", m_project}).m_code, 0); }

    CFolder m_folder;
    const std::string m_project = m_folder / "grad čakovec.gpkg";
};

} // namespace

TEST_F(Town, InfoShowsTheContents) {
    const json info = json::parse(Drenova({"info", m_project, "--json"}).m_out);
    EXPECT_EQ(info.at("nodes"), 123);
    EXPECT_EQ(info.at("sections"), 121);
    EXPECT_EQ(info.at("catchments"), 122);
    EXPECT_EQ(info.at("crs"), "EPSG:3765");
    EXPECT_EQ(info.at("edition"), "STANDARD");
    EXPECT_NEAR(info.at("length_m"), 7763.0, 1.0); // 7763 m of streets, 54.89 ha: the sample's own description
    EXPECT_NEAR(info.at("area_ha"), 54.89, 0.005);
    EXPECT_EQ(info.at("catchment_kinds").at("household").at("catchments"), 99);
    EXPECT_EQ(info.at("calculated"), json::array());
    EXPECT_EQ(info.at("warnings"), json::array());

    EXPECT_EQ(Drenova({"run", m_project, "01_WASTE_PERCENT"}).m_code, 0);
    EXPECT_EQ(Drenova({"set", m_project, "density=", "--on", "catchments", "--names", "MAIN-01"}).m_code, 0);
    const CEnded after = Drenova({"info", m_project, "--json"});
    EXPECT_EQ(json::parse(after.m_out).at("calculated").at(0).at("key"), "FLOW_WASTE_PER_S");
    EXPECT_EQ(json::parse(after.m_out).at("calculated").at(0).at("count"), 121);
    EXPECT_THAT(after.m_err, HasSubstr("MAIN-01"));
    EXPECT_EQ(Drenova({"info", m_project, "--quiet"}).m_err, "");
}

/// What is set comes back: numbers to the last bit, texts as they were, null as null in every form.
TEST_F(Town, SetAndGetAgree) {
    EXPECT_EQ(Drenova({"set", m_project, "FLOW_USER=0.1", "PIPE_MARK=Beton, \"Ø\" 300", "LEVEL_LINE_POSITION=2",
                       "--names", "QUAY-02,QUAY-01"})
                  .m_code,
              0);
    EXPECT_EQ(Drenova({"set", m_project, "FLOW_USER=", "--names", "QUAY-02"}).m_code, 0);
    const std::vector<std::string> ask{"get",     m_project, "FLOW_USER", "PIPE_MARK", "LEVEL_LINE_POSITION",
                                       "--names", "QUAY-02", "--names",   "QUAY-01",   "--format"};
    const auto asked = [&ask](const char* format) {
        auto arguments = ask;
        arguments.emplace_back(format);
        return Drenova(arguments).m_out;
    };
    const json rows = json::parse(asked("json"));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows.at(0).at("name"), "QUAY-02");
    EXPECT_TRUE(rows.at(0).at("FLOW_USER").is_null());
    EXPECT_EQ(rows.at(1).at("FLOW_USER"), 0.1);
    EXPECT_EQ(rows.at(1).at("PIPE_MARK"), "Beton, \"Ø\" 300");
    EXPECT_EQ(rows.at(1).at("LEVEL_LINE_POSITION"), 2);
    EXPECT_THAT(asked("csv"), HasSubstr("name,guid,FLOW_USER,PIPE_MARK,LEVEL_LINE_POSITION\nQUAY-02,"));
    EXPECT_THAT(asked("csv"), HasSubstr(",,\"Beton, \"\"Ø\"\" 300\",2\nQUAY-01,"));
    EXPECT_EQ(asked("table"), "name     FLOW_USER  PIPE_MARK       LEVEL_LINE_POSITION\n"
                              "              m³/s\n"
                              "QUAY-02             Beton, \"Ø\" 300                    2\n"
                              "QUAY-01   0.100000  Beton, \"Ø\" 300                    2\n");
}

TEST_F(Town, LoadsTablesWholeOrNotAtAll) {
    const std::string good = m_folder.Write("good.csv", "name,FLOW_USER\nQUAY-01,0.25\nMAIN-01,\n");
    EXPECT_EQ(Drenova({"load", m_project, good}).m_code, 0);
    const std::string before = ReadFile(m_project);
    const std::string bad = m_folder.Write("bad.csv", "name,FLOW_USER\nQUAY-01,0.5\nNOWHERE,1\n");
    const CEnded ended = Drenova({"load", m_project, bad});
    EXPECT_EQ(ended.m_code, 3);
    EXPECT_THAT(ended.m_err, HasSubstr("bad.csv: line 3"));
    EXPECT_TRUE(ReadFile(m_project) == before);
    EXPECT_EQ(json::parse(Drenova({"get", m_project, "FLOW_USER", "--names", "QUAY-01", "--format", "json"}).m_out)
                  .at(0)
                  .at("FLOW_USER"),
              0.25);
}

/// An exchange file that was exported is imported to the same project, by file and by pipe.
TEST_F(Town, ExchangeFileComesBack) {
    const std::string exchange = m_folder / "town.geojson";
    EXPECT_EQ(Drenova({"export", m_project, "geojson", "-o", exchange}).m_code, 0);
    EXPECT_EQ(Drenova({"export", m_project, "geojson", "-o", "-"}).m_out, ReadFile(exchange));
    EXPECT_EQ(Drenova({"import", exchange, "-o", m_folder / "again.gpkg"}).m_code, 0);
    EXPECT_TRUE(ReadFile(m_folder / "again.gpkg") == ReadFile(m_project));
    const int descriptor = ::open(exchange.c_str(), O_RDONLY);
    CStart start{{"import", "-", "--format", "geojson", "-o", m_folder / "piped.gpkg"}};
    start.m_input = descriptor;
    EXPECT_EQ(Drenova(start).m_code, 0);
    ::close(descriptor);
    EXPECT_TRUE(ReadFile(m_folder / "piped.gpkg") == ReadFile(m_project));
}

/// An import that fails leaves an existing project as it was, and makes none.
TEST_F(Town, FailedImportTouchesNothing) {
    const std::string before = ReadFile(m_project);
    const std::string cut = m_folder.Write("cut.geojson", ReadFile(SampleNetwork()).substr(0, 20000));
    EXPECT_EQ(Drenova({"import", cut, "-o", m_project, "--replace"}).m_code, 3);
    EXPECT_EQ(Drenova({"import", cut, "-o", m_folder / "new.gpkg"}).m_code, 3);
    EXPECT_TRUE(ReadFile(m_project) == before);
    EXPECT_EQ(m_folder.List(), "cut.geojson grad čakovec.gpkg");
    EXPECT_EQ(Drenova({"import", SampleNetwork(), "-o", m_project, "--replace"}).m_code, 0);
    EXPECT_TRUE(ReadFile(m_project) == before);
}

/// Numbers have a point in every country, and a reader that has seen enough is no error; a full disk is one.
TEST_F(Town, OutputWorksInAnySurroundings) {
    const std::vector<std::string> arguments{"get", m_project, "SECTION_SLOPE", "--format", "csv"};
    const std::string expected = Drenova(arguments).m_out;
    CStart comma{arguments, {{"LC_ALL", "de_DE.UTF-8"}, {"LANG", "de_DE.UTF-8"}, {"LC_NUMERIC", "de_DE.UTF-8"}}};
    EXPECT_EQ(Drenova(comma).m_out, expected);
    CStart deaf{arguments};
    deaf.m_isDeaf = true;
    const CEnded ended = Drenova(deaf);
    EXPECT_EQ(ended.m_code, 0);
    EXPECT_EQ(ended.m_err, "");
    CStart full{arguments};
    full.m_outputTo = "/dev/full";
    const CEnded refused = Drenova(full);
    EXPECT_EQ(refused.m_code, 4);
    EXPECT_THAT(refused.m_err, HasSubstr("standard output"));
}

/// An export that fails half-way leaves a former file as it was.
TEST_F(Town, ExportReplacesAFileWhole) {
    const std::string file = m_folder.Write("old.csv", "old");
    EXPECT_EQ(Drenova({"export", m_project, "csv", "-o", file, "--replace"}).m_code, 0);
    EXPECT_THAT(ReadFile(file), HasSubstr("name,guid,from,to,"));
    EXPECT_EQ(Drenova({"export", m_project, "csv", "-o", "/dev/full"}).m_code, 4);
    EXPECT_EQ(m_folder.List(), "grad čakovec.gpkg old.csv");
}

/// Ctrl+C in the middle of reading: the program ends with 130 and makes nothing. The pipe takes less than the file, so
/// that the program is reading by the time the first part is through.
TEST(Interrupted, ImportMakesNothing) {
    const CFolder folder;
    ::signal(SIGPIPE, SIG_IGN); // a program that is gone too early fails the test, not the tests
    const std::string text = ReadFile(SampleNetwork());
    const std::size_t capacity = 1 << 16;
    const std::size_t half = capacity + capacity / 2;
    ASSERT_GT(text.size(), half);
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    CStart start{{"import", "-", "--format", "geojson", "-o", folder / "new.gpkg"}};
    start.m_input = ends[0];
    CRunning running(start);
    ::close(ends[0]);
    const std::string_view first = std::string_view(text).substr(0, half);
    for (std::size_t done = 0; done < first.size();) {
        const ssize_t written = ::write(ends[1], first.data() + done, first.size() - done);
        ASSERT_GT(written, 0);
        done += static_cast<std::size_t>(written);
    }
    ::kill(running.GetId(), SIGINT);
    const CEnded ended = running.Wait();
    ::close(ends[1]);
    EXPECT_EQ(ended.m_code, 130);
    EXPECT_THAT(ended.m_err, HasSubstr("interrupted"));
    EXPECT_EQ(folder.List(), "");
}

/// The same arguments give the same network, to the byte; another seed gives another.
TEST(Generated, IsTheSameForTheSameArguments) {
    const CFolder folder;
    const auto generate = [&folder](const char* seed, const char* name) {
        EXPECT_EQ(
            Drenova({"generate", "--shape", "city", "--sections", "500", "--seed", seed, "-o", folder / name}).m_code,
            0);
        return ReadFile(folder / name);
    };
    const std::string first = generate("7", "a.gpkg");
    EXPECT_TRUE(first == generate("7", "b.gpkg"));
    EXPECT_FALSE(first == generate("8", "c.gpkg"));
    EXPECT_EQ(json::parse(Drenova({"info", folder / "a.gpkg", "--json"}).m_out).at("sections"), 500);
    EXPECT_EQ(Drenova({"run", folder / "a.gpkg", "01_WASTE_PERCENT"}).m_code, 0);
}

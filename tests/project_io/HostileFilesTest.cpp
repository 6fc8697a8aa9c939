// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
//
// Files that try to fill the memory, to keep the reader busy for ever or to break it: refused, or read within limits.
#include "host/project_io/tables/CatalogCsv.h"
#include "host/project_io/tables/CsvLoad.h"
#include "tests/project_io/ExchangeText.h"
#include "tests/project_io/InpTestProject.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>

#include <streambuf>

using namespace OLMGis;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

constexpr std::size_t Mebibyte = std::size_t{1} << 20;

/// A text, then one byte over and over without an end.
class CEndless final : public std::streambuf {
public:
    CEndless(std::string text, char byte) : m_bytes(std::move(text)), m_rest(65536, byte) {
        setg(m_bytes.data(), m_bytes.data(), m_bytes.data() + m_bytes.size());
    }

private:
    int_type underflow() override {
        setg(m_rest.data(), m_rest.data(), m_rest.data() + m_rest.size());
        return traits_type::to_int_type(m_rest[0]);
    }

    std::string m_bytes;
    std::string m_rest;
};

std::string MessageOf(const auto& result) {
    return result ? "no error" : result.GetError().message;
}

std::string LoadMessage(std::streambuf& buffer) {
    const CTestProject project;
    FillSmall();
    std::istream stream(&buffer);
    return MessageOf(ProjectIo::LoadCsv(stream, "table.csv", Data::enmEntityKind::Node));
}

} // namespace

TEST(HostileExchange, EndlessValuesAreRefused) {
    const std::string head = R"({"type":"FeatureCollection","features":[{"type":"Feature",)";
    const std::pair<std::string, char> cases[] = {
        {head + R"("properties":{"name":")", 'x'},
        {head + R"("properties":{")", '\\'},
        {head + R"("geometry":{"type":"Point","coordinates":[)", '1'},
        {head + R"("geometry":{"type":"Point","coordinates":[0.)", '0'},
        {head, ' '},
    };
    for (const auto& [text, byte] : cases) {
        const CTestProject project;
        CEndless buffer(text, byte);
        std::istream stream(&buffer);
        EXPECT_THAT(MessageOf(ProjectIo::ImportExchange(stream, "net.geojson")), StartsWith("net.geojson: ")) << text;
    }
    const CTestProject project;
    CEndless buffer(head + R"("properties":{"name":")", 'x');
    std::istream stream(&buffer);
    EXPECT_EQ(
        MessageOf(ProjectIo::ImportExchange(stream, "net.geojson")),
        "net.geojson: feature 1: found a value of more than 1048576 bytes, expected a shorter one (is a quotation "
        "mark left open?)");
}

TEST(HostileExchange, FeaturesOfTooManyTextsAreRefused) {
    const CTestProject project;
    std::string list;
    for (int i = 0; i < 20; ++i)
        list += (i == 0 ? "\"" : ",\"") + std::string(Mebibyte, 'x') + "\"";
    EXPECT_EQ(MessageOf(ImportText(Collection(Feature("\"layer\":\"catchment\",\"kinds\":[" + list + "]")))),
              "net.geojson: feature 1: found texts of more than 16777216 bytes, expected fewer");
}

TEST(HostileExchange, WhatIsDeepOrHugeIsReportedInAFewWords) {
    const std::string deep(100'000, '[');
    const std::string cases[] = {
        deep,
        Collection(Feature("\"layer\":" + deep)),
        Collection(Feature("\"layer\":\"node\",\"name\":\"A\"", "{\"type\":\"Point\",\"coordinates\":" + deep)),
        Collection(NodeFeature("A", "1e999", "0")),
        Collection(NodeFeature("A", "1", "0", ",\"TERRAIN_1\":" + std::string(100'000, '9'))),
        Collection(NodeFeature("A", "1", "0", ",\"" + std::string(900'000, 'K') + "\":1")),
        Collection(NodeFeature(std::string(900'000, 'n') + "\x1b", "1", "0")),
    };
    for (const std::string& text : cases) {
        const CTestProject project;
        const std::string message = MessageOf(ImportText(text));
        EXPECT_THAT(message, StartsWith("net.geojson: "));
        EXPECT_LT(message.size(), 600U);
        EXPECT_TRUE(ActiveTopology().GetNodes().empty());
    }
}

TEST(HostileTable, EndlessCellsAndRowsAreRefused) {
    CEndless cell("name,TERRAIN_1\n\"", 'x');
    EXPECT_THAT(LoadMessage(cell), StartsWith("table.csv: line 2: found a field of more than 1048576 bytes"));
    CEndless head("name,", 'x');
    EXPECT_THAT(LoadMessage(head), StartsWith("table.csv: line 1: found a field of more than 1048576 bytes"));
    CEndless columns("name", ',');
    EXPECT_EQ(LoadMessage(columns), "table.csv: line 1: found more than 1000 fields, expected fewer");
    CEndless zeros("", '\0');
    EXPECT_EQ(LoadMessage(zeros), "table.csv: line 1: found a character of code 0, expected text");

    std::string row = "name";
    for (int i = 0; i < 20; ++i)
        row += ",TERRAIN_" + std::to_string(i);
    row += "\n";
    for (int i = 0; i < 20; ++i)
        row += std::string(Mebibyte - 1, 'x') + ",";
    std::istringstream stream(row);
    EXPECT_EQ(MessageOf(ProjectIo::ImportCatalogCsv(stream, "pipes.csv")).substr(0, 9), "pipes.csv");
    std::stringbuf rows(
        "name,TERRAIN_1,TERRAIN_2,TERRAIN_3,TERRAIN_4,TERRAIN_5,TERRAIN_6,TERRAIN_7,TERRAIN_8,TERRAIN_9,"
        "TERRAIN_10,MANHOLE_ID,MAIN_SECT_OUT,guid,MANHOLE_H1,MANHOLE_H2,MANHOLE_RT\n" +
        row.substr(row.find('\n') + 1));
    EXPECT_THAT(LoadMessage(rows),
                StartsWith("table.csv: line 2: found a row of more than 16777216 bytes, expected a shorter one"));
}

TEST(HostileInp, ManyHeightsOfALongCurveDoNotMultiply) {
    constexpr int Points = 10000;
    constexpr int Conduits = 400; // of them 300 make three million points
    std::string text = "[JUNCTIONS]\nA 1\nB 0\n[CURVES]\nk SHAPE 0 1\n";
    for (int i = 1; i < Points; ++i)
        text += "k " + std::to_string(i / double{Points}) + " 1\n";
    text += "[CONDUITS]\n";
    for (int i = 0; i < Conduits; ++i)
        text += "c" + std::to_string(i) + " A B 10 0.013 0 0\n";
    text += "[XSECTIONS]\n";
    for (int i = 0; i < Conduits; ++i)
        text += "c" + std::to_string(i) + " CUSTOM " + std::to_string(1 + 0.001 * i) + " k\n";
    const CInpTestProject net(text);
    ASSERT_TRUE(net.IsImported()) << net.Message();
    EXPECT_EQ(net.Summary().m_pipeCount, 300U);
    EXPECT_EQ(net.Noted("conduits of shape CUSTOM, left without a pipe"), 100U);
}

TEST(HostileInp, PipesBeyondAllMeasureGoThroughAnExchangeFile) {
    const std::string text = "[JUNCTIONS]\nA 1\nB 0\n[CONDUITS]\nc A B 10 0.99 0 0\nd A B 10 0.15 0 0\n"
                             "[XSECTIONS]\nc CIRCULAR 9000\nd CIRCULAR 0.0001\n";
    std::string exported;
    {
        const CInpTestProject net(text);
        ASSERT_TRUE(net.IsImported()) << net.Message();
        exported = ExportText();
    }
    const CTestProject project;
    EXPECT_EQ(ImportGood(exported).m_pipeCount, 2U);
    EXPECT_EQ(ExportText(), exported);
}

namespace {

/// A page of SQLite's b-trees, in its documented format.
class CPage {
public:
    CPage(std::string& file, std::size_t number)
        : m_file(file), m_size(Number(file, 16, 2)), m_start((number - 1) * m_size) {}

    bool IsInner() const { return m_file[m_start] == 5; }
    std::size_t GetCellCount() const { return Number(m_file, m_start + 3, 2); }
    std::size_t GetChild(std::size_t cell) const { return Number(m_file, PlaceOfChild(cell), 4); }

    void CopyFrom(const CPage& other) { m_file.replace(m_start, m_size, m_file.substr(other.m_start, m_size)); }

    void SetAllChildren(std::size_t page) {
        for (std::size_t cell = 0; cell <= GetCellCount(); ++cell)
            for (std::size_t i = 0; i < 4; ++i)
                m_file[PlaceOfChild(cell) + i] = static_cast<char>((page >> (24 - 8 * i)) & 0xFFU);
    }

private:
    static std::size_t Number(const std::string& file, std::size_t place, std::size_t bytes) {
        std::size_t number = 0;
        for (std::size_t i = 0; i < bytes; ++i)
            number = number * 256 + static_cast<unsigned char>(file[place + i]);
        return number;
    }
    /// After the last cell comes the rightmost child.
    std::size_t PlaceOfChild(std::size_t cell) const {
        constexpr std::size_t Rightmost = 8;
        constexpr std::size_t Head = 12;
        return m_start + (cell == GetCellCount() ? Rightmost : Number(m_file, m_start + Head + 2 * cell, 2));
    }

    std::string& m_file;
    std::size_t m_size;
    std::size_t m_start;
};

} // namespace

TEST(HostileProject, WhatNoPipeCanHaveIsRefused) {
    const CTestFolder folder;
    const std::string path = folder.File("small.gpkg");
    const std::string good = folder.File("good.gpkg");
    {
        const CTestProject project;
        FillSmall();
        auto& pipes = *Topology::CCatalogManager::Instance()->GetCatalog("PIPE", 1);
        const auto group = pipes.AddGroup("g", "beds").Value();
        ASSERT_TRUE(pipes.AddPipe(*group, "p", "bed",
                                  {Topology::enmPipeShape::Table, 9, 9, 0, 1, "", 0, {{0, 1}, {4, 9}, {9, 9}}}));
        ASSERT_TRUE(ProjectIo::CProjectFile::Create(good, false));
    }
    const struct {
        const char* sql;
        const char* message;
    } cases[] = {
        {"UPDATE drenova_catalog SET inner_width = 9e999 WHERE guid = 'p'", "found inf, expected a finite number"},
        {"UPDATE drenova_catalog SET roughness = -1 WHERE guid = 'p'", "found -1, expected a finite number"},
        {"DELETE FROM drenova_catalog_shapes WHERE height > 0", "found a table shape of 1 points, expected 2"},
        {"UPDATE drenova_catalog_shapes SET height = 10 - height", "below the one before it"},
        {"UPDATE drenova_catalog SET parent = id WHERE guid = 'p'", "as its group, expected a group"},
        {"UPDATE drenova_catalog SET parent = (SELECT id FROM drenova_catalog WHERE guid = 'p') WHERE guid = 'g'",
         "as its group, expected a group"},
    };
    for (const auto& c : cases) {
        std::filesystem::copy_file(good, path, std::filesystem::copy_options::overwrite_existing);
        RunSql(path, c.sql);
        const CTestProject project;
        EXPECT_THAT(MessageOf(ProjectIo::CProjectFile::Open(path)), HasSubstr(c.message)) << c.sql;
    }
}

TEST(HostileProject, PagesThatAreEverywhereDoNotMultiplyTheRows) {
    const CTestFolder folder;
    const std::string path = folder.File("net.gpkg");
    {
        const CTestProject project;
        for (int i = 0; i < 3000; ++i)
            ASSERT_TRUE(ActiveTopology().AddNode("g" + std::to_string(i), "n" + std::to_string(i), {1.0 * i, 0}));
        ASSERT_TRUE(ProjectIo::CProjectFile::Create(path, false));
    }
    const auto root = std::stoul(RunSql(path, "SELECT rootpage FROM sqlite_schema WHERE name = 'nodes'"));
    std::string bytes = BytesOf(path);
    CPage top(bytes, root);
    ASSERT_TRUE(top.IsInner());
    ASSERT_GT(top.GetCellCount(), 20U);
    // Three levels of pages in which all cells lead to the same leaf: a hundred million rows in half a megabyte.
    const std::size_t pages[] = {top.GetChild(0), top.GetChild(1), top.GetChild(2), top.GetChild(3)};
    for (std::size_t i = 0; i < 3; ++i) {
        CPage inner(bytes, pages[i]);
        inner.CopyFrom(top);
        inner.SetAllChildren(pages[i + 1]);
    }
    top.SetAllChildren(pages[0]);
    WriteBytes(path, bytes);
    const CTestProject project;
    EXPECT_THAT(MessageOf(ProjectIo::CProjectFile::Open(path)), HasSubstr("found more rows than its "));
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/network_tables/TableImport.h"

#include "host/gis_core/DataConfiguration.h"
#include "host/project_io/network_tables/LineText.h"
#include "host/project_io/network_tables/TableTemplate.h"
#include "host/project_io/tables/TableReader.h"
#include "host/project_io/tables/TableText.h"
#include "tests/project_io/ExchangeText.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using Data::enmEntityKind;
using ::testing::HasSubstr;

namespace {

struct CTexts {
    std::string m_nodes;
    std::string m_sections;
    std::string m_catchments{}; ///< empty for no table
};

Utility::Result<CImportSummary> Import(const CTexts& texts, const std::string& map = "", const std::string& crs = "") {
    std::istringstream nodes(texts.m_nodes);
    std::istringstream sections(texts.m_sections);
    std::istringstream catchments(texts.m_catchments);
    std::optional<CColumnMap> columns;
    if (!map.empty()) {
        std::istringstream json(map);
        auto read = CColumnMap::Read(json, "map.json");
        if (!read)
            return read.GetError();
        columns = std::move(read.Value());
    }
    CNetworkTables tables{{&nodes, "n.csv"}, {&sections, "s.csv"}, {nullptr, "c.csv"}, crs, nullptr};
    if (!texts.m_catchments.empty())
        tables.m_catchments.m_stream = &catchments;
    tables.m_map = columns ? &*columns : nullptr;
    return ImportTables(tables);
}

/// The project of good tables as an exchange file.
std::string Exported(const CTexts& texts, const std::string& map = "") {
    CTestProject project;
    const auto summary = Import(texts, map);
    EXPECT_TRUE(summary) << (summary ? "" : summary.GetError().message);
    return summary ? ExportText() : "";
}

std::string MessageOf(const CTexts& texts, const std::string& map = "", const std::string& crs = "") {
    CTestProject project;
    const auto summary = Import(texts, map, crs);
    EXPECT_TRUE(ActiveTopology().GetNodes().empty() || summary) << "nothing half-made";
    return summary ? "no error" : summary.GetError().message;
}

/// Comma and point become the given signs; the texts below have neither in names.
std::string Written(std::string text, char separator, char decimal) {
    for (char& each : text)
        each = each == ',' ? separator : each == '.' ? decimal : each;
    return text;
}

const CTexts Plain = {"name,x,y,terrain,MANHOLE_H1,MAIN_SECT_OUT\n"
                      "M1,100.5,200.25,121.5,0.25,\n"
                      "M2,160,200,121.1,,Sč\n"
                      "OUT,220,200,,,\n"
                      "REL,160,150,,,\n",
                      "name,from,to,length,LEVEL_LINE_0,LEVEL_LINE_POSITION,pipe,PIPE_ROUGHNESS,line\n"
                      "S1,M1,M2,60.125,119.5,0,Concrete DN 300,0.5,\n"
                      "Sč,M2,OUT,,119.2,0,,0.5,LINESTRING (190 210)\n"
                      "S3,M2,REL,50,,,,,\n",
                      "section,kinds,area,coefficient,density\n"
                      "S1,rain household,1.2,0.6,90.5\n"
                      "Sč,rain,0.4,,\n"};

} // namespace

TEST(TableImport, EverySeparatorAndDecimalSignGivesTheProjectOfTheExchangeFile) {
    CTestProject project;
    ImportGood(Collection(
        NodeFeature("M1", "100.5", "200.25", R"(,"terrain":{"1":121.5},"MANHOLE_H1":0.25)") + "," +
        NodeFeature("M2", "160", "200", R"(,"terrain":{"1":121.1})") + "," + NodeFeature("OUT", "220", "200") + "," +
        NodeFeature("REL", "160", "150") + "," +
        Feature(R"("layer":"section","name":"S1","from":"M1","to":"M2","length":60.125,"LEVEL_LINE_0":119.5,)"
                R"("LEVEL_LINE_POSITION":0,"pipe":"Concrete DN 300","PIPE_ROUGHNESS":0.5)",
                R"({"type":"LineString","coordinates":[[100.5,200.25],[160,200]]})") +
        "," +
        Feature(R"("layer":"section","name":"Sč","from":"M2","to":"OUT","LEVEL_LINE_0":119.2,)"
                R"("LEVEL_LINE_POSITION":0,"PIPE_ROUGHNESS":0.5)",
                R"({"type":"LineString","coordinates":[[160,200],[190,210],[220,200]]})") +
        "," +
        Feature(R"("layer":"section","name":"S3","from":"M2","to":"REL","length":50)",
                R"({"type":"LineString","coordinates":[[160,200],[160,150]]})") +
        "," +
        Feature(R"("layer":"catchment","section":"S1","kinds":["rain","household"],"area":1.2,"coefficient":0.6,)"
                R"("density":90.5)") +
        "," + Feature(R"("layer":"catchment","section":"Sč","kinds":["rain"],"area":0.4)") + "," +
        Feature(R"("layer":"main_outlet","node":"M2","section":"Sč")")));
    const std::string expected = ExportText();
    const auto in = [](char separator, char decimal) {
        return CTexts{Written(Plain.m_nodes, separator, decimal), Written(Plain.m_sections, separator, decimal),
                      Written(Plain.m_catchments, separator, decimal)};
    };
    EXPECT_EQ(Exported(Plain), expected);
    for (const auto& [separator, decimal] : {std::pair{';', '.'}, {';', ','}, {'\t', '.'}, {'\t', ','}})
        EXPECT_EQ(Exported(in(separator, decimal)), expected) << separator << decimal;

    CTexts windows = in(';', ',');
    for (std::string* text : {&windows.m_nodes, &windows.m_sections, &windows.m_catchments})
        for (std::size_t at = text->find("č"); at != std::string::npos; at = text->find("č"))
            text->replace(at, 2, "\xE8");
    EXPECT_EQ(Exported(windows), expected);

    const CTexts labels = {
        "Naziv;Kota terena [cm];Y koordinata;x KOORDINATA;Visina okna H1, poklopac i prsteni [mm];Glavna izlazna "
        "dionica\n"
        "M1;12150;200,25;100,5;250;\nM2;12110;200;160;;Sč\nOUT;;200;220;;\nREL;;150;160;;\n;;;;;\n",
        "Ad;Memba düğümü;Mansap düğümü;plandaki uzunluk (km);Level line at the upper end;level_line_position;Conductă;"
        "Hrapavost cijevi [cm];line\n"
        "S1;M1;M2;0,060125;119,5;0;Concrete DN 300;0,05;\nSč;M2;OUT;;119,2;0;;0,05;MULTIPOINT ((190 210))\n"
        "S3;M2;REL;0,05;;;;;\n",
        "участък;Kinds of catchment;Водосборна площ [m²];Koeficijent otjecanja [%];Population density\n"
        "S1;дъжд+битова;12000;60;90,5\nSč;Yağmur;4000;;\n"};
    EXPECT_EQ(Exported(labels), expected);

    CTexts mapped = Plain;
    mapped.m_nodes.replace(0, 8, "Nr,R,H");
    EXPECT_EQ(Exported(mapped, R"({"Nr": "name", "R": "x [m]", "H": "y", "Other": null})"), expected);
}

TEST(TableImport, ReportsHowEachTableWasRead) {
    CTestProject project;
    const auto summary =
        Import({"Naziv;x;y;terrain [cm];Note\nM1;0,5;0;12150;\n", "name,from,to\n"}, R"({"Note": null})", "EPSG:3765");
    ASSERT_TRUE(summary) << summary.GetError().message;
    EXPECT_THAT(summary->m_readings,
                ::testing::ElementsAre(
                    "n.csv: separator semicolon, decimal comma (line 2: 0,5), UTF-8; columns: \"Naziv\" is name, "
                    "\"terrain [cm]\" is TERRAIN_1, converted from cm to m, \"Note\" left out",
                    "s.csv: separator comma, no number with decimals, UTF-8"));
    EXPECT_THAT(ExportText(), HasSubstr("EPSG:3765"));
}

TEST(TableImport, FaultsNameFileLineAndColumnAndLeaveTheProjectEmpty) {
    const std::string nodes = "name;x;y\nA;0;0\nB;50;0\n";
    const std::string sections = "name;from;to\nS;A;B\n";
    const struct {
        CTexts m_texts;
        std::string m_message;
    } cases[] = {
        {{"name;x\nA;1\n", sections}, "n.csv: line 1: found no column y"},
        {{"name;x;y;terain\n", sections},
         "n.csv: line 1, column \"terain\": found \"terain\", expected the key or "
         "label of a column of nodes, did you mean terrain?"},
        {{"name;x [ft];y\n", sections}, "n.csv: line 1, column \"x [ft]\": found the unit \"ft\", expected m"},
        {{"name;x;y;terrain;TERRAIN_1\n", sections}, "found TERRAIN_1 in this column and in \"terrain\""},
        {{nodes + "A;1;1\n", sections}, "n.csv: line 4: found a name that n.csv: line 2 has already"},
        {{nodes + ";1;1\n", sections}, "n.csv: line 4: found no name"},
        {{nodes + "C;1;\n", sections}, "n.csv: line 4, column y: found an empty cell, expected a number"},
        {{nodes + "C;1;north\n", sections}, "n.csv: line 4, column y: found \"north\", expected a number"},
        {{nodes + "C;1;2;3\n", sections}, "n.csv: line 4: found 4 fields, expected 3"},
        {{"name,x,y\nA,1,5,2\n", sections}, "(numbers with a decimal comma need quotation marks"},
        {{"name;x;y\nA;1,5;2.5\nB;9;9\n", sections},
         "n.csv: line 2, column y: found \"2.5\", expected a decimal comma"},
        {{nodes, sections + "T;A;\n"}, "s.csv: line 3, column to: found an empty cell, expected the name of a node"},
        {{nodes, sections + "T;A;Z\n"}, "s.csv: line 3, column to: found \"Z\", expected the name of a node"},
        {{nodes, "name;Od čvora;to\nT;Z;B\n"}, "s.csv: line 2, column Od čvora: found \"Z\""},
        {{nodes, sections + "T;A;A\n"}, "s.csv: line 3, column to: section T: leads from a node to itself"},
        {{nodes, "name;from;to;length [cm]\nS;A;B;-500\n"},
         "s.csv: line 2, column length [cm]: section S: length -5, expected 0 to 1000000 m"},
        {{nodes, "name;from;to;pipe\nS;A;B;None\n"}, "s.csv: line 2, column pipe: found \"None\", expected the name"},
        {{nodes, "name;from;to;line\nS;A;B;1 2\n"}, "s.csv: line 2, column line: found \"1 2\", expected points as"},
        {{nodes, "name;from;to;line\nS;A;B;LINESTRING (50 0, 0 0)\n"},
         "found a line from the second node to the first"},
        {{"name;x;y\nA;0;0\nB;;\n", sections}, "s.csv: line 2: found neither a geometry nor a length"},
        {{nodes, sections, "section;kinds;area\nX;rain;1\n"}, "c.csv: line 2, column section: found \"X\", expected"},
        {{nodes, sections, "section;kinds;area\nS;snow;1\n"}, "c.csv: line 2, column kinds: found \"snow\", expected"},
        {{nodes, sections, "section;kinds;area\nS;;1\n"}, "c.csv: line 2, column kinds: found an empty cell"},
        {{nodes, sections, "section;kinds;area\nS;rain;\n"}, "c.csv: line 2, column area: found an empty cell"},
        {{nodes, sections, "section;kinds;area\nS;rain;1\nS;rain;\"2\n"}, "c.csv: line 3: found a quotation mark that"},
        {{"name;x;y;MAIN_SECT_OUT\nA;0;0;X\nB;50;0;\n", sections},
         "n.csv: line 2, column section: found \"X\", expected the name or GUID of a section"},
        {{"", sections}, "n.csv: the file is empty"},
        {{"name;x;y\nA;\x81;0\n", sections}, "n.csv: line 2: found the byte 81, expected a text in UTF-8 or"},
    };
    for (const auto& each : cases) {
        const std::string message = MessageOf(each.m_texts);
        EXPECT_THAT(message, HasSubstr(each.m_message)) << each.m_texts.m_nodes << each.m_texts.m_sections;
        EXPECT_EQ(message.find("found 2 faults"), std::string::npos) << "one fault is one: " << message;
    }
    EXPECT_THAT(MessageOf({nodes, sections}, R"({"x": "X1"})"),
                HasSubstr("column \"x\": found \"X1\" for it in map.json"));
    EXPECT_THAT(MessageOf({nodes, sections}, R"(["x"])"), HasSubstr("map.json: found no object"));
    EXPECT_THAT(MessageOf({nodes, sections}, "", "EPSG:4326"), HasSubstr("coordinates in degrees"));
    std::string many = sections;
    for (int i = 0; i < 25; ++i)
        many += "T;A;Z\n";
    EXPECT_THAT(MessageOf({nodes, many}), HasSubstr("n.csv, s.csv: found 25 faults, of which these are the first 20. "
                                                    "Correct the tables; nothing was imported:\n  s.csv: line 3, "));
}

TEST(TableImport, TheTemplateIsReadBackAndNeverOverwritten) {
    const std::string folder = ::testing::TempDir() + "drenova-template";
    std::filesystem::remove_all(folder);
    const auto written = WriteTableTemplate(folder);
    ASSERT_TRUE(written) << written.GetError().message;
    std::vector<std::string> texts;
    for (const std::string& path : written.Value())
        texts.emplace_back(std::istreambuf_iterator<char>(std::ifstream(path).rdbuf()),
                           std::istreambuf_iterator<char>());
    ASSERT_EQ(texts.size(), 4U);
    CTestProject project;
    const auto summary = Import({texts[0], texts[1], texts[2]});
    EXPECT_TRUE(summary) << summary.GetError().message;
    EXPECT_THAT(texts[3], HasSubstr("FLOW_INTIME          Inlet time; 0 to 10000 [min]"));
    EXPECT_FALSE(WriteTableTemplate(folder));
    std::filesystem::remove(written.Value().front());
    EXPECT_THAT(WriteTableTemplate(folder).GetError().message, HasSubstr("exists already"));
    EXPECT_FALSE(std::filesystem::exists(written.Value().front())) << "all or nothing";
    std::filesystem::remove_all(folder);
}

TEST(UnitConversion, KnowsEveryUnitOfAnAttributeAndConvertsExactly) {
    for (const auto& definition : Data::CDataConfiguration::Instance()->GetDataDefinitions())
        if (!definition->m_unit.empty()) {
            const auto own = FindUnitConversion(definition->m_unit, definition->m_unit);
            ASSERT_TRUE(own) << definition->m_unit;
            EXPECT_TRUE(own->IsOne()) << definition->m_unit;
        }
    const struct {
        double m_value;
        const char* m_from;
        const char* m_to;
        double m_expected; ///< -1 for no conversion
    } cases[] = {
        {485, "cm", "m", 4.85},      {0.3, "m", "mm", 300},         {1, "ft", "m", 0.3048},  {35, "L/s", "m³/s", 0.035},
        {36, "m3/h", "m³/s", 0.01},  {2500, "m²", "ha", 0.25},      {0.5, "%", "1/1000", 5}, {5, "‰", "1/1000", 5},
        {0.005, "m/m", "1/1000", 5}, {60, "%", "-", 0.6},           {0.6, "-", "-", 0.6},    {90, "s", "min", 1.5},
        {60, "%", "%", 60},          {150, "EW/ha", "inh/ha", 150}, {1, "kg", "m", -1},      {1, "m", "ha", -1},
        {1, "%", "m", -1},           {12, "l/s", "l/(s·ha)", -1}};
    for (const auto& each : cases) {
        const auto conversion = FindUnitConversion(each.m_from, each.m_to);
        EXPECT_EQ(conversion ? conversion->Apply(each.m_value) : -1.0, each.m_expected) << each.m_from << each.m_to;
    }
}

TEST(TableText, FoldsWhatPeopleTypeDifferently) {
    EXPECT_EQ(FoldText(" Kota_nivelete  ČĆŽŠĐ-ŐŞİ "), "kota nivelete cczsd osi");
    EXPECT_EQ(FoldText("Участък Я"), "участък я");
}

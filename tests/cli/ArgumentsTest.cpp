// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/cli/Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// Two of its sections bear the name "twin"; node B has two ways out.
constexpr const char* Twins = R"({"type": "FeatureCollection", "features": [
{"type": "Feature", "properties": {"layer": "node", "name": "A"}, "geometry": {"type": "Point", "coordinates": [0, 0]}},
{"type": "Feature", "properties": {"layer": "node", "name": "B"}, "geometry": {"type": "Point", "coordinates": [10, 0]}},
{"type": "Feature", "properties": {"layer": "node", "name": "C"}, "geometry": {"type": "Point", "coordinates": [20, 0]}},
{"type": "Feature", "properties": {"layer": "node", "name": "D, E"}, "geometry": {"type": "Point", "coordinates": [20, 9]}},
{"type": "Feature", "properties": {"layer": "section", "name": "one", "from": "A", "to": "B", "length": 10}, "geometry": null},
{"type": "Feature", "properties": {"layer": "section", "name": "twin", "guid": "T1", "from": "B", "to": "C", "length": 10}, "geometry": null},
{"type": "Feature", "properties": {"layer": "section", "name": "twin", "guid": "T2", "from": "B", "to": "D, E", "length": 13.45362404707371}, "geometry": null},
{"type": "Feature", "properties": {"layer": "catchment", "section": "one", "kinds": ["rain", "household"], "area": 2}, "geometry": null}
]})";

struct CCase {
    const char* m_about;
    std::vector<std::string> m_arguments; ///< "P" stands for the project, "/x" for a file beside it
    int m_code;
    const char* m_out = "";
    const char* m_err = "";
};

const CCase Cases[] = {
    {"no arguments", {}, 2, "", "expected a verb"},
    {"unknown verb", {"rnu", "P"}, 2, "", "did you mean run?"},
    {"unknown verb asked for help", {"rnu", "--help"}, 2, "", "did you mean run?"},
    {"unknown option", {"info", "P", "--jsn"}, 2, "", "unknown option --jsn, did you mean --json?"},
    {"unknown option where a word is missing", {"info", "--jsn"}, 2, "", "did you mean --json?"},
    {"missing word", {"info"}, 2, "", "PROJECT is required"},
    {"word too many", {"info", "P", "P"}, 2, "", "expected nothing more"},
    {"option without its value", {"get", "P", "FLOW_USER", "--names"}, 2, "", "--names: expected a value"},
    {"choice that is none", {"get", "P", "FLOW_USER", "--format", "xml"}, 2, "", "expected one of table, csv, json"},
    {"yes and no", {"run", "P", "01_WASTE_PERCENT", "--yes", "--no"}, 2, "", "excludes"},
    {"version", {"--version"}, 0, "drenova "},
    {"help", {"--help"}, 0, "Verbs:"},
    {"help of a verb", {"help", "run"}, 0, "Usage: drenova run PROJECT CALCULATOR"},

    {"no such project", {"info", "/none.gpkg"}, 4, "", "No such file"},
    {"no project but a text", {"info", "/twins.geojson"}, 3, "", "twins.geojson"},
    {"new project in a folder that is not there", {"new", "/none/new.gpkg"}, 4, "", "none/new.gpkg"},
    {"new project over one", {"new", "P"}, 4, "", "--replace replaces it"},
    {"unknown edition", {"new", "/new.gpkg", "--edition", "XX"}, 2, "", "STANDARD, RO, BLG"},
    {"unknown coordinate system", {"new", "/new.gpkg", "--crs", "EPSG:1"}, 2, "", "EPSG:1"},

    {"import over a project", {"import", "/twins.geojson", "-o", "P"}, 4, "", "--replace replaces it"},
    {"import of an unknown ending", {"import", "/town.dwg", "-o", "/new.gpkg"}, 2, "", ".geojson, .json, .inp"},
    {"import of nothing", {"import", "/none.geojson", "-o", "/new.gpkg"}, 4, "", "No such file"},
    {"import of something else", {"import", "P", "-o", "/new.gpkg", "--format", "inp"}, 3, "", "town.gpkg"},
    {"import onto its input",
     {"import", "/twins.geojson", "-o", "/twins.geojson", "--replace"},
     2,
     "",
     "this command reads"},
    {"import of nodes alone", {"import", "--nodes", "/n.csv", "-o", "/new.gpkg"}, 2, "", "--sections: found none"},
    {"import without an input", {"import", "-o", "/new.gpkg"}, 2, "", "expected INPUT, or --nodes"},
    {"import without an output", {"import", "/twins.geojson"}, 2, "", "expected -o PROJECT.gpkg"},
    {"import of tables and a file",
     {"import", "/twins.geojson", "--nodes", "/n.csv", "--sections", "/s.csv", "-o", "/new.gpkg"},
     2,
     "",
     "expected one of them"},
    {"import of a file with a system",
     {"import", "/twins.geojson", "-o", "/x.gpkg", "--crs", "EPSG:3765"},
     2,
     "",
     "--crs"},
    {"import of tables in an unknown system",
     {"import", "--nodes", "/n.csv", "--sections", "/s.csv", "-o", "/new.gpkg", "--crs", "EPSG:1"},
     2,
     "",
     "EPSG:1"},
    {"import of tables onto one",
     {"import", "--nodes", "/n.csv", "--sections", "/s.csv", "-o", "/n.csv", "--replace"},
     2,
     "",
     "this command reads"},
    {"import of a bad table",
     {"import", "--nodes", "/n.csv", "--sections", "/s.csv", "-o", "/new.gpkg"},
     3,
     "",
     "s.csv: line 2, column to: found \"Z\""},
    {"template and more", {"import", "--template", "/t", "-o", "/new.gpkg"}, 2, "", "expected the folder alone"},
    {"import with an unknown catalogue",
     {"import", "/twins.geojson", "-o", "/new.gpkg", "--catalog", "/none.csv"},
     4,
     "",
     "none.csv"},

    {"unknown key", {"get", "P", "FLOW_USR"}, 2, "", "did you mean FLOW_USER?"},
    {"key of others", {"get", "P", "TERRAIN_1"}, 2, "", "--on nodes"},
    {"unknown name", {"get", "P", "FLOW_USER", "--names", "one,two"}, 2, "", "found \"two\""},
    {"repeated name", {"get", "P", "FLOW_USER", "--names", "twin"}, 2, "", "2 sections are named \"twin\""},
    {"name with a comma", {"get", "P", "TERRAIN_1", "--on", "nodes", "--names", "D, E"}, 0, "D, E"},
    {"catchment by its section", {"get", "P", "kinds", "--on", "catchments", "--names", "one"}, 0, "rain+household"},
    {"section without catchments",
     {"get", "P", "kinds", "--on", "catchments", "--names", "T1"},
     2,
     "",
     "with catchments"},

    {"nobody named to set", {"set", "P", "FLOW_USER=1"}, 2, "", "--names nor --all"},
    {"all and some to set", {"set", "P", "FLOW_USER=1", "--all", "--names", "one"}, 2, "", "excludes"},
    {"an empty place to write", {"set", "P", "FLOW_USER=1", "--all", "-o", ""}, 2, "", "expected OUT.gpkg"},
    {"no number", {"set", "P", "FLOW_USER=1,5", "--all"}, 2, "", "found \"1,5\""},
    {"not a number", {"set", "P", "FLOW_INTIME=NaN", "--all"}, 2, "", "found NaN"},
    {"infinity in a result", {"set", "P", "FLOW_RAIN=Infinity", "--all", "-o", "/inf.gpkg"}, 0},
    {"no value", {"set", "P", "FLOW_USER", "--all"}, 2, "", "expected KEY=VALUE"},
    {"parameters are not for people", {"set", "P", "FLOW_WASTE_PER_S={}", "--all"}, 2, "", "only calculations"},
    {"area below 0", {"set", "P", "area=-1", "--on", "catchments", "--all"}, 2, "", "area"},
    {"a pipe that nobody knows", {"set", "P", "PIPE_REF=X", "--all", "-o", "/set.gpkg"}, 0, "", "warning: PIPE_REF"},
    {"table with a wrong value", {"load", "P", "/bad.csv"}, 3, "", "line 2"},
    {"table that is not there", {"load", "P", "/none.csv"}, 4, "", "none.csv"},

    {"settings", {"settings", "P"}, 0, "edition=STANDARD\nturkish=0\nlanguage=en\ncrs=\n"},
    {"unknown setting", {"settings", "P", "edtion=RO"}, 2, "", "did you mean edition?"},
    {"unknown value of a setting", {"settings", "P", "language=xx"}, 2, "", "found \"xx\""},

    {"calculators", {"calculators"}, 0, "01_WASTE_PERCENT"},
    {"form of an unknown calculator", {"form", "P", "01_WASTE_PERCNT"}, 2, "", "did you mean 01_WASTE_PERCENT?"},
    {"form with an unknown tag", {"form", "P", "01_WASTE_PERCENT", "PERIODE=1"}, 2, "", "did you mean PERIOD?"},
    {"form", {"form", "P", "01_WASTE_PERCENT", "PERIOD=12.5"}, 0, "12.5"},

    {"run of an unknown calculator", {"run", "P", "99_NONE"}, 2, "", "99_NONE"},
    {"run with an unknown tag", {"run", "P", "01_WASTE_PERCENT", "X=1"}, 2, "", "found the tag X"},
    {"run with a wrong value",
     {"run", "P", "01_WASTE_PERCENT", "PERIOD=x"},
     2,
     "",
     "PERIOD (DESIGN_HORIZON): found \"x\""},
    {"run without rain", {"run", "P", "00_RAIN_SIMPLE", "VALUE_INTENSITY=-5"}, 2, "", "expected 0 l/(s"},
    {"run without a tolerance", {"form", "P", "001_RAIN_ITP", "PRECISION=0"}, 2, "", "expected above 0"},
    {"run of ice", {"form", "P", "001_RAIN_ITP", "WATER_VISCOSITY=0"}, 2, "", "expected above 0"},
    {"run of an unknown section", {"run", "P", "01_WASTE_PERCENT", "--names", "two"}, 2, "", "found \"two\""},
    {"run of a repeated name", {"run", "P", "01_WASTE_PERCENT", "--names", "twin"}, 2, "", "expected the GUID"},
    {"run by GUID", {"run", "P", "01_WASTE_PERCENT", "--names", "{t2}", "-o", "/run.gpkg"}, 0, ": 1 section\n"},
    {"run of nothing", {"run", "/empty.gpkg", "01_WASTE_PERCENT"}, 1, "", "nothing was stored"},
    {"no parameter file", {"run", "P", "01_WASTE_PERCENT", "--params", "/none.json"}, 4, "", "none.json"},
    {"parameter file that is no JSON", {"run", "P", "01_WASTE_PERCENT", "--params", "/bad.csv"}, 3, "", "line 1"},
    {"parameter file with an unknown tag",
     {"run", "P", "01_WASTE_PERCENT", "--params", "/tag.json"},
     3,
     "",
     "tag.json: 01_WASTE_PERCENT: found the tag PERIODE"},
    {"parameter file with a wrong value",
     {"run", "P", "01_WASTE_PERCENT", "--params", "/value.json"},
     3,
     "",
     "PERIOD (DESIGN_HORIZON): found \"long\""},
    {"parameter file with an unknown calculator",
     {"run", "P", "01_WASTE_PERCENT", "--params", "/calculator.json"},
     3,
     "",
     "found the calculator \"1_WASTE\""},
    {"parameter file with a tag twice",
     {"run", "P", "01_WASTE_PERCENT", "--params", "/twice.json"},
     3,
     "",
     "twice.json: found 01_WASTE_PERCENT: PERIOD twice"},
    {"design with an unknown tag",
     {"design", "P", "--params", "/tag.json"},
     3,
     "",
     "did you mean PERIOD? List them: drenova form"},
    {"main outlet that is none", {"set", "P", "MAIN_SECT_OUT=zzz", "--on", "nodes", "--all"}, 2, "", "found \"zzz\""},
    {"table with a main outlet that is none",
     {"load", "P", "/outlet.csv", "--on", "nodes"},
     3,
     "",
     "node B: MAIN_SECT_OUT: found \"zzz\""},
    {"main outlet by name",
     {"set", "P", "MAIN_SECT_OUT=one", "--on", "nodes", "--names", "A", "-o", "/outlet.gpkg"},
     0},
    {"a pipe that nobody knows is found again", {"info", "/set.gpkg"}, 0, "", "PIPE_REF: 3 sections with a pipe"},
    {"parameter file without the calculator",
     {"run", "P", "01_WASTE_PERCENT", "--params", "/others.json", "-o", "/others.gpkg"},
     0,
     "FLOW_WASTE_PER",
     "note: "},

    {"directions", {"directions", "P", "--list"}, 0, "B     -            twin twin     one", "1 without"},
    {"export of an unknown format", {"export", "P", "swmm", "-o", "/x"}, 2, "", "expected one of geojson"},
    {"export onto the project", {"export", "P", "csv", "-o", "P"}, 2, "", "this command reads"},
    {"export over another file", {"export", "P", "csv", "-o", "/others.json"}, 4, "", "--replace replaces it"},
    {"export where nobody may write", {"export", "P", "csv", "-o", "/none/x.csv"}, 4, "", "none/x.csv"},
    {"generate of no shape", {"generate", "--shape", "ring", "--sections", "5", "-o", "/x.gpkg"}, 2, "", "--shape"},
    {"generate of no number", {"generate", "--shape", "line", "--sections", "1e3", "-o", "/x.gpkg"}, 2, "", "1e3"},
    {"generate of nothing", {"generate", "--shape", "line", "--sections", "0", "-o", "/x.gpkg"}, 2, "", "0 sections"},
};

} // namespace

/// Every invalid command line ends with its code, prints the reason to standard error and nothing to standard output,
/// and leaves the project unchanged.
TEST(Arguments, EndWithTheirExitCode) {
    const CFolder folder;
    folder.Write("twins.geojson", Twins);
    folder.Write("bad.csv", "name,FLOW_USER\none,much\n");
    folder.Write("n.csv", "name,x,y\nA,1,2\n");
    folder.Write("s.csv", "name,from,to\nS,A,Z\n");
    folder.Write("tag.json", R"({"01_WASTE_PERCENT": {"PERIOD": 30, "PERIODE": 1}})");
    folder.Write("twice.json", R"({"01_WASTE_PERCENT": {"PERIOD": 30, "POPULATION": 9, "PERIOD": 20}})");
    folder.Write("outlet.csv", "name,MAIN_SECT_OUT\nB,zzz\n");
    folder.Write("value.json", R"({"01_WASTE_PERCENT": {"PERIOD": "long"}})");
    folder.Write("calculator.json", R"({"1_WASTE": {}})");
    folder.Write("others.json", R"({"checks": {"0004_MIN_SLOPE": {"VALUE_MIN": 3}}})");
    const std::string project = folder / "town.gpkg";
    ASSERT_EQ(Drenova({"import", folder / "twins.geojson", "-o", project}).m_code, 0);
    ASSERT_EQ(Drenova({"new", folder / "empty.gpkg"}).m_code, 0);
    const std::string before = ReadFile(project);

    for (const CCase& test : Cases) {
        SCOPED_TRACE(test.m_about);
        std::vector<std::string> arguments;
        for (const std::string& word : test.m_arguments)
            arguments.push_back(word == "P" ? project : word.starts_with('/') ? folder / word.substr(1) : word);
        const CEnded ended = Drenova(arguments);
        EXPECT_EQ(ended.m_code, test.m_code) << ended.m_err;
        EXPECT_THAT(ended.m_out, HasSubstr(test.m_out));
        EXPECT_THAT(ended.m_err, HasSubstr(test.m_err));
        if (test.m_code > 1) {
            EXPECT_EQ(ended.m_out, "");
            EXPECT_THAT(ended.m_err, StartsWith("drenova: "));
        }
        EXPECT_TRUE(ReadFile(project) == before);
    }
    EXPECT_EQ(folder.List(), "bad.csv calculator.json empty.gpkg inf.gpkg n.csv others.gpkg others.json outlet.csv "
                             "outlet.gpkg run.gpkg s.csv set.gpkg tag.json town.gpkg twice.json twins.geojson "
                             "value.json");
}

/// Each verb that the program lists explains itself with an example that begins with the verb.
TEST(Arguments, EveryVerbHasHelpWithAnExample) {
    const std::string help = Drenova({"--help"}).m_out;
    const std::size_t begin = help.find("Verbs:\n");
    ASSERT_NE(begin, std::string::npos);
    int count = 0;
    for (std::size_t line = help.find("\n  ", begin); line < help.find("\n\n", begin);
         line = help.find("\n  ", line + 1)) {
        const std::string verb = help.substr(line + 3, help.find(' ', line + 3) - line - 3);
        SCOPED_TRACE(verb);
        const CEnded ended = Drenova({verb, "--help"});
        EXPECT_EQ(ended.m_code, 0);
        EXPECT_THAT(ended.m_out, HasSubstr("Usage: drenova " + verb + " "));
        EXPECT_THAT(ended.m_out, HasSubstr("Examples:\n  drenova " + verb));
        ++count;
    }
    EXPECT_GE(count, 13);
}

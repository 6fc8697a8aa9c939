// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/project_io/ExchangeText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace OLMGis;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

struct CFault {
    std::string text;  ///< the file
    std::string where; ///< expected in the message, like the next two
    std::string found;
    std::string expected;
};

const std::string A = NodeFeature("A", "0", "0");
const std::string AB = A + "," + NodeFeature("B", "10", "0") + ",";
const std::string ABS = AB + SectionFeature("S", "A", "B") + ",";

std::string Catchment(std::string_view further, std::string_view geometry = "null") {
    return ABS + Feature(R"("layer":"catchment","section":"S",)" + std::string(further), geometry);
}

std::string Line(std::string_view coordinates) {
    return AB + Feature(R"("layer":"section","name":"L")",
                        R"({"type":"LineString","coordinates":)" + std::string(coordinates) + "}");
}

std::string Ring(std::string_view coordinates) {
    return Catchment(R"("kinds":["rain"])", R"({"type":"Polygon","coordinates":)" + std::string(coordinates) + "}");
}

const std::vector<CFault> FaultsOfFeatures = {
    // keys and types
    {A + "," + Feature(R"("layer":"pump","name":"P")"), "feature 2 (pump \"P\")", "the layer \"pump\"", "main_outlet"},
    {Feature(R"("name":"P")"), "feature 1", "no layer", "one"},
    {AB + SectionFeature("S", "A", "B", R"(,"SECTION_SLOP":1)"), "feature 3 (section \"S\")", "\"SECTION_SLOP\"",
     "an attribute of sections"},
    {AB + SectionFeature("S", "A", "B", R"(,"TERRAIN_1":1)"), "feature 3 (section \"S\")",
     "\"TERRAIN_1\", which is an attribute of nodes", "one of sections"},
    {AB + SectionFeature("S", "A", "B", R"(,"FLOW_USER":1,"FLOW_USER":2)"), "feature 3", "\"FLOW_USER\" twice", "once"},
    {AB + SectionFeature("S", "A", "B", R"(,"FLOW_USER":"1.5")"), "FLOW_USER", "the text \"1.5\"", "a number"},
    {AB + SectionFeature("S", "A", "B", R"(,"FLOW_USER":"inf")"), "FLOW_USER", "the text \"inf\"", "a number"},
    {AB + SectionFeature("S", "A", "B", R"(,"FLOW_USER":true)"), "FLOW_USER", "true", "a number"},
    {AB + SectionFeature("S", "A", "B", R"(,"FLOW_USER":[1])"), "FLOW_USER", "a list", "a number"},
    {AB + SectionFeature("S", "A", "B", R"(,"PIPE_MARK":300)"), "PIPE_MARK", "the number 300", "a text"},
    {AB + SectionFeature("S", "A", "B", R"(,"LEVEL_LINE_POSITION":0.5)"), "LEVEL_LINE_POSITION", "0.5", "whole"},
    {AB + SectionFeature("S", "A", "B", R"(,"LEVEL_LINE_POSITION":5)"), "LEVEL_LINE_POSITION",
     "section S: LEVEL_LINE_POSITION 5", "0 to 4"},
    {NodeFeature("A", "0", "0", R"(,"MANHOLE_RT":3000000000)"), "MANHOLE_RT", "the number 3000000000", "whole"},
    {AB + SectionFeature("S", "A", "B", R"(,"length":-1)"), "feature 3", "section S: length -1,", "0 to 1000000 m"},
    {AB + SectionFeature("S", "A", "B", R"(,"length":"NaN")"), "feature 3", "section S: length NaN", "0 to 1000000 m"},
    {AB + SectionFeature("S", "A", "B", R"(,"PIPE_MARK":"a\u0000b")"), "PIPE_MARK", "a character of code 0", "none"},
    {NodeFeature("A", "0", "0", R"(,"terrain":[1])"), "terrain", "a list", "an object"},
    {NodeFeature("A", "0", "0", R"(,"terrain":{"11":1})"), "terrain", "\"11\"", "1 to 10"},
    {NodeFeature("A", "0", "0", R"(,"terrain":{"1":"high"})"), "TERRAIN_1", "\"high\"", "a number"},
    {NodeFeature("A", "0", "0", R"(,"terrain":{"1":1},"TERRAIN_1":1)"), "feature 1", "TERRAIN_1 twice", "once"},
    // names and GUIDs
    {Feature(R"("layer":"node")", R"({"type":"Point","coordinates":[0,0]})"), "feature 1 (node)", "no name", "one"},
    {NodeFeature("", "0", "0"), "feature 1 (node)", "an empty text", "the name of the node"},
    {AB + Feature(R"("layer":"section","from":"A","to":"B")"), "feature 3 (section)", "no name", "one"},
    {AB + Feature(R"("layer":"section","name":5,"from":"A","to":"B")"), "feature 3", "the number 5", "a text"},
    {AB + NodeFeature("A", "5", "5"), "feature 3 (node \"A\")", "a name that feature 1 has", "once"},
    {NodeFeature("A", "0", "0", R"(,"guid":"ab-c")") + "," + NodeFeature("B", "1", "0", R"(,"guid":"{AB-C}")"),
     "feature 2 (node \"B\")", "\"{AB-C}\", which another node has", "once"},
    {NodeFeature("A", "0", "0", R"(,"guid":"")"), "guid", "an empty text", "a GUID or none"},
    // sections and their nodes
    {AB + SectionFeature("S", "A", "X"), "feature 3 (section \"S\"): to", "\"X\"", "a node of the file"},
    {AB + Feature(R"("layer":"section","name":"S","from":"A")"), "feature 3 (section \"S\")", "no geometry",
     "a LineString"},
    {Line("[[0,0],[10,0.002]]"), "feature 3 (section \"L\")", "no node within 0.001 m of its end at 10 0.002", "one"},
    {Line("[[0,0]]"), "geometry", "a line of one point", "two at least"},
    {Line("[[0,0],[10]]"), "geometry", "a position of 1 numbers", "two"},
    {Line("[[0,0],[[10,0]]]"), "geometry", "different depths", "the same depth"},
    {Line("[0,0,10,0]"), "geometry", "1 nested lists", "2 for a LineString"},
    {Line("[[0,0],[10,\"0\"]]"), "geometry", "the text \"0\"", "numbers"},
    {Line("[]"), "geometry", "an empty list", "at least one"},
    {Line("null"), "geometry", "null as coordinates", "a list"},
    {AB + Feature(R"("layer":"section","name":"L")", R"({"type":"LineString"})"), "geometry", "without coordinates",
     "some"},
    {AB + Feature(R"("layer":"section","name":"L")", R"({"type":"Point","coordinates":[0,0]})"), "geometry",
     "the type \"Point\"", "LineString"},
    {AB + Feature(R"("layer":"section","name":"L")", "[]"), "feature 3", "geometry twice or as a list", "an object"},
    // catchments and main outlets
    {ABS + Feature(R"("layer":"catchment","section":"T","kinds":["rain"],"area":1)"),
     "feature 4 (catchment of section \"T\"): section", "\"T\"", "name or GUID"},
    {ABS + SectionFeature("S", "A", "B") + "," +
         Feature(R"("layer":"catchment","name":"c","section":"S","kinds":["rain"],"area":1)"),
     "feature 5 (catchment \"c\"): section", "a name that several sections have", "the GUID"},
    {Catchment(R"("area":1)"), "feature 4 (catchment of section \"S\")", "no kinds", "a list"},
    {Catchment(R"("area":1,"kinds":"rain")"), "kinds", "the text \"rain\"", "a list"},
    {Catchment(R"("area":1,"kinds":["rain","snow"])"), "kinds", "\"snow\"", "household"},
    {Catchment(R"("area":1,"kinds":[["rain"]])"), "kinds", "a list", "household"},
    {Catchment(R"("kinds":["rain"])"), "feature 4", "neither an area nor a polygon", "one of them"},
    {Catchment(R"("kinds":["rain"],"area":-0.1)"), "feature 4", "catchment of section S: area -0.1", "0 to 1000000 ha"},
    {Catchment(R"("kinds":["rain"],"area":1,"density":-1)"), "feature 4", "catchment of section S: density -1",
     "0 to 100000 inh/ha"},
    {Catchment(R"("kinds":["rain"],"area":1,"coefficient":50)"), "section S: coefficient 50", "1 impossible", "0 to 2"},
    {AB + SectionFeature("S", "A", "B", R"(,"PIPE_ROUGHNESS":-1,"FLOW_INTIME":"Infinity","SECTION_SLOPE":"-Infinity")"),
     "found 3 impossible values",
     "section S: PIPE_ROUGHNESS -1, expected 0 to 1000000 mm (feature 3)\n  section S: FLOW_INTIME Infinity",
     "section S: SECTION_SLOPE -Infinity, expected a finite number"},
    {NodeFeature("A", "0", "0", R"(,"terrain":{"1":1e6})"), "feature 1", "node A: TERRAIN_1 1000000", "12000 m"},
    {AB + SectionFeature("S", "A", "A"), "feature 3", "section S: leads from a node to itself", "two nodes"},
    {AB + Feature(R"("layer":"section","name":"S","from":"A","to":"B")"), "feature 3 (section \"S\")",
     "neither a geometry nor a length", "one of them"},
    {Ring("[[[0,0],[9,9],[9,0],[0,9],[0,0]]]"), "feature 4", "catchment of section S: polygon crosses itself", ""},
    {Ring("[[[0,0],[9,0],[9,9],[0,9],[0,0]],[[20,1],[21,1],[21,2],[20,2],[20,1]]]"), "feature 4",
     "section S: polygon has a hole outside its outer ring", ""},
    {Ring("[[[0,0],[1,0],[1,1],[0,1]]]"), "geometry", "begins at 0 0 and ends at 0 1", "a closed one"},
    {Ring("[[[0,0],[1,0],[0,0]]]"), "geometry", "a ring of 3 points", "four"},
    {Ring("[[[0,0],[1,0],[1,1],[0,0]],[]]"), "geometry", "a ring of 0 points", "four"},
    {Ring("[[[[0,0],[1,0],[1,1],[0,0]]]]"), "geometry", "4 nested lists", "3 for a Polygon"},
    {ABS + Feature(R"("layer":"main_outlet","node":"X","section":"S")"), "feature 4 (main_outlet of node \"X\"): node",
     "\"X\"", "a node of the file"},
    {ABS + Feature(R"("layer":"main_outlet","node":"B","section":"S")"), "section", "does not leave the node", "does"},
    {ABS + Feature(R"("layer":"main_outlet","node":"A","section":"S")") + "," +
         Feature(R"("layer":"main_outlet","node":"A","section":"S")"),
     "feature 5", "a second main outlet", "one"},
    {ABS + Feature(R"("layer":"main_outlet","node":"A","section":"S","name":"x")"), "feature 4", "\"name\"",
     "node and section"},
    // not a feature
    {"{}", "feature 1", "no type", "\"Feature\""},
    {R"({"type":"Feature","geometry":null})", "feature 1", "no properties", "some"},
    {R"({"type":"Feature","properties":null,"geometry":null})", "feature 1", "null as its properties", "an object"},
    {A + ",7", "feature 2", "the number 7", "an object"},
    {A + ",[]", "feature 2", "a list", "an object"},
};

const std::vector<CFault> FaultsOfFiles = {
    {"", "net.geojson: the file is empty", "", "FeatureCollection"},
    {" \n ", "net.geojson", "no valid JSON", "line 2"},
    {std::string("\x89PNG\r\n\x1a\n\0\0", 10), "net.geojson", "no valid JSON", "line 1"},
    {"7", "net.geojson", "the number 7", "FeatureCollection"},
    {"[]", "net.geojson", "a list", "FeatureCollection"},
    {"{}", "net.geojson", "without a type", "FeatureCollection"},
    {R"({"type":"Feature","features":[]})", "net.geojson", "the text \"Feature\"", "\"FeatureCollection\""},
    {R"({"type":"FeatureCollection"})", "net.geojson", "no list of features", "one"},
    {R"({"type":"FeatureCollection","features":{}})", "net.geojson", "an object", "a list"},
    {R"({"type":"FeatureCollection","features":null})", "net.geojson", "null", "a list"},
    {R"({"type":"FeatureCollection","features":[],"features":[]})", "net.geojson", "a second list", "one"},
    {Collection(A).substr(0, 70), "net.geojson: feature 1", "no valid JSON", "unexpected end of input"},
    {"{\"type\":\"FeatureCollection\",\n\"features\":[\n" + A + "\n" + A + "]}", "net.geojson", "no valid JSON",
     "line 4"},
    {Collection(A) + "x", "net.geojson", "no valid JSON", "end of input"},
    {Collection(NodeFeature("A", "NaN", "0")), "feature 1", "no valid JSON", "line 1"},
    {Collection(NodeFeature("A", "1e999", "0")), "feature 1", "byte", "1e999"},
    {Collection(NodeFeature("A\xFF", "0", "0")), "feature 1", "ill-formed UTF-8", "line 1"},
    {Collection(NodeFeature("\\ud800", "0", "0")), "feature 1", "no valid JSON", "surrogate"},
    {R"({"type":"FeatureCollection","features":[],"x":)" + std::string(100000, '['), "net.geojson", "64 deep", "fewer"},
    {Collection(Line(std::string(100000, '['))), "feature 3", "64 deep", "fewer"},
};

void ExpectFault(const CFault& fault, const std::string& text) {
    CTestProject project;
    const auto result = ImportText(text);
    ASSERT_FALSE(result) << text.substr(0, 400);
    const Utility::Error& error = result.GetError();
    EXPECT_EQ(error.kind, Utility::enmErrorKind::BadInput) << error.message;
    EXPECT_THAT(error.message, AllOf(StartsWith("net.geojson: "), HasSubstr(fault.where), HasSubstr(fault.found),
                                     HasSubstr(fault.expected), Not(HasSubstr("exception"))));
    EXPECT_LT(error.message.size(), 600U) << "readable, whatever the file contains";
    EXPECT_TRUE(ActiveTopology().GetNodes().empty()) << "nothing is half-loaded";
    EXPECT_EQ(project.Store().GetRowCount(Data::enmEntityKind::Node), 0U);
}

} // namespace

TEST(ExchangeFaults, AreReportedByFeatureWithWhatWasFoundAndExpected) {
    for (const CFault& fault : FaultsOfFeatures) {
        SCOPED_TRACE(fault.where + " / " + fault.found);
        ExpectFault(fault, Collection(fault.text));
    }
}

TEST(ExchangeFaults, OfTheFileAreReportedByItsNameAndLine) {
    for (const CFault& fault : FaultsOfFiles) {
        SCOPED_TRACE(fault.where + " / " + fault.found + " / " + fault.expected);
        ExpectFault(fault, fault.text);
    }
}

TEST(ExchangeFaults, NoCutOfAFileIsTakenForAWholeOne) {
    const std::string text = Collection(Catchment(R"("kinds":["rain"],"name":"č \"x\"")",
                                                  R"({"type":"Polygon","coordinates":[[[0,0],[1,0],[1,1],[0,0]]]})"));
    for (std::size_t size = 0; size < text.size(); ++size) {
        CTestProject project;
        EXPECT_FALSE(ImportText(text.substr(0, size))) << size;
    }
    CTestProject project;
    EXPECT_TRUE(ImportText(text));
}

TEST(ExchangeFaults, AStreamThatFailsIsRefused) {
    struct CBroken final : std::streambuf {
        int underflow() override { throw std::runtime_error("device gone"); }
    } broken;
    std::istream stream(&broken);
    CTestProject project;
    const auto result = ProjectIo::ImportExchange(stream, "net.geojson");
    ASSERT_FALSE(result);
    EXPECT_EQ(result.GetError().kind, Utility::enmErrorKind::Refused);
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeImport.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/CatalogManager.h"
#include "tests/project_io/ExchangeText.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using ::testing::HasSubstr;

namespace {

std::string Text(std::string_view key, const auto& entity) {
    Data::CDataBox box;
    Data::CDataRW::Read(key, entity, box, 0, nullptr);
    return box.IsNotNull() ? box.AsText() : "null";
}

boost::shared_ptr<Topology::CSection> Section(std::string_view name) {
    return ActiveTopology().GetSectionsByName(name).at(0);
}

const std::string TwoNodes = NodeFeature("A", "0", "0") + "," + NodeFeature("B", "30", "40");

} // namespace

TEST(ExchangeImport, FeaturesMayReferToLaterOnesAndKeepTheirOrder) {
    CTestProject project;
    const auto summary = ImportGood(Collection(
        Feature(R"("layer":"main_outlet","node":"B","section":"BD")") + "," +
        Feature(R"("section":"AB","kinds":["household","rain"],"area":1.5,"density":80,"layer":"catchment")") + "," +
        SectionFeature("BD", "B", "D") + "," + SectionFeature("BC", "B", "C") + "," + SectionFeature("AB", "A", "B") +
        "," + NodeFeature("D", "3", "0") + "," + NodeFeature("C", "2", "0") + "," + NodeFeature("B", "1", "0") + "," +
        NodeFeature("A", "0", "0")));
    EXPECT_EQ(NamesOf(ActiveTopology().GetNodes()), "D C B A");
    EXPECT_EQ(NamesOf(ActiveTopology().GetSections()), "BD BC AB");
    EXPECT_EQ(NamesOf(ActiveTopology().GetCatchments()), "AB/1");
    const auto& catchment = ActiveTopology().GetCatchments()[0];
    EXPECT_EQ(catchment->GetSection()->GetName(), "AB");
    EXPECT_EQ(Text("kinds", catchment), "3");
    EXPECT_EQ(Text("area", catchment), "1.5");
    EXPECT_EQ(Text("coefficient", catchment), "1") << "the default";
    EXPECT_EQ(Text("density", catchment), "80");
    EXPECT_EQ(Text("MAIN_SECT_OUT", ActiveTopology().GetNodeByName("B")), Section("BD")->GetGuid());
    EXPECT_EQ(summary.m_format, "network exchange file");
    EXPECT_EQ(summary.m_nodeCount, 4U);
    EXPECT_EQ(summary.m_sectionCount, 3U);
    EXPECT_EQ(summary.m_catchmentCount, 1U);
    EXPECT_EQ(summary.m_mainOutletCount, 1U);
}

TEST(ExchangeImport, AttributesGoByKeyAndNonFiniteOnesComeAsTexts) {
    CTestProject project;
    ImportGood(Collection(
        NodeFeature("A", "0", "0", R"(,"terrain":{"1":120.25,"10":-3,"2":null},"MANHOLE_RT":7.0)") + "," +
        NodeFeature("B", "30", "40", R"(,"TERRAIN_3":1e2,"MANHOLE_ID":"m-1","terrain":null)") + "," +
        SectionFeature("S", "A", "B",
                       R"(,"SECTION_SLOPE":-2.5,"FLOW_TOTAL":"NaN","FLOW_RAIN":"-Infinity","FLOW_USER":"Infinity",)"
                       R"("PIPE_MARK":"Ø 300","LEVEL_LINE_POSITION":0,"FLOW_POINT":null)")));
    const auto a = ActiveTopology().GetNodeByName("A");
    const auto b = ActiveTopology().GetNodeByName("B");
    const auto section = Section("S");
    EXPECT_EQ(Text("TERRAIN_1", a), "120.25");
    EXPECT_EQ(Text("TERRAIN_10", a), "-3");
    EXPECT_EQ(Text("TERRAIN_2", a), "null");
    EXPECT_EQ(Text("MANHOLE_RT", a), "7");
    EXPECT_EQ(Text("TERRAIN_3", b), "100");
    EXPECT_EQ(Text("MANHOLE_ID", b), "m-1");
    EXPECT_EQ(Text("SECTION_SLOPE", section), "-2.5");
    EXPECT_EQ(Text("PIPE_MARK", section), "Ø 300");
    EXPECT_EQ(Text("LEVEL_LINE_POSITION", section), "0");
    EXPECT_EQ(Text("FLOW_POINT", section), "null");
    Data::CDataBox box;
    Data::CDataRW::Read("FLOW_TOTAL", section, box, 0, nullptr);
    EXPECT_TRUE(std::isnan(box.AsDouble()));
    Data::CDataRW::Read("FLOW_RAIN", section, box, 0, nullptr);
    EXPECT_EQ(box.AsDouble(), -std::numeric_limits<double>::infinity());
    Data::CDataRW::Read("FLOW_USER", section, box, 0, nullptr);
    EXPECT_EQ(box.AsDouble(), std::numeric_limits<double>::infinity());
}

TEST(ExchangeImport, EndsWithoutNamesSnapToNodes) {
    CTestProject project;
    const auto line = [](std::string_view name, std::string_view points, std::string_view further = "") {
        return Feature(R"("layer":"section","name":")" + std::string(name) + "\"" + std::string(further),
                       R"({"type":"LineString","coordinates":)" + std::string(points) + "}");
    };
    const auto summary = ImportGood(Collection(
        line("exact", "[[0,0],[5,5],[30,40]]") + "," + line("near", "[[30.0006,39.9996],[0.0000001,0]]") + "," +
        line("named", "[[700,700],[30,40]]", R"(,"from":"A")") + "," + line("corner", "[[-100,-100],[60,60]]") + "," +
        TwoNodes + "," + NodeFeature("C", "-100.0004", "-99.9996") + "," + NodeFeature("D", "-100.0001", "-100") + "," +
        NodeFeature("E", "60", "60") + "," + NodeFeature("F", "60", "60")));
    const auto ends = [](std::string_view name) {
        const auto section = Section(name);
        return std::string(section->GetStartingNode()->GetName()) + std::string(section->GetEndingNode()->GetName());
    };
    EXPECT_EQ(ends("exact"), "AB");
    EXPECT_EQ(ends("near"), "BA");
    EXPECT_EQ(ends("named"), "AB");
    EXPECT_EQ(ends("corner"), "DE") << "the nearer of two; of two at one place the first";
    ASSERT_EQ(summary.m_notes.size(), 2U);
    EXPECT_THAT(summary.m_notes[0].m_what, HasSubstr("ends more than 1 m from its nodes"));
    EXPECT_EQ(summary.m_notes[0].m_first, "feature 3 (section \"named\")");
    EXPECT_THAT(summary.m_notes[1].m_what, HasSubstr("at which there are several nodes"));
}

TEST(ExchangeImport, PolygonsGiveTheAreaWhereNoneIsGiven) {
    CTestProject project;
    // A square of 200 m with a square hole of 100 m, far from the origin: 4 ha less 1 ha.
    const std::string ring = "[[500000,5000000],[500200,5000000],[500200,5000200],[500000,5000200],[500000,5000000]]";
    const std::string hole = "[[500050,5000050],[500150,5000050],[500150,5000150],[500050,5000150],[500050,5000050]]";
    const std::string geometry = R"({"coordinates":[)" + ring + "," + hole + R"(],"type":"Polygon"})";
    const std::string own = R"("layer":"catchment","section":"S","kinds":["rain"])";
    const auto summary =
        ImportGood(Collection(TwoNodes + "," + SectionFeature("S", "A", "B") + "," + Feature(own, geometry) + "," +
                              Feature(own + R"(,"area":0.25,"coefficient":0.5,"name":"mine")", geometry) + "," +
                              Feature(R"("layer":"catchment","section":"S","kinds":[],"area":1,"coefficient":null)")));
    const auto& catchments = ActiveTopology().GetCatchments();
    EXPECT_EQ(NamesOf(catchments), "S/1 mine S/3");
    EXPECT_EQ(Text("area", catchments[0]), "3");
    EXPECT_EQ(catchments[0]->GetRings().size(), 2U);
    EXPECT_EQ(Text("area", catchments[1]), "0.25") << "the figure goes before the drawing";
    EXPECT_EQ(Text("coefficient", catchments[2]), "null");
    ASSERT_EQ(summary.m_notes.size(), 1U);
    EXPECT_THAT(summary.m_notes[0].m_what, HasSubstr("of no kind"));
}

TEST(ExchangeImport, PipesAreFoundByGuidAndByANameThatIsTheirs) {
    CTestProject project;
    auto& pipes = *Topology::CCatalogManager::Instance()->GetCatalog("PIPE", 1);
    const auto first = pipes.AddGroup("g1", "PVC").Value();
    const auto second = pipes.AddGroup("g2", "PE").Value();
    ASSERT_TRUE(pipes.AddPipe(*first, "P-200", "DN 200", {}));
    ASSERT_TRUE(pipes.AddPipe(*first, "P-300", "DN 300", {}));
    ASSERT_TRUE(pipes.AddPipe(*second, "E-200", "DN 200", {}));
    ImportGood(Collection(TwoNodes + "," + SectionFeature("S1", "A", "B", R"(,"pipe":"DN 300")") + "," +
                          SectionFeature("S2", "A", "B", R"(,"pipe":"{e-200}")") + "," +
                          SectionFeature("S3", "A", "B", R"(,"PIPE_REF":"elsewhere")")));
    EXPECT_EQ(Text("PIPE_REF", Section("S1")), "P-300");
    EXPECT_EQ(Text("PIPE_REF", Section("S2")), "E-200");
    EXPECT_EQ(Text("PIPE_REF", Section("S3")), "elsewhere");

    for (const auto& [pipe, expected] :
         {std::pair{"DN 200", "a name that 2 pipes"}, std::pair{"DN 400", "--catalog"}, std::pair{"g1", "--catalog"}}) {
        CTestProject other;
        auto& catalog = *Topology::CCatalogManager::Instance()->GetCatalog("PIPE", 1);
        const auto group1 = catalog.AddGroup("g1", "PVC").Value();
        const auto group2 = catalog.AddGroup("g2", "PE").Value();
        ASSERT_TRUE(catalog.AddPipe(*group1, "P-200", "DN 200", {}));
        ASSERT_TRUE(catalog.AddPipe(*group2, "E-200", "DN 200", {}));
        const auto bad = ImportText(
            Collection(TwoNodes + "," + SectionFeature("S", "A", "B", ",\"pipe\":\"" + std::string(pipe) + "\"")));
        ASSERT_FALSE(bad);
        EXPECT_THAT(bad.GetError().message, HasSubstr(expected));
    }
}

TEST(ExchangeImport, AMainOutletThatLeavesAnotherNodeIsKeptAndReported) {
    CTestProject project;
    const auto summary = ImportGood(Collection(NodeFeature("A", "0", "0", R"(,"MAIN_SECT_OUT":"{S-1}")") + "," +
                                               NodeFeature("B", "1", "0", R"(,"MAIN_SECT_OUT":"s-1")") + "," +
                                               SectionFeature("S", "A", "B", R"(,"guid":"s-1")")));
    EXPECT_EQ(Text("MAIN_SECT_OUT", ActiveTopology().GetNodeByName("A")), "{S-1}");
    EXPECT_EQ(Text("MAIN_SECT_OUT", ActiveTopology().GetNodeByName("B")), "s-1");
    ASSERT_EQ(summary.m_notes.size(), 1U);
    EXPECT_EQ(summary.m_notes[0].m_first, "B");
}

TEST(ExchangeImport, CoordinateSystemsGoByEpsgName) {
    struct CCase {
        std::string crs;
        std::string expected; ///< the setting, or a part of the message
        bool isGood;
    };
    const CCase cases[] = {
        {R"("EPSG:3765")", "EPSG:3765", true},
        {R"({"type":"name","properties":{"name":"EPSG:3765"}})", "EPSG:3765", true},
        {R"({"properties":{"name":"urn:ogc:def:crs:EPSG::3765"},"type":"name"})", "EPSG:3765", true},
        {R"("urn:ogc:def:crs:epsg:10.2:3765")", "EPSG:3765", true},
        {R"("http://www.opengis.net/def/crs/EPSG/0/3765")", "EPSG:3765", true},
        {"null", "", true},
        {R"("urn:ogc:def:crs:OGC:1.3:CRS84")", "expected an EPSG name", false},
        {R"("EPSG:")", "expected an EPSG name", false},
        {R"("EPSG:1")", "EPSG:1 ", false},
        {R"({"type":"link","properties":{"href":"x"}})", "found no name", false},
        {"3765", "the number 3765", false},
    };
    for (const CCase& each : cases) {
        CTestProject project;
        const auto result = ImportText(R"({"type":"FeatureCollection","features":[],"crs":)" + each.crs + "}");
        ASSERT_EQ(static_cast<bool>(result), each.isGood) << each.crs;
        if (each.isGood)
            EXPECT_EQ(System::CProjectSettings::Instance()->Get("crs"), each.expected) << each.crs;
        else
            EXPECT_THAT(result.GetError().message, HasSubstr(each.expected)) << each.crs;
    }
    CTestProject project;
    const auto degrees = ImportGood(R"({"type":"FeatureCollection","features":[],"crs":"EPSG:4326"})");
    ASSERT_EQ(degrees.m_warnings.size(), 1U);
    EXPECT_THAT(degrees.m_warnings[0], HasSubstr("degrees"));
}

TEST(ExchangeImport, GuidsThatTheFileLacksAreTheSameOnEveryImport) {
    const std::string text =
        Collection(TwoNodes + "," + SectionFeature("S", "A", "B") + "," + SectionFeature("S", "A", "B") + "," +
                   SectionFeature("T", "A", "B", R"(,"guid":"{Given-1}")"));
    const auto guids = [&text] {
        CTestProject project;
        ImportGood(text);
        std::vector<std::string> all;
        for (const auto& section : ActiveTopology().GetSections())
            all.emplace_back(section->GetGuid());
        return all;
    };
    const auto first = guids();
    EXPECT_EQ(first, guids());
    EXPECT_NE(first[0], first[1]) << "equal names at two places";
    EXPECT_EQ(first[2], "{Given-1}");
}

TEST(ExchangeImport, HouseholdAreasWithoutDensityAreReportedBySection) {
    CTestProject project;
    std::string features = TwoNodes;
    for (int i = 0; i < 13; ++i) {
        const std::string name = "S" + std::to_string(i);
        features += "," + SectionFeature(name, "A", "B");
        // S0 has a density, S1 no area to speak of, S2 is rain only; all others lack one, twice each.
        const std::string further = i == 0   ? R"("kinds":["household"],"area":1,"density":5)"
                                    : i == 1 ? R"("kinds":["household"],"area":0)"
                                    : i == 2 ? R"("kinds":["rain"],"area":1)"
                                             : R"("kinds":["household","rain"],"area":1)";
        for (int k = 0; k < 2; ++k)
            features += "," + Feature(R"("layer":"catchment","section":")" + name + "\"," + further);
    }
    const auto summary = ImportGood(Collection(features));
    ASSERT_EQ(summary.m_warnings.size(), 1U);
    EXPECT_THAT(summary.m_warnings[0], HasSubstr("without a population density"));
    EXPECT_THAT(summary.m_warnings[0], HasSubstr("10"));
    EXPECT_THAT(summary.m_warnings[0], HasSubstr("S3, S4, S5, S6, S7, S8, S9, S10, S11, S12"));
}

TEST(ExchangeImport, AnEmptyCollectionAndForeignMembersAreLegal) {
    CTestProject project;
    const auto summary = ImportGood("\xEF\xBB\xBF{\"name\":\"x\",\"bbox\":[[[1]]],\"features\":[],"
                                    "\"type\":\"FeatureCollection\"}\r\n");
    EXPECT_EQ(summary.m_nodeCount, 0U);
    const auto again = ImportGood(R"({"type":"FeatureCollection","features":[{"id":7,"bbox":[0,0,1,1],"x":{"y":[]},)"
                                  R"("geometry":{"bbox":[1],"type":"Point","coordinates":[1,2,3]},)"
                                  R"("properties":{"layer":"node","name":"A"},"type":"Feature"}]})");
    EXPECT_EQ(again.m_nodeCount, 1U);
    ASSERT_EQ(again.m_notes.size(), 1U);
    EXPECT_THAT(again.m_notes[0].m_what, HasSubstr("heights"));
    EXPECT_FALSE(ImportText(Collection(""))) << "the project has a network now";
}

TEST(ImportSummary, NotesAreCountedByKindAndBounded) {
    CImportSummary summary;
    for (int i = 0; i < 1000; ++i)
        summary.Count("kind " + std::to_string(i % 150), "line " + std::to_string(i));
    EXPECT_EQ(summary.m_notes.size(), CImportSummary::MostNotes + 1);
    EXPECT_EQ(summary.m_notes[3].m_count, 7U);
    EXPECT_EQ(summary.m_notes[3].m_first, "line 3");
    EXPECT_EQ(summary.m_notes.back().m_what, CImportSummary::FurtherNotes);
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/tables/CsvLoad.h"

#include "host/project_io/base/AttributeText.h"
#include "host/project_io/synthetic/SyntheticNetwork.h"
#include "host/project_io/tables/CsvExport.h"
#include "tests/project_io/ProjectFileFixture.h"
#include "tests/support/TextNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace OLMGis;
using namespace OLMGis::ProjectIo;
using Data::enmEntityKind;
using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace {

Utility::Result<int> Load(const std::string& text, enmEntityKind kind) {
    std::istringstream stream(text);
    const auto loaded = LoadCsv(stream, "t.csv", kind);
    return loaded ? Utility::Result<int>(loaded->m_count) : Utility::Result<int>(loaded.GetError());
}

std::string Export(enmEntityKind kind) {
    std::ostringstream stream;
    EXPECT_TRUE(ExportCsv(stream, kind));
    return stream.str();
}

/// Two sections of one name, one of another, and two catchments on the latter.
class CLoadedNetwork {
public:
    CLoadedNetwork() {
        auto& topology = m_net.Topology();
        for (const char* guid : {"t-1", "t-2"})
            EXPECT_TRUE(topology.AddSection(guid, "Twin", m_net.Node('A').get(), m_net.Node('B').get(), {}));
        m_net.AddCatchment("AB", 1, 0.5, {}, 0.6);
        m_net.AddCatchment("AB", 3, 0.25, 80.0);
        m_net.AddCatchment("BC", 1, 1.0);
        m_net.AddCatchment("BC", 1, 2.0);
    }

private:
    CTestProject m_project;

public:
    CTextNetwork m_net{"A---B---C"};
};

/// "guid name section kinds area coefficient density" of all catchments.
std::string Catchments() {
    std::string all;
    for (const auto& catchment : ActiveTopology().GetCatchments()) {
        all += std::string(catchment->GetName()) + " " + std::string(catchment->GetSection()->GetName());
        for (const std::string_view key : {"kinds", "area", "coefficient", "density"}) {
            Data::CDataBox box;
            Data::CDataRW::Read(key, catchment, box, 0, nullptr);
            all += " " + (box.IsNotNull() ? box.AsText() : "-");
        }
        all += "\n";
    }
    return all;
}

} // namespace

TEST(CsvLoad, EntitiesGoByNameOrGuidAndTheWordNullRemoves) {
    CLoadedNetwork network;
    const CTextNetwork& net = network.m_net;
    net.Set("AB", "FLOW_USER", 7.0);
    net.Set("AB", "FLOW_COEFDEN", 2.0);
    const auto count =
        Load("name,FLOW_INTIME,FLOW_USER,PIPE_MARK,FLOW_COEFDEN\nBC,5.5,1e-3,\"a,b\",\nAB,6,null,null,\n",
             enmEntityKind::Section);
    ASSERT_TRUE(count) << count.GetError().message;
    EXPECT_EQ(count.Value(), 6);
    EXPECT_EQ(net.Get("BC", "FLOW_INTIME"), Data::CDataBox(5.5));
    EXPECT_EQ(net.Get("BC", "PIPE_MARK"), Data::CDataBox("a,b"));
    EXPECT_FALSE(net.Get("AB", "FLOW_USER").IsNotNull());
    EXPECT_EQ(net.Get("AB", "FLOW_COEFDEN"), Data::CDataBox(2.0)) << "an empty cell leaves the value";
    ASSERT_TRUE(Load("guid;LEVEL_LINE_POSITION;name\n{T-2};4;Twin\n", enmEntityKind::Section));
    Data::CDataBox box;
    Data::CDataRW::Read("LEVEL_LINE_POSITION", ActiveTopology().GetSectionByGuid("t-2"), box, 0, nullptr);
    EXPECT_EQ(box, Data::CDataBox(4));
    ASSERT_TRUE(Load("name,TERRAIN_1\nA,1e2\nB,0\nnode-C, -3 \n", enmEntityKind::Node));
    Data::CDataRW::Read("TERRAIN_1", net.Node('C'), box, 0, nullptr);
    EXPECT_EQ(box, Data::CDataBox(-3.0));
}

TEST(CsvLoad, CatchmentsGoBySectionAndKindsOrAreMade) {
    CLoadedNetwork network;
    const auto count = Load("section,kinds,area,density\n"
                            "AB,household+rain,0.3,90\n"
                            "AB,4,0.1,\n"
                            "AB,rain,0.55,\n"
                            "t-2,rain household,0.75,60\n"
                            "t-2,industrial|rain,0.5,\n",
                            enmEntityKind::Catchment);
    ASSERT_TRUE(count) << count.GetError().message;
    EXPECT_EQ(count.Value(), 3 + 3 + 2 + 4 + 3) << "an empty cell is no value";
    EXPECT_EQ(Catchments(), "catchment-0 AB 1 0.55 0.6 -\n"
                            "catchment-1 AB 3 0.3 - 90\n"
                            "catchment-2 BC 1 1 - -\n"
                            "catchment-3 BC 1 2 - -\n"
                            "AB/3 AB 4 0.1 1 -\n"
                            "Twin/1 Twin 3 0.75 1 60\n"
                            "Twin/2 Twin 5 0.5 1 -\n");
    const std::string guid(ActiveTopology().GetCatchments()[5]->GetGuid());
    EXPECT_EQ(ActiveTopology().GetCatchments()[5]->GetSection()->GetGuid(), "t-2");
    ASSERT_TRUE(Load("name,kinds,area,coefficient\nt-2,rain,0.2,\nt-2,rain,0.3,0.4\n", enmEntityKind::Catchment));
    EXPECT_THAT(Catchments(), HasSubstr("Twin/3 Twin 1 0.2 1 -\nTwin/4 Twin 1 0.3 0.4 -\n"));
    ASSERT_TRUE(Load("name,guid,area\n,catchment-3,9\n", enmEntityKind::Catchment));
    EXPECT_THAT(Catchments(), HasSubstr("catchment-3 BC 1 9 - -"));
    ActiveTopology().RemoveCatchment(*ActiveTopology().GetCatchments()[5]);
    ASSERT_TRUE(Load("section,kinds,area\nt-2,7,1\n", enmEntityKind::Catchment)) << "none gets a GUID in use";
    EXPECT_THAT(Catchments(), HasSubstr("Twin/4 Twin 7 1 1 -\n"));
    CLoadedNetwork again;
    ASSERT_TRUE(Load("section,kinds,area\nt-2,rain,1\n", enmEntityKind::Catchment));
    EXPECT_EQ(ActiveTopology().GetCatchments()[4]->GetGuid(), guid) << "GUIDs are the same on every load";
}

TEST(CsvLoad, FaultsNameLineAndColumnAndStoreNothing) {
    struct CCase {
        enmEntityKind kind;
        std::string text;
        std::string message;
    };
    constexpr auto node = enmEntityKind::Node;
    constexpr auto section = enmEntityKind::Section;
    constexpr auto catchment = enmEntityKind::Catchment;
    const CCase cases[] = {
        {section, "name,FLOW_USR\nAB,1\n",
         "line 1, column \"FLOW_USR\": found \"FLOW_USR\", expected the key or label of a column of "
         "sections, did you mean FLOW_USER?"},
        {section, "name,TERRAIN_1\nAB,1\n", "line 1, column \"TERRAIN_1\": found \"TERRAIN_1\""},
        {section, "name\nAB\n", "line 1: found no column with values"},
        {section, "FLOW_USER\n1\n", "line 1: found no column name or guid"},
        {section, "name,FLOW_USER\nAB,1\nXY,2\n", "line 3, column name: found \"XY\""},
        {section, "name,FLOW_USER\nAB,1\nTwin,2\n", "line 3, column name: found \"Twin\", a name that several"},
        {section, "name,FLOW_USER\nAB,1\nAB,2\n", "line 3: found an entity that is on line 2 already"},
        {section, "guid,FLOW_USER\nt-9,2\n", "line 2, column guid: found \"t-9\""},
        {section, "name,guid,FLOW_USER\nAB,t-1,2\n", "line 2, column name: found \"AB\""},
        {section, "name,from,to,FLOW_USER\nAB,A,C,2\n", "line 2, column to: found \"C\", expected \"B\""},
        {section, "name,FLOW_USER\nBC,1.5\nAB,\"1,5\"\n",
         "line 3, column FLOW_USER: found \"1,5\", expected a decimal point as on line 2 (1.5)"},
        {section, "name;FLOW_USER\nBC;1.234,5\n",
         "line 2, column FLOW_USER: found \"1.234,5\", expected a number without signs between thousands"},
        {section, "name;FLOW_USER [kg]\nBC;1\n",
         "line 1, column \"FLOW_USER [kg]\": found the unit \"kg\", expected one of m³/s, l/s, l/min, m3/h, m3/d"},
        {section, "name;PIPE_MARK [m]\nBC;1\n",
         "line 1, column \"PIPE_MARK [m]\": found the unit \"m\", expected a column"},
        {section, "name;FLOW_USER;FLOW_INTIME\nBC;x;-1\nXY;1;1\n1;2\n",
         "found 3 faults. Correct the table; nothing was loaded:\n"
         "  t.csv: line 2, column FLOW_USER: found \"x\", expected a number\n"
         "  t.csv: line 3, column name: found \"XY\""},
        {section, "name,FLOW_USER\nAB,inf\n", "line 2, column FLOW_USER: found \"inf\""},
        {section, "name,LEVEL_LINE_POSITION\nAB,1.5\n", "line 2, column LEVEL_LINE_POSITION: found \"1.5\""},
        {section, "name,LEVEL_LINE_POSITION\nAB,7\n",
         "found 1 impossible value. Correct the table; nothing was loaded:\n  line 2, column LEVEL_LINE_POSITION: "
         "section AB: LEVEL_LINE_POSITION 7"},
        {section, "name,length\nAB,-7\n",
         "found 1 impossible value. Correct the table; nothing was loaded:\n  line 2, column length: section AB: "
         "length -7, expected "
         "0 to 1000000 m"},
        {section, "name,FLOW_INTIME,PIPE_ROUGHNESS\nAB,Infinity,NaN\nBC,-5,-1\n",
         "found 4 impossible values. Correct the table; nothing was loaded:\n"
         "  line 2, column FLOW_INTIME: section AB: FLOW_INTIME Infinity, expected 0 to 10000 min\n"
         "  line 2, column PIPE_ROUGHNESS: section AB: PIPE_ROUGHNESS NaN, expected 0 to 1000000 mm\n"
         "  line 3, column FLOW_INTIME: section BC: FLOW_INTIME -5, expected 0 to 10000 min\n"
         "  line 3, column PIPE_ROUGHNESS: section BC: PIPE_ROUGHNESS -1, expected 0 to 1000000 mm"},
        {node, "name,TERRAIN_1\nA,1\nZ,2\n", "line 3, column name: found \"Z\""},
        {node, "name,guid,TERRAIN_1\nA,node-B,2\n", "line 2, column name: found \"A\""},
        {catchment, "name,area\nAB,1\n", "line 2, column name: found \"AB\", which has 2 catchments"},
        {catchment, "section,kinds,area\nBC,rain,1\n", "line 2, column section: found \"BC\", which has 2"},
        {catchment, "section,kinds,area\nAB,snow,1\n", "line 2, column kinds: found \"snow\""},
        {catchment, "section,kinds,area\nAB,industrial,\n", "line 2, column area: found no value"},
        {catchment, "section,area\nt-1,1\n", "line 2, column kinds: found no value"},
        {catchment, "section,kinds,area\nAB,rain,1\nAB,rain,2\n", "line 3: found an entity that is on line 2 already"},
        {catchment, "section,kinds,area\nAB,rain,-1\n",
         "found 1 impossible value. Correct the table; nothing was loaded:\n  line 2, column area: catchment of "
         "section AB: area "
         "-1"},
        {catchment, "section,guid,area\nBC,catchment-0,1\n", "line 2, column section: found \"BC\", expected \"AB\""},
        {catchment, "guid,area\ncatchment-9,1\n", "line 2, column guid: found \"catchment-9\""},
        {catchment, "section,guid,kinds,area\nAB,x,4,1\nBC,X,4,1\n", "line 3, column guid: found \"X\" on an earlier"},
    };
    for (const CCase& each : cases) {
        CLoadedNetwork network;
        const std::string before = DescribeProject();
        const auto result = Load(each.text, each.kind);
        ASSERT_FALSE(result) << each.text;
        EXPECT_THAT(result.GetError().message, StartsWith("t.csv: " + each.message)) << each.text;
        EXPECT_EQ(DescribeProject(), before) << "all or nothing";
    }
}

TEST(CsvLoad, LoadsWhatIsExported) {
    CTestProject project;
    ASSERT_TRUE(GenerateNetwork(enmNetworkShape::City, 400, 3));
    const std::string described = DescribeProject();
    for (const auto kind : {enmEntityKind::Node, enmEntityKind::Section, enmEntityKind::Catchment}) {
        const std::string table = Export(kind);
        for (const auto& definition : ActiveTopology().GetStore().GetUsedDefinitions(kind))
            for (std::uint32_t row = 0; row < ActiveTopology().GetStore().GetRowCount(kind); ++row)
                ActiveTopology().GetStore().Write(*definition, row, {});
        EXPECT_NE(DescribeProject(), described);
        const auto count = Load(table, kind);
        ASSERT_TRUE(count) << count.GetError().message;
        EXPECT_EQ(Export(kind), table);
        EXPECT_EQ(DescribeProject(), described);
    }
}

TEST(CsvLoad, ManyCatchmentsOfOneSectionCostNoMoreThanOfMany) {
    CTestProject project;
    const CTextNetwork net("A-B");
    std::string table = "section,kinds,area\n";
    for (int i = 0; i < 100000; ++i)
        table += "AB,rain,1\n";
    ASSERT_TRUE(Load(table, enmEntityKind::Catchment));
    EXPECT_EQ(ActiveTopology().GetCatchments().size(), 100000U);
    EXPECT_THAT(Load(table, enmEntityKind::Catchment).GetError().message, HasSubstr("has 100000 catchments"));
}

TEST(AttributeText, KindsAreNamesInAnyOrderOrTheirSum) {
    const std::pair<std::string_view, int> rows[] = {{"rain", 1},
                                                     {"household+rain", 3},
                                                     {"industrial|rain", 5},
                                                     {" rain  household industrial ", 7},
                                                     {"rain,rain", 1},
                                                     {"6", 6},
                                                     {"0", 0},
                                                     {"8", -1},
                                                     {"-1", -1},
                                                     {"Rain", -1},
                                                     {"", -1},
                                                     {"+", -1},
                                                     {"rain+x", -1}};
    for (const auto& [text, kinds] : rows)
        EXPECT_EQ(KindsOfText(text).value_or(-1), kinds) << text;
    EXPECT_EQ(TextOfKinds(7, "+"), "rain+household+industrial");
    EXPECT_EQ(TextOfKinds(0, "+"), "");
}

TEST(AttributeText, QuotesAreShortAndReadableWhateverTheText) {
    EXPECT_EQ(Quote("Šaht 7"), "\"Šaht 7\"");
    EXPECT_EQ(Quote("a\nb\x7F\xFF\xC5"), "\"a?b???\"");
    std::string expected = "\"";
    std::string text;
    for (int i = 0; i < 100; ++i) {
        text += "č";
        if (i < 60)
            expected += "č";
    }
    EXPECT_EQ(Quote(text), expected + "...\"");
}

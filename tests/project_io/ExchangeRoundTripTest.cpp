// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/synthetic/SyntheticNetwork.h"
#include "host/project_io/tables/CatalogCsv.h"
#include "tests/project_io/ExchangeText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

using namespace OLMGis;
using namespace OLMGis::Topology;
using ::testing::HasSubstr;

namespace {

/// A network with everything that the exchange file can express, different for each seed.
class CRandomNetwork {
public:
    explicit CRandomNetwork(unsigned seed) : m_engine(seed) {}

    void Fill() {
        System::CProjectSettings::Instance()->Set("crs", OneIn(2) ? "EPSG:3765" : "");
        FillCatalog();
        FillNodes();
        FillSections();
        FillCatchments();
        ChooseOutlets();
    }

private:
    std::size_t Below(std::size_t limit) { return m_engine() % limit; }
    bool OneIn(std::size_t n) { return Below(n) == 0; }

    double Number() {
        constexpr double special[] = {-0.0,
                                      0.1,
                                      1e22,
                                      1e15,
                                      123456789012345680.0,
                                      5e-324,
                                      std::numeric_limits<double>::infinity(),
                                      -std::numeric_limits<double>::infinity()};
        if (OneIn(2))
            return special[Below(std::size(special))];
        const auto value = std::bit_cast<double>(m_engine());
        return std::isnan(value) ? 0.5 : value;
    }
    double Positive() { return std::abs(std::isfinite(m_last = Number()) ? m_last : 1.0); }
    double PossibleNumber(const Data::CValueRange& range) {
        const double number = Number();
        if (Data::Judge(range, number) != Data::enmJudgement::Impossible)
            return number;
        const double least = range.m_min.value_or(0.0);
        return least + (range.m_max.value_or(1.0) - least) * static_cast<double>(Below(1000)) / 999.0;
    }
    std::string Text() {
        static const std::string texts[] = {
            "", "Šaht \"7\"", "back\\slash", "tab\tline\nend\x7F", "{\"TAG\":1.5}", "Хасково"};
        return texts[Below(std::size(texts))];
    }
    CPoint Point() { return {Positive() * 1e-300, 5e6 + static_cast<double>(Below(1'000'000'000)) / 1024.0}; }

    void Set(const CEntity& entity, const Data::CDataDefinition& key) {
        Data::CDataBox box;
        if (key.m_type == Data::enmDataType::Text)
            box.SetText(Text());
        else if (key.m_type == Data::enmDataType::Int)
            box.SetInt(1 + static_cast<int>(Below(4)));
        else
            box.SetDouble(PossibleNumber(key.m_range));
        EXPECT_EQ(Data::CDataRW::Write(&key, &entity, box, nullptr), 1);
    }
    void SetAttributes(const CEntity& entity) {
        for (const auto& key : Data::CDataConfiguration::Instance()->GetDataDefinitions())
            if (key->m_entityKind == entity.GetEntityKind() && OneIn(3))
                Set(entity, *key);
    }

    void FillCatalog() {
        CCatalog& pipes = *CCatalogManager::Instance()->GetCatalog("PIPE", 1);
        const auto group = pipes.AddGroup("group", "PVC").Value();
        for (const char* guid : {"p-1", "p-2"})
            EXPECT_TRUE(pipes.AddPipe(*group, guid, guid, {enmPipeShape::Circle, 300, 300, 7.7, 0.25, "PVC", 200, {}}));
    }
    void FillNodes() {
        for (std::size_t i = 0, count = 2 + Below(20); i < count; ++i)
            SetAttributes(
                *m_topology.AddNode("n" + std::to_string(i), Text() + std::to_string(i), OneIn(5) ? CPoint() : Point())
                     .Value());
    }
    CNode* AnyNode() { return m_topology.GetNodes()[Below(m_topology.GetNodes().size())].get(); }
    void FillSections() {
        for (std::size_t i = 0, count = 1 + Below(30); i < count; ++i) {
            std::vector<CPoint> line(OneIn(2) ? 0 : 2 + Below(3));
            for (CPoint& point : line)
                point = Point();
            // Some names look like GUIDs of others, some repeat.
            const std::string name = OneIn(3) ? "s" + std::to_string(Below(30)) : Text();
            CNode* const start = AnyNode();
            CNode* end = AnyNode();
            while (end == start)
                end = AnyNode();
            const auto section = m_topology.AddSection("s" + std::to_string(i), name, start, end, line).Value();
            SetAttributes(*section);
            if (section->GetGeometry().empty())
                Data::CDataRW::Write("length", section, 1.0 / 3.0, nullptr);
            if (OneIn(2))
                Data::CDataRW::Write("PIPE_REF", section, OneIn(2) ? "p-2" : "{P-1}", nullptr);
        }
    }
    void FillCatchments() {
        for (std::size_t i = 0, count = Below(30); i < count; ++i) {
            const auto& sections = m_topology.GetSections();
            CRings rings(Below(3)); // none, a triangle, a triangle with a hole
            const CPoint corner = {static_cast<double>(Below(1'000'000)) / 1024.0, Point().m_y};
            for (std::size_t ring = 0; ring < rings.size(); ++ring) {
                const double inset = ring == 0 ? 0.0 : 10.0;
                const CPoint first = {corner.m_x + inset, corner.m_y + inset};
                rings[ring] = {first,
                               {corner.m_x + 100.0 - 3.0 * inset, first.m_y},
                               {first.m_x, corner.m_y + 100.0 - 3.0 * inset},
                               first};
            }
            const auto catchment = m_topology
                                       .AddCatchment("c" + std::to_string(i), Text() + "c",
                                                     sections[Below(sections.size())].get(), std::move(rings))
                                       .Value();
            SetAttributes(*catchment);
            Data::CDataRW::Write("area", catchment, PossibleNumber(Data::FindDefinition("area")->m_range), nullptr);
        }
    }
    void ChooseOutlets() {
        std::vector<boost::shared_ptr<CSection>> out;
        for (const auto& node : m_topology.GetNodes())
            if (node->GetSectionsOut(out) > 0 && OneIn(2))
                Data::CDataRW::Write("MAIN_SECT_OUT", node,
                                     (OneIn(4) ? "S" : "s") + std::string(out[Below(out.size())]->GetGuid().substr(1)),
                                     nullptr);
    }

    std::mt19937_64 m_engine;
    CTopologyStorage& m_topology = ActiveTopology();
    double m_last = 0.0;
};

/// The message for a project that the format cannot express.
std::string WhyNoExport() {
    std::ostringstream stream;
    const auto status = ProjectIo::ExportExchange(stream);
    EXPECT_EQ(stream.str(), "") << "nothing is written";
    return status ? "" : status.GetError().message;
}

} // namespace

TEST(ExchangeRoundTrip, ImportOfAnExportIsTheSameProject) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        std::string exported;
        std::string described;
        {
            CTestProject project;
            CRandomNetwork(seed).Fill();
            exported = ExportText();
            described = DescribeProject();
        }
        CTestProject project;
        if (described.find("setting crs=\n") != std::string::npos)
            System::CProjectSettings::Instance()->Set("crs", "");
        ImportGood(exported);
        ASSERT_EQ(DescribeProject(), described) << "seed " << seed;
        ASSERT_EQ(ExportText(), exported) << "seed " << seed;
    }
}

TEST(ExchangeRoundTrip, NotANumberSurvives) {
    CTestProject project;
    ImportGood(Collection(NodeFeature("A", "0", "0") + "," + NodeFeature("B", "0", "9") + "," +
                          SectionFeature("S", "A", "B", R"(,"FLOW_TOTAL":"NaN")")));
    EXPECT_THAT(ExportText(), HasSubstr(R"("FLOW_TOTAL":"NaN")"));
}

TEST(ExchangeRoundTrip, OneFeatureALineInAFixedForm) {
    CTestProject project;
    System::CProjectSettings::Instance()->Set("crs", "EPSG:3765");
    const std::string text =
        "{\"type\":\"FeatureCollection\",\n"
        "\"crs\":{\"type\":\"name\",\"properties\":{\"name\":\"EPSG:3765\"}},\n"
        "\"features\":[\n"
        R"({"type":"Feature","properties":{"layer":"node","name":"A","guid":"n1","terrain":{"1":120.5}},)"
        R"("geometry":{"type":"Point","coordinates":[478277.72,5051840.44]}},)"
        "\n"
        R"({"type":"Feature","properties":{"layer":"node","name":"B","guid":"n2"},"geometry":null},)"
        "\n"
        R"({"type":"Feature","properties":{"layer":"section","name":"S","guid":"s1","from":"A","to":"B",)"
        R"("length":0.30000000000000004},"geometry":null},)"
        "\n"
        R"({"type":"Feature","properties":{"layer":"section","name":"S","guid":"s2","from":"A","to":"B","length":8},)"
        R"("geometry":null},)"
        "\n"
        R"({"type":"Feature","properties":{"layer":"catchment","name":"S/1","guid":"c1","section":"s2",)"
        R"("kinds":["rain","industrial"],"area":2,"coefficient":1},"geometry":null},)"
        "\n"
        R"({"type":"Feature","properties":{"layer":"main_outlet","node":"A","section":"s1"},"geometry":null})"
        "\n]}\n";
    ImportGood(text);
    EXPECT_EQ(ExportText(), text);
}

TEST(ExchangeRoundTrip, TheSampleTownAndAnInventedCityComeBack) {
    std::ifstream file(DRENOVA_SOURCE_DIR "/data/samples/rivertown.geojson");
    ASSERT_TRUE(file);
    std::string town;
    std::string city;
    {
        CTestProject project;
        const auto summary = ProjectIo::ImportExchange(file, "rivertown.geojson");
        ASSERT_TRUE(summary) << summary.GetError().message;
        EXPECT_EQ(summary->m_nodeCount, 123U);
        EXPECT_EQ(summary->m_sectionCount, 121U);
        EXPECT_EQ(summary->m_catchmentCount, 122U);
        EXPECT_TRUE(summary->m_notes.empty() && summary->m_warnings.empty());
        town = ExportText();
    }
    {
        CTestProject project;
        ASSERT_TRUE(ProjectIo::GenerateNetwork(ProjectIo::enmNetworkShape::City, 3000, 5));
        city = ExportText();
    }
    for (const std::string& text : {town, city}) {
        CTestProject project;
        const auto summary = ImportGood(text);
        EXPECT_TRUE(summary.m_notes.empty() && summary.m_warnings.empty());
        EXPECT_EQ(ExportText(), text);
    }
}

TEST(ExchangeRoundTrip, WhatTheFormatCannotExpressIsNotWritten) {
    CTestProject project;
    auto& topology = ActiveTopology();
    const auto node = topology.AddNode("n", "N", {0, 0}).Value();
    const auto loose = topology.AddSection("s", "S", node.get(), nullptr, {}).Value();
    EXPECT_THAT(WhyNoExport(), HasSubstr("section S (s): found no ending node"));
    topology.RemoveSection(*loose);
    const auto section = topology.AddSection("t", "T", node.get(), node.get(), {}).Value();
    const auto catchment = topology.AddCatchment("c", "C", section.get(), {}).Value();
    EXPECT_THAT(WhyNoExport(), HasSubstr("catchment C (c): found neither an area nor a polygon"));
    Data::CDataRW::Write("area", catchment, 1.0, nullptr);
    Data::CDataRW::Write("kinds", catchment, 9, nullptr);
    EXPECT_THAT(WhyNoExport(), HasSubstr("kinds: found 9"));
}

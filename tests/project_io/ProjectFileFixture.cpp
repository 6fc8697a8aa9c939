// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "tests/project_io/ProjectFileFixture.h"

#include "host/gis_core/ProjectContext.h"

#include <bit>
#include <cmath>
#include <limits>
#include <random>

using namespace OLMGis;
using namespace OLMGis::Data;
using namespace OLMGis::Topology;

namespace {

std::string DescribeAttributes(const CEntity& entity) {
    std::string text;
    CDataBox box;
    for (const auto& definition : CDataConfiguration::Instance()->GetDataDefinitions()) {
        if (CDataRW::Read(definition.get(), &entity, box, 0, nullptr) == 0)
            continue;
        if (box.GetKind() != CDataBox::enmKind::Double)
            text += fmt::format(" {}={}", definition->m_id, box.AsText());
        else if (!std::isnan(box.AsDouble())) // which the file keeps as null
            text += fmt::format(" {}={:a}", definition->m_id, box.AsDouble());
    }
    return text;
}

std::string DescribePoints(std::span<const CPoint> points) {
    std::string text;
    for (const CPoint& point : points)
        text += fmt::format(" ({:a} {:a})", point.m_x, point.m_y);
    return text;
}

std::string DescribeCatalog(std::string_view id) {
    std::string text;
    for (const auto& group : CCatalogManager::Instance()->GetCatalog(id, 1)->GetOwnGroups()) {
        text += fmt::format("group {} {} {}\n", id, group->GetGUID(), group->GetName());
        for (const auto& item : group->GetSubItems()) {
            text += fmt::format("  item {} {}", item->GetGUID(), item->GetName());
            if (const CPipeData* pipe = item->GetPipeData(); pipe != nullptr) {
                text += fmt::format(" {} {:a} {:a} {:a} {:a} {} {:a}", static_cast<int>(pipe->m_shape),
                                    pipe->m_innerWidth, pipe->m_innerHeight, pipe->m_wall, pipe->m_roughness,
                                    pipe->m_type, pipe->m_minDiameter);
                for (const CShapePoint& point : pipe->m_table)
                    text += fmt::format(" {:a}:{:a}", point.m_height, point.m_width);
            }
            if (const CManholeData* manhole = item->GetManholeData(); manhole != nullptr)
                text += fmt::format(" {:a} {:a} {:a} {:a}", manhole->m_innerDiameter, manhole->m_h1, manhole->m_h2,
                                    manhole->m_height);
            text += "\n";
        }
    }
    return text;
}

/// Numbers from a seed, the same on every machine.
class CDice {
public:
    explicit CDice(unsigned seed) : m_engine(seed) {}

    std::size_t Below(std::size_t limit) { return limit == 0 ? 0 : m_engine() % limit; }
    bool OneIn(std::size_t n) { return Below(n) == 0; }
    double Coordinate() { return 5'000'000.0 + static_cast<double>(m_engine() % 1'000'000'000) / 1024.0; }

    double Double() {
        constexpr double Special[] = {0.0,
                                      1.0,
                                      -3.0,
                                      0.1,
                                      1e300,
                                      -1e-300,
                                      std::numeric_limits<double>::infinity(),
                                      -std::numeric_limits<double>::infinity(),
                                      std::numeric_limits<double>::quiet_NaN(),
                                      std::numeric_limits<double>::denorm_min(),
                                      9007199254740993.0};
        if (OneIn(2))
            return Special[Below(std::size(Special))];
        const auto value = std::bit_cast<double>(m_engine());
        return std::isnan(value) ? 0.5 : value;
    }

    int Int() {
        constexpr int Special[] = {0, 1, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
        return Special[Below(std::size(Special))];
    }

    std::string Text() {
        static const std::string special[] = {"",          "Šaht Čakovec",         "O'Brien \"x\"; DROP TABLE nodes",
                                              "line\nend", std::string("a\0b", 3), "  blanks  ",
                                              "Хасково-7", "{\"TAG\":1.5}",        std::string(3000, 'x')};
        return special[Below(std::size(special))];
    }

private:
    std::mt19937_64 m_engine;
};

void FillAttributes(CDice& dice, const CEntity& entity) {
    for (const auto& definition : CDataConfiguration::Instance()->GetDataDefinitions()) {
        if (definition->m_entityKind != entity.GetEntityKind() || !dice.OneIn(3))
            continue;
        CDataBox box;
        if (definition->m_type == enmDataType::Double)
            box.SetDouble(dice.Double());
        else if (definition->m_type == enmDataType::Int)
            box.SetInt(dice.Int());
        else
            box.SetText(dice.Text());
        CDataRW::Write(definition.get(), &entity, box, nullptr);
    }
}

std::string NextGuid(CDice& dice, std::string_view what, std::size_t i) {
    const std::string guid = fmt::format("{}-Č-{:04}", what, i);
    return dice.OneIn(4) ? "{" + guid + "}" : guid;
}

std::vector<CPoint> Line(CDice& dice, const CNode* start, const CNode* end) {
    if (dice.OneIn(3))
        return {};
    std::vector<CPoint> line(2 + dice.Below(4));
    for (CPoint& point : line)
        point = {dice.Coordinate(), dice.Coordinate()};
    if (start != nullptr && start->GetPoint().IsKnown())
        line.front() = start->GetPoint();
    if (end != nullptr && end->GetPoint().IsKnown())
        line.back() = end->GetPoint();
    return line;
}

CRings Rings(CDice& dice) {
    CRings rings(dice.Below(4));
    for (auto& ring : rings) {
        ring.resize(3 + dice.Below(4));
        for (CPoint& point : ring)
            point = {dice.Coordinate(), dice.Coordinate()};
        ring.push_back(ring.front());
    }
    return rings;
}

void FillNetwork(CDice& dice) {
    CTopologyStorage& topology = ActiveTopology();
    const std::size_t nodeCount = dice.Below(25);
    for (std::size_t i = 0; i < nodeCount; ++i) {
        const CPoint point = dice.OneIn(5) ? CPoint() : CPoint{dice.Coordinate(), dice.Coordinate()};
        FillAttributes(dice, *topology.AddNode(NextGuid(dice, "n", i), dice.Text() + std::to_string(i), point).Value());
    }
    const auto anyNode = [&]() -> CNode* {
        return nodeCount == 0 || dice.OneIn(8) ? nullptr
                                               : topology.GetNodes()[dice.Below(topology.GetNodes().size())].get();
    };
    const std::size_t sectionCount = dice.Below(40);
    for (std::size_t i = 0; i < sectionCount; ++i) {
        CNode* const start = anyNode();
        CNode* const end = anyNode();
        const auto line = Line(dice, start, end);
        FillAttributes(dice, *topology.AddSection(NextGuid(dice, "s", i), dice.Text(), start, end, line).Value());
    }
    const std::size_t catchmentCount = sectionCount == 0 ? 0 : dice.Below(30);
    for (std::size_t i = 0; i < catchmentCount; ++i) {
        CSection* const section = topology.GetSections()[dice.Below(sectionCount)].get();
        FillAttributes(dice, *topology.AddCatchment(NextGuid(dice, "c", i), dice.Text(), section, Rings(dice)).Value());
    }
    // Tombstones leave no trace in the file.
    for (std::size_t i = dice.Below(3); i > 0 && !topology.GetCatchments().empty(); --i)
        topology.RemoveCatchment(*topology.GetCatchments()[dice.Below(topology.GetCatchments().size())]);
    for (std::size_t i = dice.Below(3); i > 0 && !topology.GetSections().empty(); --i)
        topology.RemoveSection(*topology.GetSections()[dice.Below(topology.GetSections().size())]);
    for (std::size_t i = dice.Below(3); i > 0 && !topology.GetNodes().empty(); --i)
        topology.RemoveNode(*topology.GetNodes()[dice.Below(topology.GetNodes().size())]);
}

void FillCatalogs(CDice& dice) {
    CCatalog& pipes = *CCatalogManager::Instance()->GetCatalog(CCatalogManager::PipeCatalog, 1);
    CCatalog& manholes = *CCatalogManager::Instance()->GetCatalog(CCatalogManager::ManholeCatalog, 1);
    for (std::size_t group = 0, groups = dice.Below(3); group < groups; ++group) {
        const auto pipeGroup = pipes.AddGroup(fmt::format("pg{}", group), fmt::format("PVC Š {}", group)).Value();
        const auto manholeGroup = manholes.AddGroup(fmt::format("mg{}", group), fmt::format("M {}", group)).Value();
        for (std::size_t item = 0, items = dice.Below(5); item < items; ++item) {
            CPipeData pipe{static_cast<enmPipeShape>(dice.Below(4)), 300.0, 450.0, 7.5, 0.1, dice.Text(), 250.0, {}};
            if (pipe.m_shape == enmPipeShape::Table)
                pipe.m_table = {{0.0, 0.0}, {100.0 / 3.0, 200.0}, {450.0, 0.0}};
            const std::string name = fmt::format("DN {}", item);
            EXPECT_TRUE(pipes.AddPipe(*pipeGroup, fmt::format("p{}-{}", group, item), name, pipe));
            EXPECT_TRUE(manholes.AddManhole(*manholeGroup, fmt::format("m{}-{}", group, item), name,
                                            {1.0, 0.1 * static_cast<double>(item), 1.0 / 3.0, 2.5}));
        }
    }
}

} // namespace

std::string DescribeProject() {
    std::string text;
    for (const auto& [name, value] : System::CProjectSettings::Instance()->GetAll())
        text += fmt::format("setting {}={}\n", name, value);
    text += DescribeCatalog(CCatalogManager::PipeCatalog);
    text += DescribeCatalog(CCatalogManager::ManholeCatalog);
    for (const auto& node : ActiveTopology().GetNodes())
        text += fmt::format("node {} {}{}{}\n", node->GetGuid(), node->GetName(),
                            DescribePoints({&node->GetPoint(), 1}), DescribeAttributes(*node));
    for (const auto& section : ActiveTopology().GetSections())
        text += fmt::format("section {} {} {} > {}{}{}\n", section->GetGuid(), section->GetName(),
                            section->GetStartingNodeGuid(), section->GetEndingNodeGuid(),
                            DescribePoints(section->GetGeometry()), DescribeAttributes(*section));
    for (const auto& catchment : ActiveTopology().GetCatchments()) {
        text += fmt::format("catchment {} {} of {}", catchment->GetGuid(), catchment->GetName(),
                            catchment->GetSection()->GetGuid());
        for (const auto& ring : catchment->GetRings())
            text += " ring" + DescribePoints(ring);
        text += DescribeAttributes(*catchment) + "\n";
    }
    return text;
}

void FillRandomly(unsigned seed) {
    CDice dice(seed);
    auto& settings = *System::CProjectSettings::Instance();
    if (dice.OneIn(2))
        settings.Set(System::CProjectSettings::Crs, dice.OneIn(2) ? "EPSG:3765" : "EPSG:4326");
    settings.Set(System::CProjectSettings::Edition, "RO");
    settings.Set("pipe_group", dice.Text());
    FillCatalogs(dice);
    FillNetwork(dice);
}

void FillSmall() {
    CTopologyStorage& topology = ActiveTopology();
    const auto a = topology.AddNode("node-a", "A", {100.0, 200.0}).Value();
    const auto b = topology.AddNode("node-b", "B", {160.0, 280.0}).Value();
    const auto section = topology.AddSection("section-1", "A-B", a.get(), b.get(), {}).Value();
    const CRings square = {{{100, 200}, {200, 200}, {200, 300}, {100, 300}, {100, 200}}};
    const auto catchment = topology.AddCatchment("catchment-1", "C", section.get(), square).Value();
    CDataRW::Write("TERRAIN_1", a, 112.5, nullptr);
    CDataRW::Write("SECTION_SLOPE", section, 3.5, nullptr);
    CDataRW::Write("FLOW_WASTE_PER_S", section, "{\"BROJ_STANOVNIKA\":\"12000\"}", nullptr);
    CDataRW::Write("kinds", catchment, 3, nullptr);
    CDataRW::Write("area", catchment, 1.0, nullptr);
}

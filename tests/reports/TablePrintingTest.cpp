// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/TablePrinting.h"

#include "reports/Listing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>
#include <sstream>
#include <string>

using nlohmann::json;
using OLMGis::Data::CDataBox;
using Reports::CListing;
using Reports::CTable;
using Reports::enmFormat;
using Reports::enmReader;
using Reports::FlagColumn;
using Reports::NumberColumn;
using Reports::TextColumn;
using testing::HasSubstr;

namespace {

/// One column of each sort; a name that quotes, a null in every column that may be null, numbers that are not finite.
CTable MakeTable() {
    CTable table({TextColumn("name", "section"), TextColumn("guid", "", enmReader::Programs),
                  TextColumn("", "who", enmReader::People), NumberColumn("flow_m3s", "flow", "m³/s", 3),
                  NumberColumn("count", "count"), FlagColumn("built_in", "built-in")});
    table.AddRow({"č, \"1\"", "G1", "people", 0.1, 7, 1});
    table.AddRow({"水水", "G2", {}, -0.0, {}, 0});
    table.AddRow({"x\n", "G3", {}, std::numeric_limits<double>::infinity(), 3, {}});
    return table;
}

template <class Printer>
std::string Printed(const Printer& print) {
    std::ostringstream stream;
    print(stream);
    return stream.str();
}

} // namespace

TEST(TablePrinting, GivesPeopleAlignedRoundedValues) {
    EXPECT_EQ(Printed([](auto& stream) { PrintAsText(stream, MakeTable(), "  "); }),
              "  section  who         flow  count  built-in\n"
              "                       m³/s\n"
              "  č, \"1\"   people     0.100      7  yes\n"
              "  水水               -0.000         no\n"
              "  x?               Infinity      3\n");
    EXPECT_EQ(Printed([](auto& stream) { PrintAsText(stream, CTable({TextColumn("a", "a")})); }), "");
    CTable bare({TextColumn("label", ""), NumberColumn("value", "")});
    bare.AddRow({"a", 1.5});
    bare.AddRow({"bc", 10});
    EXPECT_EQ(Printed([&](auto& stream) { PrintAsText(stream, bare); }), "a   1.5\nbc   10\n");
}

TEST(TablePrinting, GivesProgramsValuesInFull) {
    EXPECT_EQ(Printed([](auto& stream) { PrintAsCsv(stream, MakeTable()); }), "name,guid,flow_m3s,count,built_in\n"
                                                                              "\"č, \"\"1\"\"\",G1,0.1,7,1\n"
                                                                              "水水,G2,-0,,0\n"
                                                                              "\"x\n\",G3,Infinity,3,\n");
    const std::string text = Printed([](auto& stream) { PrintAsJson(stream, MakeTable()); });
    EXPECT_EQ(text,
              "[\n"
              "  {\"name\": \"č, \\\"1\\\"\", \"guid\": \"G1\", \"flow_m3s\": 0.1, \"count\": 7, \"built_in\": true},\n"
              "  {\"name\": \"水水\", \"guid\": \"G2\", \"flow_m3s\": -0.0, \"count\": null, \"built_in\": false},\n"
              "  {\"name\": \"x\\n\", \"guid\": \"G3\", \"flow_m3s\": \"Infinity\", \"count\": 3, \"built_in\": null}\n"
              "]\n");
    EXPECT_EQ(json::parse(text).size(), 3U);
    EXPECT_EQ(Printed([](auto& stream) { PrintAsJson(stream, CTable({TextColumn("a", "a")})); }), "[\n]\n");
    EXPECT_EQ(Printed([](auto& stream) { PrintAsCsv(stream, CTable({TextColumn("a", "a")})); }), "a\n");
}

/// A point where a row has one, null geometry elsewhere, the coordinate system where there is one.
TEST(TablePrinting, PutsRowsOnTheMap) {
    CTable table = MakeTable();
    table.SetPoints([](std::size_t row) {
        return row == 1 ? OLMGis::Topology::CPoint{1.5, -2.0} : OLMGis::Topology::CPoint{};
    });
    const json map = json::parse(Printed([&](auto& stream) { PrintAsGeoJson(stream, table, "EPSG:3765"); }));
    EXPECT_EQ(map.at("crs").at("properties").at("name"), "EPSG:3765");
    ASSERT_EQ(map.at("features").size(), 3U);
    EXPECT_TRUE(map.at("features")[0].at("geometry").is_null());
    EXPECT_EQ(map.at("features")[1].at("geometry").at("coordinates"), json::parse("[1.5, -2.0]"));
    EXPECT_EQ(map.at("features")[2].at("properties").at("guid"), "G3");
    EXPECT_FALSE(json::parse(Printed([&](auto& stream) { PrintAsGeoJson(stream, table, ""); })).contains("crs"));
}

/// Rows that are read when they are printed come out like stored ones: a value of one row never stays in the next.
TEST(TablePrinting, ReadsRowsWithoutAnythingOfTheRowBefore) {
    CTable read({TextColumn("name", "name"), NumberColumn("value", "value", "", 1)});
    read.SetRows(3, [](std::size_t row, CTable::CRow& values) {
        values[0].SetText(std::string(row + 1, 'a'));
        if (row == 1)
            values[1].SetDouble(2.25);
    });
    CTable stored({TextColumn("name", "name"), NumberColumn("value", "value", "", 1)});
    stored.AddRow({"a", {}});
    stored.AddRow({"aa", 2.25});
    stored.AddRow({"aaa", {}});
    for (const enmFormat format : {enmFormat::Text, enmFormat::Csv, enmFormat::Json, enmFormat::GeoJson})
        EXPECT_EQ(Printed([&](auto& stream) { Print(stream, CListing(read), format); }),
                  Printed([&](auto& stream) { Print(stream, CListing(stored), format); }));
}

TEST(Listing, SeparatesBlocksAndLeavesEmptyOnesOut) {
    CTable table({TextColumn("key", "key")});
    table.AddRow({"K"});
    CListing listing;
    listing.m_blocks.push_back({"title", {}});
    listing.m_blocks.push_back({"", CTable({TextColumn("none", "none")})});
    listing.m_blocks.push_back({"Values", table, true});
    EXPECT_EQ(Printed([&](auto& stream) { Print(stream, listing, enmFormat::Text); }), "title\n\nValues\n  key\n  K\n");
    listing.m_printDocument = [](std::ostream& stream) { stream << "{}"; };
    EXPECT_EQ(Printed([&](auto& stream) { Print(stream, listing, enmFormat::Json); }), "{}");
    for (const char* name : {"table", "csv", "json", "geojson"})
        EXPECT_TRUE(Reports::FindFormat(name)) << name;
    EXPECT_FALSE(Reports::FindFormat("xml"));
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Tables: the first byte chooses the kind, the rest is the file. It is refused with a message and nothing stored, or
// its values come back the same from the table that they are written to.
#include "host/gis_core/DataRW.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/tables/CatalogCsv.h"
#include "host/project_io/tables/CsvExport.h"
#include "host/project_io/tables/CsvLoad.h"
#include "tests/fuzz/FuzzSupport.h"
#include "tests/support/TestProject.h"

#include <sstream>

using namespace OLMGis;
using Data::enmEntityKind;
using ProjectIo::enmCatalogKind;

namespace {

const std::string FileName = "fuzz.csv";

/// Two sections of one name, each with a catchment.
void MakeNetwork() {
    auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto a = topology.AddNode("node-a", "A", {0, 0}).Value();
    const auto b = topology.AddNode("node-b", "B", {10, 0}).Value();
    const auto c = topology.AddNode("node-c", "C", {20, 0}).Value();
    const auto ab = topology.AddSection("section-1", "S", a.get(), b.get(), {}).Value();
    const auto bc = topology.AddSection("section-2", "S", b.get(), c.get(), {}).Value();
    const auto cb = topology.AddSection("section-3", "T", c.get(), b.get(), {}).Value();
    for (const auto& section : {ab, cb}) {
        const std::string name = std::string(section->GetName()) + "/1";
        const auto catchment = topology.AddCatchment("of-" + std::string(section->GetGuid()), name, section.get(), {});
        Data::CDataRW::Write("kinds", catchment.Value(), 1, nullptr);
        Data::CDataRW::Write("area", catchment.Value(), 0.5, nullptr);
    }
}

std::string Export(enmEntityKind kind) {
    std::ostringstream stream;
    Require(static_cast<bool>(ProjectIo::ExportCsv(stream, kind)), "the table cannot be written");
    return stream.str();
}

std::string Export(enmCatalogKind kind) {
    std::ostringstream stream;
    Require(static_cast<bool>(ProjectIo::ExportCatalogCsv(stream, kind)), "the catalogue cannot be written");
    return stream.str();
}

Utility::Result<int> Import(const std::string& text, enmEntityKind kind) {
    std::istringstream stream(text);
    const auto loaded = ProjectIo::LoadCsv(stream, FileName, kind);
    return loaded ? Utility::Result<int>(loaded->m_count) : Utility::Result<int>(loaded.GetError());
}

Utility::Result<int> Import(const std::string& text, enmCatalogKind kind) {
    std::istringstream stream(text);
    return ProjectIo::ImportCatalogCsv(stream, FileName,
                                       kind == enmCatalogKind::Pipe ? ProjectIo::enmCatalogTable::Pipe
                                                                    : ProjectIo::enmCatalogTable::Manhole);
}

/// A table of names alone has nothing to load.
bool HasNoValues(const Utility::Error& error) {
    return error.message.find("no column with values") != std::string::npos;
}

template <class Kind>
void Test(const std::string& text, Kind kind) {
    const CTestProject project;
    MakeNetwork();
    const std::string before = Export(kind);
    if (const auto imported = Import(text, kind); !imported) {
        RequireTelling(imported.GetError(), FileName);
        Require(Export(kind) == before, "a refused table left something behind");
        return;
    }
    const std::string after = Export(kind);
    const CTestProject other;
    MakeNetwork();
    if (const auto again = Import(after, kind); !again) {
        Require(HasNoValues(again.GetError()), "the written table is refused: " + again.GetError().message);
        return;
    }
    Require(Export(kind) == after, "the values changed on their way through a table");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::string text(AsText(data + 1, size - 1));
    switch (data[0] % 5) {
    case 0:
        Test(text, enmEntityKind::Node);
        break;
    case 1:
        Test(text, enmEntityKind::Section);
        break;
    case 2:
        Test(text, enmEntityKind::Catchment);
        break;
    case 3:
        Test(text, enmCatalogKind::Pipe);
        break;
    default:
        Test(text, enmCatalogKind::Manhole);
    }
    return 0;
}

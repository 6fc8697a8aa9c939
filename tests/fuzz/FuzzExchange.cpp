// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Exchange files: any bytes are refused with a message and nothing entered, or give a network that comes back the same
// from the file that it is written to.
#include "host/network_core/CatalogManager.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/exchange/ExchangeExport.h"
#include "host/project_io/exchange/ExchangeImport.h"
#include "tests/fuzz/FuzzSupport.h"
#include "tests/support/TestProject.h"

#include <sstream>

using namespace OLMGis;

namespace {

const std::string FileName = "fuzz.geojson";

Utility::Result<ProjectIo::CImportSummary> Import(const std::string& text) {
    Topology::CCatalog& pipes = *Topology::CCatalogManager::Instance()->GetCatalog("PIPE", 1);
    const auto group = pipes.AddGroup("group", "PVC").Value();
    Require(static_cast<bool>(pipes.AddPipe(*group, "pipe", "DN 300", {})), "the catalogue of the fuzzer");
    std::istringstream stream(text);
    return ProjectIo::ImportExchange(stream, FileName);
}

std::string Export() {
    std::ostringstream stream;
    const auto written = ProjectIo::ExportExchange(stream);
    Require(static_cast<bool>(written),
            written ? "" : "an imported network cannot be written: " + written.GetError().message);
    return stream.str();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const CTestProject project;
    if (const auto imported = Import(std::string(AsText(data, size))); !imported) {
        RequireTelling(imported.GetError(), FileName);
        const auto& topology = *Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
        Require(topology.GetNodes().empty() && topology.GetSections().empty() && topology.GetCatchments().empty(),
                "a refused file left something behind");
        return 0;
    }
    const std::string text = Export();
    const CTestProject other;
    const auto again = Import(text);
    Require(static_cast<bool>(again), again ? "" : "the written network is refused: " + again.GetError().message);
    Require(Export() == text, "the network changed on its way through a file");
    return 0;
}

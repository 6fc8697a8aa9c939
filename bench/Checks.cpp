// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Benchmarks.h"
#include "bench/Network.h"
#include "host/gis_core/DataRW.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/sewage_calculations/NetworkChecks.h"

#include <array>
#include <string>

namespace Bench {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataConfiguration;
using OLMGis::Data::CDataRW;
using OLMGis::Topology::CCatalog;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Topology::CFunctionalAnalysisManager;
using OLMGis::Topology::CPipeData;
using OLMGis::Utility::BadInput;

namespace {

const std::array<std::string, 3> PipeGuids{"bench-pipe-300", "bench-pipe-400", "bench-pipe-500"};
const std::string ManholeGuid = "bench-manhole";

/// Sections in a row with one size of pipe.
constexpr std::size_t SameSize = 40;

void AddCatalogItems() {
    CCatalogManager& catalogs = *CCatalogManager::Instance();
    CCatalog& pipes = *catalogs.GetCatalog(CCatalogManager::PipeCatalog, 1);
    const auto pipeGroup = pipes.AddGroup("bench-pipes", "pipes of the benchmark").Value();
    double diameter = 200.0;
    for (const std::string& guid : PipeGuids) {
        CPipeData data;
        data.m_innerWidth = data.m_innerHeight = diameter += 100.0;
        data.m_wall = 50.0;
        static_cast<void>(pipes.AddPipe(*pipeGroup, guid, guid, data));
    }
    CCatalog& manholes = *catalogs.GetCatalog(CCatalogManager::ManholeCatalog, 1);
    const auto manholeGroup = manholes.AddGroup("bench-manholes", "manholes of the benchmark").Value();
    static_cast<void>(manholes.AddManhole(*manholeGroup, ManholeGuid, ManholeGuid, {1.0, 0.25, 0.8, 2.0}));
}

/// A generated network whose sections have pipes of three sizes, the same over some length, and a second slope, its
/// nodes manholes: every check reads all that it can, and a quarter of the slopes offend.
Result<CBenchProjectPtr> MakeCheckedNetwork(const CSize& size) {
    auto project = MakeGeneratedNetwork(size);
    if (!project)
        return project;
    AddCatalogItems();
    const auto find = [](const char* key) { return CDataConfiguration::Instance()->GetDataDefinitionByID(key); };
    CDataBox slope;
    std::size_t count = 0;
    for (const auto& section : project.Value()->Topology().GetSections()) {
        CDataRW::Write(find("PIPE_REF"), section, CDataBox(PipeGuids[++count / SameSize % PipeGuids.size()]), nullptr);
        CDataRW::Read(find("SECTION_SLOPE"), section, slope, 0, nullptr);
        CDataRW::Write(find("SECTION_SLOPE_CAL"), section, slope, nullptr);
    }
    for (const auto& node : project.Value()->Topology().GetNodes())
        CDataRW::Write(find("MANHOLE_ID"), node, CDataBox(ManholeGuid), nullptr);
    return project;
}

/// One pass runs the items that have the key, or all of the module for the empty one, with their forms as they are
/// made.
CSubjectMaker Checking(const std::string& key) {
    return [key](const CSize& size) -> Result<CSubject> {
        const auto project = MakeCheckedNetwork(size);
        if (!project)
            return project.GetError();
        CSubject subject;
        subject.m_pass = [project = project.Value(), key]() -> Status {
            CFunctionalAnalysisManager& manager = *CFunctionalAnalysisManager::Instance();
            std::vector<CFunctionalAnalysisManager::CRequest> requests;
            for (const auto& item : manager.GetItems())
                if (key.empty() || item->GetItemKey() == key)
                    requests.push_back({item, nullptr});
            return manager.RunAnalysis(requests) ? Status(Done{}) : Status(BadInput("the run was given up"));
        };
        subject.m_inspect = []() -> Status {
            for (const auto& item : *CFunctionalAnalysisManager::Instance()->GetFindings())
                if (!item.m_error.empty())
                    return BadInput(item.m_error);
            return Done{};
        };
        return subject;
    };
}

/// One pass runs the checks that are not of the module, on pipes that carry a flow.
CSubjectMaker CheckingNetwork() {
    return [](const CSize& size) -> Result<CSubject> {
        const auto project = MakeCheckedNetwork(size);
        if (!project)
            return project.GetError();
        const auto* const flow = CDataConfiguration::Instance()->GetDataDefinitionByID("FLOW_TOTAL");
        for (const auto& section : project.Value()->Topology().GetSections())
            CDataRW::Write(flow, section, CDataBox(0.05), nullptr);
        CSubject subject;
        subject.m_pass = [project = project.Value()]() -> Status {
            const OLMGis::Sewage::CNetworkChecks checks;
            CFunctionalAnalysisManager& manager = *CFunctionalAnalysisManager::Instance();
            std::vector<CFunctionalAnalysisManager::CRequest> requests;
            for (const auto& item : manager.GetItems())
                if (OLMGis::Sewage::CNetworkChecks::Has(item->GetItemKey()))
                    requests.push_back({item, nullptr});
            return manager.RunAnalysis(requests) ? Status(Done{}) : Status(BadInput("the run was given up"));
        };
        return subject;
    };
}

} // namespace

void RegisterChecks() {
    RegisterOnNetworks("checks/network", enmPace::Quick, CheckingNetwork());
    RegisterOnNetworks("checks/all", enmPace::Quick, Checking(""));
    for (const char* key : {"0002_MIN_PIPE_DEPTH", "0004_MIN_SLOPE", "0005_MANHOLE_PIPE", "0007_SMALLER_DIAMETERS"})
        RegisterOnNetworks(std::string("checks/") + key, enmPace::Quick, Checking(key));
}

} // namespace Bench

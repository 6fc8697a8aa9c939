// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// All checks as the module registers them, on one network with known faults.
#include "host/network_core/FunctionalAnalysisManager.h"
#include "plugin/HCPluginInfo.h"
#include "tests/support/AnalysisStage.h"

#include <fmt/format.h>

using namespace OLMGis;
using testing::ElementsAre;
using Topology::CFunctionalAnalysisManager;

namespace {

/// Terrain at 10 m, levels at 8 m, slopes of 10 and pipes of 300 mm everywhere, a manhole at D: nothing to find.
struct CSoundNetwork : CAnalysisStage {
    CSoundNetwork() : CAnalysisStage("A---B---C---D---E\nF---B\nC---G") {
        for (const auto& node : net.Topology().GetNodes())
            SetNode(node->GetName().front(), "TERRAIN_1", 10.0);
        const std::string pipe = AddPipe(300.0, 50.0);
        for (const auto& section : net.Sections()) {
            SetLevels(section->GetName(), 8.0, 8.0);
            net.Set(section->GetName(), "PIPE_REF", pipe);
            net.Set(section->GetName(), "LEVEL_LINE_POSITION", 0);
            for (const char* key : {"SECTION_SLOPE", "SECTION_SLOPE_CAL"})
                net.Set(section->GetName(), key, 10.0);
        }
        SetNode('D', "MANHOLE_ID", AddManhole({1.0, 0.25, 0.5, 2.0}));
    }
};

/// Runs all items: each finding as "key name value limit unit".
std::vector<std::string> RunAll() {
    CHCPluginInfo().RegisterCalculationItems();
    auto& manager = *CFunctionalAnalysisManager::Instance();
    std::vector<CFunctionalAnalysisManager::CRequest> requests;
    for (const auto& item : manager.GetItems())
        requests.push_back({item, nullptr});
    EXPECT_TRUE(manager.RunAnalysis(requests));
    std::vector<std::string> found;
    for (const auto& item : *manager.GetFindings())
        for (const auto& finding : item.m_findings)
            found.push_back(fmt::format("{} {} {:.3f} {:.3f} {}", item.m_item, finding.m_name,
                                        finding.m_value.value_or(-1e9), finding.m_limit.value_or(-1e9),
                                        finding.m_unit));
    return found;
}

} // namespace

TEST(PlantedFaults, EachIsFoundInTheOrderOfRegistration) {
    const CSoundNetwork stage;
    stage.net.Set("AB", "LEVEL_LINE_0", 9.5);      // 0.5 m under the ground at A
    stage.net.Set("FB", "LEVEL_LINE_0", 6.0);      // 4 m at F
    stage.net.Set("BC", "SECTION_SLOPE_CAL", 4.0); // below 5
    stage.net.Set("CD", "SECTION_SLOPE", -1.0);    // negative
    stage.net.Set("DE", "SECTION_SLOPE", 31.0);    // above 30
    stage.net.Set("CD", "LEVEL_LINE_1", 7.25);     // 0.75 m below what follows
    stage.Lay("DE", 250.0);                        // CD has 300
    stage.net.Set("CD", "LEVEL_LINE_POSITION", 0); // its top at D: 7.25 + 0.35
    stage.SetNode('D', "MANHOLE_H2", 2.5);         // limit 7.5; the top of CD at D: 7.25 + 0.35
    EXPECT_THAT(RunAll(),
                ElementsAre("0002_MIN_PIPE_DEPTH AB 0.500 1.000 m", "0002_MIN_PIPE_DEPTH FB 4.000 3.500 m",
                            "0003_MIN_LL_SLOPE BC 4.000 5.000 1/1000", "0004_MIN_SLOPE CD -1.000 0.000 1/1000",
                            "0004_MIN_SLOPE DE 31.000 30.000 1/1000", "0006_NEGATIVE_CASCADE CD -0.750 -0.500 m",
                            "0005_MULTI_OUTLET_SECT BC 2.000 1.000 ", "0007_SMALLER_DIAMETERS CD 250.000 300.000 mm",
                            "0005_MANHOLE_PIPE CD 7.600 7.500 m", "0005_MANHOLE_PIPE DE 8.250 7.500 m"));
}

TEST(PlantedFaults, ANetworkWithoutFaultsGivesOnlyTheFork) {
    const CSoundNetwork stage;
    EXPECT_THAT(RunAll(), ElementsAre("0005_MULTI_OUTLET_SECT BC 2.000 1.000 "));
    stage.Lay("CD", 1001.0);
    const auto found = RunAll();
    EXPECT_THAT(found, testing::Contains("0005_MANHOLE_PIPE D 1.001 1.000 m"));
}

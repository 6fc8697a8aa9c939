// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_MinimalPipeDepth.h"

#include "analysis/FindingList.h"
#include "analysis/ItemForm.h"
#include "analysis/ProgressWalk.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/PipeManager.h"

#include <boost/make_shared.hpp>

#include <utility>

using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CPipeManager;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Utility::CModuleConfiguration;

namespace {

constexpr const char* Key = "0002_MIN_PIPE_DEPTH";
constexpr int NameMessage = 878; ///< and caption

constexpr int TerrainTypes = 10;

struct CLimits {
    double m_least = 1.0;
    double m_greatest = 3.0; ///< less than a fresh form offers: what holds where nobody chose is the stricter band
    int m_terrain = 1;
};

/// form: may be null.
CLimits ReadLimits(const CPropertiesEx* form) {
    CLimits limits;
    if (form == nullptr)
        return limits;
    limits.m_least = form->GetDblProperty("VALUE_MIN", limits.m_least, 1);
    limits.m_greatest = form->GetDblProperty("VALUE_MAX", limits.m_greatest, 1);
    limits.m_terrain = form->GetIntProperty("TERRAIN", limits.m_terrain, 1);
    return limits;
}

/// One finding a section: for the first sample that offends, whatever comes behind it.
void ReportFirstOffence(const CSection& section, const std::vector<double>& depths, const CLimits& limits,
                        Analysis::CFindingList& findings) {
    for (const double depth : depths) {
        if (limits.m_least > depth)
            return findings.AddWithValue(section, 10357, {depth, limits.m_least, "m"});
        if (depth > limits.m_greatest)
            return findings.AddWithValue(section, 10358, {depth, limits.m_greatest, "m"});
    }
}

} // namespace

std::string CFAI_MinimalPipeDepth::GetItemKey() {
    return Key;
}

std::string CFAI_MinimalPipeDepth::GetItemName() {
    return CModuleConfiguration::Instance()->GetMsg(NameMessage);
}

int CFAI_MinimalPipeDepth::IsAvailableForSystemFunction(int /*systemFunction*/) {
    return 1; // whatever flows in it, a pipe lies in the ground
}

int CFAI_MinimalPipeDepth::GetItemFlagA() {
    return 1;
}

std::string CFAI_MinimalPipeDepth::GetAnalysisTag() {
    return "FAI_MIN_PIPE_DEPTH";
}

boost::shared_ptr<CPropertiesEx> CFAI_MinimalPipeDepth::CreateProperties() {
    auto form = boost::make_shared<CPropertiesEx>();
    const auto category = Analysis::AddCategory(*form, NameMessage);
    Analysis::AddNumberChoice(*category, "TERRAIN", 4597, TerrainTypes);
    Analysis::AddLimit(*category, "VALUE_MIN", 9066, 1.0);
    Analysis::AddLimit(*category, "VALUE_MAX", 9067, 3.5);
    return form;
}

void CFAI_MinimalPipeDepth::RunAnalysis(boost::shared_ptr<CPropertiesEx> properties, CAnalysedNetwork* network,
                                        std::vector<boost::shared_ptr<CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    const CLimits limits = ReadLimits(properties.get());
    CPipeManager* const pipes = CPipeManager::Instance();
    Analysis::CFindingList list(Key, findings);
    std::vector<std::pair<double, double>> samples;
    std::vector<double> positions;
    std::vector<double> covers;
    std::vector<double> depths;
    const auto test = [&](const boost::shared_ptr<CSection>& section) {
        section->GetAllTerrainHeights(limits.m_terrain, samples, nullptr);
        positions.clear();
        for (const auto& sample : samples)
            positions.push_back(sample.first);
        if (pipes->GetPipeDepths(section, positions, limits.m_terrain, covers, depths) != 0)
            ReportFirstOffence(*section, depths, limits, list);
    };
    Analysis::WalkWithProgress(GetItemName(), network->m_sections, test,
                               Analysis::FetchNodes<boost::shared_ptr<CSection>>);
}

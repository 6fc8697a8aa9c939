// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_MinimalPipeDepth.h"

#include "flow/FormFields.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/FindingList.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/ProgressWalk.h"

#include <boost/make_shared.hpp>

#include <utility>

using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CFindingList;
using OLMGis::Topology::CPipeManager;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::WalkWithProgress;
using OLMGis::Utility::Msg;

namespace {

constexpr const char* Key = "0002_MIN_PIPE_DEPTH";
constexpr int NameMessage = 878; ///< also the caption and the form's category
constexpr int TerrainMessage = 4597;
constexpr int LeastDepthMessage = 9066;
constexpr int GreatestDepthMessage = 9067;
constexpr int TooShallow = 10357;
constexpr int TooDeep = 10358;

constexpr int TerrainTypes = 10;

struct CLimits {
    double m_least = 1.0;
    double m_greatest = 3.0; ///< not the 3.5 of a new form; fixed: others rely on it
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

/// At most one finding per section: for the first sample outside the limits.
void ReportFirstOffence(const CSection& section, const std::vector<double>& depths, const CLimits& limits,
                        CFindingList& findings) {
    for (const double depth : depths) {
        if (limits.m_least > depth)
            return findings.AddWithValue(section, TooShallow, {depth, limits.m_least, "m"});
        if (depth > limits.m_greatest)
            return findings.AddWithValue(section, TooDeep, {depth, limits.m_greatest, "m"});
    }
}

} // namespace

std::string CFAI_MinimalPipeDepth::GetItemKey() {
    return Key;
}

std::string CFAI_MinimalPipeDepth::GetItemName() {
    return Msg(NameMessage);
}

int CFAI_MinimalPipeDepth::IsAvailableForSystemFunction(int /*systemFunction*/) {
    return 1;
}

int CFAI_MinimalPipeDepth::GetItemFlagA() {
    return 1;
}

std::string CFAI_MinimalPipeDepth::GetAnalysisTag() {
    return "FAI_MIN_PIPE_DEPTH";
}

boost::shared_ptr<CPropertiesEx> CFAI_MinimalPipeDepth::CreateProperties() {
    auto form = boost::make_shared<CPropertiesEx>();
    const auto category = Flow::AddCategory(*form, 0, NameMessage);
    Flow::AddNumberChoice(category, "TERRAIN", TerrainMessage, TerrainTypes)->SetIsRequired(1);
    Flow::AddNumber(category, "VALUE_MIN", LeastDepthMessage, 1.0)->SetIsRequired(1);
    Flow::AddNumber(category, "VALUE_MAX", GreatestDepthMessage, 3.5)->SetIsRequired(1);
    return form;
}

void CFAI_MinimalPipeDepth::RunAnalysis(boost::shared_ptr<CPropertiesEx> properties, CAnalysedNetwork* network,
                                        std::vector<boost::shared_ptr<CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    const CLimits limits = ReadLimits(properties.get());
    CPipeManager* const pipes = CPipeManager::Instance();
    CFindingList list(findings);
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
    WalkWithProgress(GetItemName(), network->m_sections, test);
}

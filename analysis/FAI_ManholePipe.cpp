// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "analysis/FAI_ManholePipe.h"

#include "analysis/RowSet.h"
#include "host/formulas/Units.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/SystemManager.h"
#include "host/network_core/DDCache.h"
#include "host/network_core/FindingList.h"
#include "host/network_core/ManholeManager.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/ProgressWalk.h"

#include <boost/make_shared.hpp>

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::CDDCache;
using OLMGis::Data::FindDefinition;
using OLMGis::Formulas::MillimetresPerMetre;
using OLMGis::System::CGisSystem;
using OLMGis::Topology::CAnalysedNetwork;
using OLMGis::Topology::CCatalogItem;
using OLMGis::Topology::CFAMsg;
using OLMGis::Topology::CFindingList;
using OLMGis::Topology::CManholeManager;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CPipeManager;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CSection;
using OLMGis::Topology::WalkWithProgress;
using OLMGis::Utility::Msg;

namespace {

using CItemPtr = boost::shared_ptr<CCatalogItem>;

constexpr const char* Key = "0005_MANHOLE_PIPE";
constexpr int NameMessage = 11020;
constexpr int CaptionMessage = 3552;
constexpr int PipeTooWide = 11021;
constexpr int PipeTooHigh = 11010;

/// One run: the definitions of the attributes it reads, and the entities that it has reported.
class CManholePipeRun {
public:
    explicit CManholePipeRun(std::vector<boost::shared_ptr<CFAMsg>>& findings) : m_findings(findings) {}

    void TestNode(const boost::shared_ptr<CNode>& node) {
        CDataRW::Read(m_manholeId, node, m_box, 0, nullptr);
        if (!m_box.IsNotNull())
            return;
        const CItemPtr manhole = m_manholes->GetManhole(m_box.TextView());
        if (!manhole)
            return;
        const double inner = m_manholes->GetManholeInnerDiameter(manhole);
        node->GetConnectedSections(m_connected);
        m_hasLimit = false;
        for (const CSection* section : m_connected) {
            const CItemPtr pipe = m_pipes->GetPipe(section->GetPipeReference());
            if (!pipe)
                continue;
            const double width = m_pipes->GetPipeWidth(pipe) / MillimetresPerMetre;
            if (width > inner)
                ReportWidth(*node, width, inner);
            else
                TestHeight(*node, manhole, *section, pipe);
        }
    }

private:
    void ReportWidth(const CNode& node, double width, double inner) {
        if (m_reportedNodes.Insert(node.GetRow()))
            m_findings.Add(node, PipeTooWide, {width, inner, "m"});
    }

    void TestHeight(const CNode& node, const CItemPtr& manhole, const CSection& section, const CItemPtr& pipe) {
        if (!m_hasLimit)
            m_limit = FindLimit(node, manhole);
        m_hasLimit = true;
        if (section.GetLevelLineAtNode(node.GetGuid(), m_level) == 0 ||
            CDataRW::Read(m_levelPosition, &section, m_box, 0, nullptr) == 0)
            return;
        double above = 0.0;
        double below = 0.0;
        m_pipes->GetPipeHeight(pipe, m_box.AsInt(), above, below);
        const double top = m_level.AsDouble() + above / MillimetresPerMetre;
        if (top > m_limit && m_reportedSections.Insert(section.GetRow()))
            m_findings.Add(section, PipeTooHigh, {top, m_limit, "m"});
    }

    /// The highest level (m) that the top of a pipe may have at the manhole; the same for all its pipes. 0 without a
    /// terrain height; fixed: others rely on it.
    double FindLimit(const CNode& node, const CItemPtr& manhole) {
        const double h2 = m_manholes->GetManholeH2(&node, manhole);
        int terrainType = 1;
        if (CDataRW::Read(m_terrainType, &node, m_box, 0, nullptr) != 0 && m_box.IsNotNull())
            terrainType = m_box.AsInt();
        double height = 0.0;
        return node.GetTerrainHeight(height, terrainType) != 0 ? height - h2 : 0.0;
    }

    CManholeManager* m_manholes = CManholeManager::Instance();
    CPipeManager* m_pipes = CPipeManager::Instance();
    const CDataDefinition* m_manholeId = FindDefinition("MANHOLE_ID");
    const CDataDefinition* m_levelPosition = FindDefinition("LEVEL_LINE_POSITION");
    const CDataDefinition* m_terrainType = CDDCache::Instance()->GetMANHOLE_RT();
    CFindingList m_findings;
    Analysis::CRowSet m_reportedNodes;
    Analysis::CRowSet m_reportedSections;

    // Of the current node and section; members so that their memory is reused.
    std::vector<const CSection*> m_connected;
    CDataBox m_box;
    CDataBox m_level;
    double m_limit = 0.0;
    bool m_hasLimit = false;
};

} // namespace

std::string CFAI_ManholePipe::GetItemKey() {
    return Key;
}

std::string CFAI_ManholePipe::GetItemName() {
    return Msg(NameMessage);
}

int CFAI_ManholePipe::IsAvailableForSystemFunction(int systemFunction) {
    return systemFunction == CGisSystem::SewageFunction ? 1 : 0;
}

int CFAI_ManholePipe::GetItemFlagA() {
    return 1;
}

// The tag of the depth check; fixed: others rely on it.
std::string CFAI_ManholePipe::GetAnalysisTag() {
    return "FAI_MIN_PIPE_DEPTH";
}

boost::shared_ptr<CPropertiesEx> CFAI_ManholePipe::CreateProperties() {
    return boost::make_shared<CPropertiesEx>();
}

void CFAI_ManholePipe::RunAnalysis(boost::shared_ptr<CPropertiesEx> /*properties*/, CAnalysedNetwork* network,
                                   std::vector<boost::shared_ptr<CFAMsg>>& findings) {
    if (network == nullptr)
        return;
    CManholePipeRun run(findings);
    WalkWithProgress(Msg(CaptionMessage), network->m_nodes,
                     [&run](const boost::shared_ptr<CNode>& node) { run.TestNode(node); });
}

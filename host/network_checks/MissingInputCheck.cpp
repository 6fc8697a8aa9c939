// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_checks/MissingInputCheck.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/DDCache.h"
#include "host/network_core/PipeManager.h"
#include "host/network_core/ProgressWalk.h"

#include <string>

namespace OLMGis::NetworkChecks {

using Data::CDataDefinition;
using Topology::CNode;
using Topology::CSection;

namespace {

constexpr int NameMessage = 70454;
constexpr int LengthMessage = 70455;
constexpr int SlopeMessage = 70456;
constexpr int PipeMessage = 70457;
constexpr int LevelsMessage = 70458;
constexpr int GroundMessage = 70459;
constexpr int MissingMessage = 70460;

/// The keys that one entity lacks.
class CMissingKeys {
public:
    void Add(std::string_view key) {
        m_text += m_count++ == 0 ? "" : ", ";
        m_text += key;
    }

    /// Reports them, if there are any, and forgets them.
    void Report(const Topology::CEntity& entity, Topology::CFindingList& findings) {
        if (m_count > 0)
            findings.AddText(entity, Utility::CUtility::Format(Utility::Msg(MissingMessage), m_text),
                             {static_cast<double>(m_count), 0.0, {}});
        m_text.clear();
        m_count = 0;
    }

private:
    std::string m_text;
    int m_count = 0;
};

/// The attributes of sections that are looked for.
class CSectionTest {
public:
    explicit CSectionTest(const Topology::CPropertiesEx& form)
        : m_testsLength(form.GetIntProperty("LENGTH", 1, 1) != 0), m_testsPipe(form.GetIntProperty("PIPE", 1, 1) != 0) {
        if (form.GetIntProperty("SLOPE", 1, 1) != 0)
            m_keys.push_back(Data::FindDefinition("SECTION_SLOPE"));
        if (form.GetIntProperty("LEVELS", 1, 1) != 0)
            for (const char* key : {"LEVEL_LINE_0", "LEVEL_LINE_1"})
                m_keys.push_back(Data::FindDefinition(key));
    }

    void Test(const CSection& section, CMissingKeys& missing) {
        if (m_testsLength && !(section.GetLength2D() > 0.0))
            missing.Add("length");
        for (const CDataDefinition* key : m_keys)
            if (Data::CDataRW::Read(key, &section, m_box, 0, nullptr) == 0)
                missing.Add(key->m_id);
        if (m_testsPipe && !section.GetPipe())
            missing.Add("PIPE_REF");
    }

private:
    bool m_testsLength;
    bool m_testsPipe;
    std::vector<const CDataDefinition*> m_keys;
    Data::CDataBox m_box;
};

/// The key of the ground level that a node lacks, empty for none.
std::string FindMissingGround(const CNode& node, Data::CDataBox& box) {
    if (node.GetSectionsInCount() + node.GetSectionsOutCount() == 0)
        return {};
    int type = 1;
    if (Data::CDataRW::Read(Data::CDDCache::Instance()->GetMANHOLE_RT(), &node, box, 0, nullptr) != 0)
        type = box.AsInt();
    double height = 0.0;
    return node.GetTerrainHeight(height, type) == 0 ? "TERRAIN_" + std::to_string(type) : std::string();
}

} // namespace

CMissingInputCheck::CMissingInputCheck() : CNetworkCheck("0015_MISSING_INPUT", NameMessage, "FAI_MISSING_INPUT") {}

std::vector<CNetworkCheck::CField> CMissingInputCheck::GetFields() const {
    return {{"LENGTH", LengthMessage, 1},
            {"SLOPE", SlopeMessage, 1},
            {"PIPE", PipeMessage, 1},
            {"LEVELS", LevelsMessage, 1},
            {"GROUND", GroundMessage, 1}};
}

void CMissingInputCheck::Run(const Topology::CPropertiesEx& form, const Topology::CAnalysedNetwork& network,
                             Topology::CFindingList& findings) {
    CMissingKeys missing;
    CSectionTest test(form);
    WalkWithProgress(GetItemName(), network.m_sections, [&](const boost::shared_ptr<CSection>& section) {
        test.Test(*section, missing);
        missing.Report(*section, findings);
    });
    if (form.GetIntProperty("GROUND", 1, 1) == 0)
        return;
    Data::CDataBox box;
    WalkWithProgress(GetItemName(), network.m_nodes, [&](const boost::shared_ptr<CNode>& node) {
        if (const std::string key = FindMissingGround(*node, box); !key.empty())
            missing.Add(key);
        missing.Report(*node, findings);
    });
}

} // namespace OLMGis::NetworkChecks

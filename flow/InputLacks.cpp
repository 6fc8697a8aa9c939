// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/InputLacks.h"

#include "flow/FlowKeys.h"
#include "flow/MainOutlets.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/Catchment.h"
#include "host/network_core/PropertiesEx.h"
#include "host/network_core/TopologyStorage.h"
#include "host/sewage_core/MissingDensities.h"

#include <algorithm>
#include <set>

namespace Flow::InputLacks {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataRW;
using OLMGis::Sewage::CFlowDirection;
using OLMGis::Sewage::CLack;
using OLMGis::Sewage::CSectionList;
using OLMGis::Topology::CCatchment;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CTopologyStorage;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Msg;

namespace {

constexpr const char* MainOutletKey = Keys::MainOutlet;
constexpr int ExpectedOutlet = 70378;
constexpr int ExpectedDensity = 70379;
constexpr int ExpectedSwitch = 70570;

/// GUID and name of the sections that leave a node: "{...} (P1), {...} (P2)".
std::string NameOutlets(const CNode& node) {
    constexpr std::size_t Most = 5;
    std::string text;
    std::size_t count = 0;
    CSectionList sections;
    node.GetSectionsOut(sections);
    for (const auto& section : sections)
        if (++count <= Most)
            text += CUtility::Format("%s%s (%s)", count > 1 ? ", " : "", section->GetGuid(), section->GetName());
    return count > Most ? text + ", ..." : text;
}

} // namespace

void AddMainOutlets(const CSectionList& sections, CLackList& lacks) {
    const auto nodes = CFlowDirection::NodesWithoutMainOutlet(MainOutlets::CollectStartingNodes(sections));
    if (nodes.empty())
        return;
    const auto any = std::find_if(sections.begin(), sections.end(), [](const auto& section) { return section; });
    const std::set<const CNode*> missing = [&nodes] {
        std::set<const CNode*> set;
        for (const auto& node : nodes)
            set.insert(node.get());
        return set;
    }();
    for (const auto& node : (*any)->GetTopology().GetNodes()) {
        if (missing.count(node.get()) == 0)
            continue;
        CLack lack{MainOutletKey, node.get()};
        CDataRW::Read(MainOutletKey, node, lack.m_found, 0, nullptr);
        lack.m_expected = CUtility::Format(Msg(ExpectedOutlet), NameOutlets(*node));
        lacks.push_back(std::move(lack));
    }
}

void AddDensities(const CSectionList& sections, CLackList& lacks) {
    for (const auto& section : sections) {
        if (!section)
            continue;
        for (const CCatchment* catchment = section->GetTopology().GetFirstCatchment(*section); catchment != nullptr;
             catchment = CTopologyStorage::GetNextCatchment(*catchment))
            if (OLMGis::Sewage::LacksDensity(*catchment))
                lacks.push_back({Keys::CatchmentDensity, catchment, {}, Msg(ExpectedDensity), "50"});
    }
}

void AddNothingSwitchedOn(const OLMGis::Topology::CPropertiesEx& form, const std::vector<std::string>& tags,
                          CLackList& lacks) {
    if (tags.empty() || std::any_of(tags.begin(), tags.end(),
                                    [&form](const std::string& tag) { return form.GetIntProperty(tag, 0, 1) != 0; }))
        return;
    std::string names;
    for (const std::string& tag : tags)
        names += (names.empty() ? "" : ", ") + tag;
    CLack lack{tags.front(), nullptr, CDataBox(0), CUtility::Format(Msg(ExpectedSwitch), names)};
    lack.m_isOfForm = true;
    lacks.push_back(std::move(lack));
}

} // namespace Flow::InputLacks

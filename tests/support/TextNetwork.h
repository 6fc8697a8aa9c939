// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataRW.h"
#include "host/network_core/TopologyMultiStorage.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

/// A network drawn as text in the active project: letters are nodes, dashes a section from the left letter to the right
/// one, 10 m of plan length a dash. Rows are read from the top; a letter that occurs again is the same node. A row that
/// returns to a letter closes a loop.
///
///     A---B---C     sections AB and BC, 30 m each
///     D-B           section DB, 10 m, joins at B
class CTextNetwork {
public:
    explicit CTextNetwork(std::string_view drawing)
        : m_topology(*OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology()) {
        char from = 0;
        int dashes = 0;
        for (const char c : drawing) {
            if (c == '-') {
                ++dashes;
            } else if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
                const auto node = FindOrAddNode(c);
                if (from != 0 && dashes > 0)
                    AddSection(from, c, dashes);
                from = c;
                dashes = 0;
            } else {
                from = 0;
                dashes = 0;
            }
        }
    }

    boost::shared_ptr<OLMGis::Topology::CNode> Node(char letter) const {
        return m_topology.GetNodeByName(std::string(1, letter));
    }

    /// The section of that name; the test fails when there is none.
    boost::shared_ptr<OLMGis::Topology::CSection> Section(std::string_view name) const {
        const auto found = m_topology.GetSectionsByName(name);
        EXPECT_FALSE(found.empty()) << "no section " << name;
        return found.empty() ? nullptr : found.front();
    }

    OLMGis::Topology::CTopologyStorage& Topology() const { return m_topology; }
    const std::vector<boost::shared_ptr<OLMGis::Topology::CSection>>& Sections() const {
        return m_topology.GetSections();
    }

    void Set(std::string_view section, std::string_view key, const OLMGis::Data::CDataBox& value) const {
        EXPECT_NE(OLMGis::Data::CDataRW::Write(key, Section(section), value, nullptr), 0) << key;
    }

    /// The value of a section's attribute; a null box for an absent one.
    OLMGis::Data::CDataBox Get(std::string_view section, std::string_view key) const {
        OLMGis::Data::CDataBox box;
        OLMGis::Data::CDataRW::Read(key, Section(section), box, 0, nullptr);
        return box;
    }

    /// Adds a catchment to a section: kinds as a sum of bits, area in ha.
    void AddCatchment(std::string_view section, int kinds, double area, const OLMGis::Data::CDataBox& density = {},
                      const OLMGis::Data::CDataBox& coefficient = {}) const {
        const std::string guid = "catchment-" + std::to_string(m_topology.GetCatchments().size());
        const auto catchment = m_topology.AddCatchment(guid, guid, Section(section).get(), {}).Value();
        OLMGis::Data::CDataRW::Write("kinds", catchment, kinds, nullptr);
        OLMGis::Data::CDataRW::Write("area", catchment, area, nullptr);
        OLMGis::Data::CDataRW::Write("density", catchment, density, nullptr);
        OLMGis::Data::CDataRW::Write("coefficient", catchment, coefficient, nullptr);
    }

private:
    boost::shared_ptr<OLMGis::Topology::CNode> FindOrAddNode(char letter) {
        const std::string name(1, letter);
        if (auto node = m_topology.GetNodeByName(name))
            return node;
        const double place = static_cast<double>(m_topology.GetNodes().size());
        return m_topology.AddNode("node-" + name, name, {100.0 * place, 0.0}).Value();
    }

    void AddSection(char from, char to, int dashes) {
        const std::string name{from, to};
        const std::string guid = "section-" + name + "-" + std::to_string(m_topology.GetSections().size());
        const auto section = m_topology.AddSection(guid, name, Node(from).get(), Node(to).get(), {}).Value();
        OLMGis::Data::CDataRW::Write("length", section, 10.0 * dashes, nullptr);
    }

    OLMGis::Topology::CTopologyStorage& m_topology;
};

/// Names of a list of entities, in order, separated by blanks: "AB BC".
template <class List>
std::string NamesOf(const List& entities) {
    std::string names;
    for (const auto& entity : entities)
        names += (names.empty() ? "" : " ") + std::string(entity->GetName());
    return names;
}

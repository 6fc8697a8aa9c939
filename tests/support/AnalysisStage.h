// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/IFunctionalAnalysisItem.h"
#include "host/network_core/PropertyEditing.h"
#include "tests/support/FormTable.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

/// A network drawn as text in a project of its own, for checks to run on.
struct CAnalysisStage {
    using CValues = std::vector<std::pair<std::string, std::string>>;
    using CForm = boost::shared_ptr<OLMGis::Topology::CPropertiesEx>;

    CTestProject project;
    CTextNetwork net;
    std::vector<boost::shared_ptr<OLMGis::Topology::CFAMsg>> messages;

    explicit CAnalysisStage(std::string_view drawing) : net(drawing) {}

    OLMGis::Topology::CAnalysedNetwork Network() const {
        return {net.Topology().GetNodes(), net.Topology().GetSections()};
    }

    void SetNode(char node, std::string_view key, const OLMGis::Data::CDataBox& value) const {
        EXPECT_NE(OLMGis::Data::CDataRW::Write(key, net.Node(node), value, nullptr), 0) << key;
    }
    void SetLevels(std::string_view section, double start, double end) const {
        net.Set(section, "LEVEL_LINE_0", start);
        net.Set(section, "LEVEL_LINE_1", end);
    }

    /// Puts a circular pipe of an inner diameter (mm) on a section.
    void Lay(std::string_view section, double diameter) const { net.Set(section, "PIPE_REF", AddPipe(diameter)); }
    static std::string AddPipe(double diameter, double wall = 0.0) {
        OLMGis::Topology::CPipeData data;
        data.m_innerWidth = diameter;
        data.m_innerHeight = diameter;
        data.m_wall = wall;
        auto& catalog = Catalog(OLMGis::Topology::CCatalogManager::PipeCatalog);
        std::string guid = "test-pipe-" + std::to_string(Group(catalog).GetSubItems().size());
        EXPECT_TRUE(catalog.AddPipe(Group(catalog), guid, guid, data));
        return guid;
    }
    static std::string AddManhole(const OLMGis::Topology::CManholeData& data) {
        auto& catalog = Catalog(OLMGis::Topology::CCatalogManager::ManholeCatalog);
        std::string guid = "test-manhole-" + std::to_string(Group(catalog).GetSubItems().size());
        EXPECT_TRUE(catalog.AddManhole(Group(catalog), guid, guid, data));
        return guid;
    }

    /// Runs a check with values entered in its form: the new findings as "name: text".
    std::vector<std::string> Run(OLMGis::Topology::IFunctionalAnalysisItem&& item, const CValues& values = {}) {
        const CForm form = item.CreateProperties();
        for (const auto& [tag, text] : values)
            EXPECT_TRUE(OLMGis::Topology::SetPropertyText(*form->GetPropertyExByTag(tag), text)) << tag;
        return RunWith(item, form);
    }

    /// The same with a form as it is, which may be null.
    std::vector<std::string> RunWith(OLMGis::Topology::IFunctionalAnalysisItem& item, const CForm& form) {
        auto network = Network();
        const std::size_t before = messages.size();
        item.RunAnalysis(form, &network, messages);
        std::vector<std::string> found;
        for (std::size_t i = before; i < messages.size(); ++i)
            found.push_back(NameOf(messages[i]->m_guid) + ": " + messages[i]->m_text);
        return found;
    }

    std::string NameOf(const std::string& guid) const {
        if (const auto section = net.Topology().GetSectionByGuid(guid))
            return std::string(section->GetName());
        const auto node = net.Topology().GetNodeByGuid(guid);
        return node ? std::string(node->GetName()) : "unknown";
    }

private:
    static OLMGis::Topology::CCatalog& Catalog(std::string_view id) {
        return *OLMGis::Topology::CCatalogManager::Instance()->GetCatalog(id, 1);
    }
    static OLMGis::Topology::CCatalogItem& Group(OLMGis::Topology::CCatalog& catalog) {
        const auto found = catalog.GetGroupByName("of the test");
        return found ? *found : *catalog.AddGroup("group-of-the-test", "of the test").Value();
    }
};

/// A finding in the form of CAnalysisStage::Run; value is the text in brackets, empty for none.
inline std::string Finding(const std::string& name, int message, const std::string& value = {}) {
    return name + ": " + Msg(message) + (value.empty() ? "" : " (" + value + ")");
}

/// No finding for message 0, else this one alone.
inline std::vector<std::string> FindingOrNone(const std::string& name, int message, const std::string& value = {}) {
    return message == 0 ? std::vector<std::string>{} : std::vector{Finding(name, message, value)};
}

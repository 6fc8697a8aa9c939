// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/FlowDirection.h"

#include "host/network_core/CatalogManager.h"
#include "host/sewage_core/DirectionEditor.h"
#include "host/sewage_core/SewageResponder.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

using namespace OLMGis;
using Sewage::CFlowDirection;

namespace {

/// Catalogue GUID of a new pipe of these inside dimensions (mm).
std::string AddPipe(double width, double height) {
    auto& catalog = *Topology::CCatalogManager::Instance()->GetCatalog(Topology::CCatalogManager::PipeCatalog, 1);
    const auto group =
        catalog.GetOwnGroups().empty() ? catalog.AddGroup("group", "concrete").Value() : catalog.GetOwnGroups()[0];
    Topology::CPipeData data;
    data.m_innerWidth = width;
    data.m_innerHeight = height;
    const std::string guid = "pipe-" + std::to_string(group->GetSubItems().size());
    return catalog.AddPipe(*group, guid, guid, data).Value()->GetGUID();
}

} // namespace

TEST(FlowDirection, OnlyBifurcationsBelowASectionNeedAMainOutlet) {
    CTestProject project;
    const CTextNetwork net("A-B-C  B-D  T-C  T-D");
    EXPECT_FALSE(CFlowDirection::NeedsMainOutlet(*net.Node('A')));
    EXPECT_TRUE(CFlowDirection::NeedsMainOutlet(*net.Node('B')));
    EXPECT_FALSE(CFlowDirection::NeedsMainOutlet(*net.Node('T'))) << "nothing enters a top node";
    const std::vector<boost::shared_ptr<Topology::CNode>> nodes{net.Node('A'), net.Node('B'), nullptr, net.Node('T')};
    EXPECT_EQ(CFlowDirection::IsMainFlowSectSet({}), 1);
    EXPECT_EQ(CFlowDirection::IsMainFlowSectSet(nodes), 0);
    EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('A')), net.Section("AB")) << "the only section that leaves";
    EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('B')), nullptr);
    EXPECT_EQ(CFlowDirection::GetMainOutSection(nullptr), nullptr);

    Data::CDataRW::Write("MAIN_SECT_OUT", net.Node('B'), net.Section("BD")->GetGuid(), nullptr);
    EXPECT_EQ(CFlowDirection::IsMainFlowSectSet(nodes), 1);
    EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('B')), net.Section("BD"));
    Data::CDataRW::Write("MAIN_SECT_OUT", net.Node('B'), net.Section("TD")->GetGuid(), nullptr);
    EXPECT_EQ(CFlowDirection::IsMainFlowSectSet(nodes), 0) << "TD does not leave B";
}

TEST(FlowDirection, ANodeLosesAMainOutletThatIsDeleted) {
    CTestProject project;
    const CTextNetwork net("A-B-C  B-D");
    Notification::CNotificationFramework::Instance()->RegisterEventResponder(new Sewage::CSewageResponder());
    Data::CDataRW::Write("MAIN_SECT_OUT", net.Node('B'), net.Section("BD")->GetGuid(), nullptr);
    Data::CJournal journal;
    {
        const Data::CJournalScope open(project.Store(), &journal);
        net.Topology().RemoveSection(*net.Section("BD"));
    }
    Data::CDataBox outlet;
    EXPECT_EQ(Data::CDataRW::Read("MAIN_SECT_OUT", net.Node('B'), outlet, 0, nullptr), 0);
    journal.Undo(project.Store());
    EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('B')), net.Section("BD")) << "undo brings both back";
}

TEST(FlowDirection, TheAutomaticChoiceTakesTheLowestThenTheLargestThenTheFirst) {
    constexpr double Unknown = -1.0; // neither a level nor a pipe
    struct Outlet {
        double level;         // m
        double width, height; // mm
    };
    const struct {
        const char* name;
        std::vector<Outlet> outlets; // BC, BD, BE
        const char* expected;
    } rows[] = {
        {"lowest", {{101.0, 800, 800}, {99.5, 200, 200}, {100.0, 800, 800}}, "BD"},
        {"larger pipe of equally low ones", {{99.5, 200, 200}, {99.5, 300, 300}, {100.0, 900, 900}}, "BD"},
        {"width and height both count", {{99.5, 600, 600}, {99.5, 500, 750}, {99.5, 500, 500}}, "BD"},
        {"first of equals", {{99.5, 300, 300}, {99.5, 300, 300}, {99.5, 300, 300}}, "BC"},
        {"no level comes last", {{Unknown, 900, 900}, {250.0, Unknown, Unknown}, {Unknown, 900, 900}}, "BD"},
        {"no pipe comes last", {{99.5, Unknown, Unknown}, {99.5, Unknown, Unknown}, {99.5, 100, 100}}, "BE"},
        {"nothing known", {{Unknown, Unknown, Unknown}, {Unknown, Unknown, Unknown}, {Unknown, 0, 0}}, "BC"},
        {"size counts without levels", {{Unknown, 200, 200}, {Unknown, Unknown, Unknown}, {Unknown, 300, 300}}, "BE"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        CTestProject project;
        const CTextNetwork net("A-B-C  B-D  B-E");
        const char* names[] = {"BC", "BD", "BE"};
        for (std::size_t i = 0; i < 3; ++i) {
            if (row.outlets[i].level != Unknown)
                net.Set(names[i], "LEVEL_LINE_0", row.outlets[i].level);
            if (row.outlets[i].width != Unknown)
                net.Set(names[i], "PIPE_REF", AddPipe(row.outlets[i].width, row.outlets[i].height));
            net.Set(names[i], "LEVEL_LINE_1", -5.0 * static_cast<double>(i)); // the far end does not count
        }
        EXPECT_EQ(CFlowDirection::ChooseAutomatically({net.Node('A'), net.Node('B'), nullptr}), 1);
        EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('B')), net.Section(row.expected));
        EXPECT_EQ(CFlowDirection::ChooseAutomatically({net.Node('B')}), 0) << "it is chosen now";
        EXPECT_EQ(CFlowDirection::ChooseMainOutlet(net.Node('C')), nullptr) << "an outfall";
    }
}

TEST(FlowDirection, OnlyASectionThatLeavesTheNodeCanBeItsMainOutlet) {
    CTestProject project;
    const CTextNetwork net("A-B-C  B-D");
    EXPECT_EQ(CFlowDirection::SetMainOutlet(net.Node('B'), net.Section("AB")), 0);
    EXPECT_EQ(CFlowDirection::SetMainOutlet(net.Node('B'), nullptr), 0);
    EXPECT_EQ(CFlowDirection::SetMainOutlet(nullptr, net.Section("BD")), 0);
    EXPECT_EQ(NamesOf(CFlowDirection::NodesWithoutMainOutlet({net.Node('B'), nullptr, net.Node('A')})), "B");
    EXPECT_NE(CFlowDirection::SetMainOutlet(net.Node('B'), net.Section("BD")), 0);
    EXPECT_TRUE(CFlowDirection::NodesWithoutMainOutlet({net.Node('B')}).empty());
    const auto removed = net.Section("BD");
    net.Topology().RemoveSection(*removed);
    EXPECT_EQ(CFlowDirection::SetMainOutlet(net.Node('B'), removed), 0) << "it was deleted";
    EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('B')), net.Section("BC")) << "one section is left";
}

TEST(FlowDirection, TheEditorIsAskedOnlyAboutMissingMainOutlets) {
    struct CEditor final : Sewage::IDirectionEditor {
        int EditDirections(const std::vector<boost::shared_ptr<Topology::CNode>>& nodes) override {
            m_asked += NamesOf(nodes) + ";";
            return m_answer;
        }
        std::string m_asked;
        int m_answer = 1;
    };
    CTestProject project;
    const CTextNetwork net("A-B-C-D  B-E  C-F");
    const CFlowDirection::CNodeList nodes{net.Node('C'), net.Node('B'), net.Node('A')};
    EXPECT_EQ(CFlowDirection::ShowDirectionEditor(&nodes), 0) << "without an editor nothing is chosen";
    CEditor editor;
    const Sewage::CDirectionEditorScope scope(editor);
    EXPECT_EQ(CFlowDirection::ShowDirectionEditor(&nodes), 1);
    CFlowDirection::SetMainOutlet(net.Node('C'), net.Section("CF"));
    editor.m_answer = 0;
    EXPECT_EQ(CFlowDirection::ShowDirectionEditor(&nodes), 0);
    CFlowDirection::SetMainOutlet(net.Node('B'), net.Section("BC"));
    EXPECT_EQ(CFlowDirection::ShowDirectionEditor(&nodes), 1) << "nothing is missing";
    EXPECT_EQ(CFlowDirection::ShowDirectionEditor(nullptr), 0);
    EXPECT_EQ(editor.m_asked, "C B;B;");
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/sewage_core/FlowDirection.h"

#include "host/sewage_core/SewageResponder.h"
#include "tests/support/TestProject.h"
#include "tests/support/TextNetwork.h"

#include <gtest/gtest.h>

using namespace OLMGis;
using Sewage::CFlowDirection;

TEST(FlowDirection, OnlyBifurcationsBelowASectionNeedAMainOutlet) {
    CTestProject project;
    const CTextNetwork net("A-B-C  B-D  T-C  T-D");
    EXPECT_FALSE(CFlowDirection::NeedsMainOutlet(*net.Node('A')));
    EXPECT_TRUE(CFlowDirection::NeedsMainOutlet(*net.Node('B')));
    EXPECT_FALSE(CFlowDirection::NeedsMainOutlet(*net.Node('T'))) << "nothing enters a top node";
    const std::vector<boost::shared_ptr<Topology::CNode>> nodes{net.Node('A'), net.Node('B'), nullptr, net.Node('T')};
    EXPECT_EQ(CFlowDirection::IsMainFlowSectSet({}), 1);
    EXPECT_EQ(CFlowDirection::IsMainFlowSectSet(nodes), 0);
    EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('A')), net.Section("AB")) << "the only way out";
    EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('B')), nullptr);
    EXPECT_EQ(CFlowDirection::GetMainOutSection(nullptr), nullptr);

    Data::CDataRW::Write("MAIN_SECT_OUT", net.Node('B'), net.Section("BD")->GetGuid(), nullptr);
    EXPECT_EQ(CFlowDirection::IsMainFlowSectSet(nodes), 1);
    EXPECT_EQ(CFlowDirection::GetMainOutSection(net.Node('B')), net.Section("BD"));
    Data::CDataRW::Write("MAIN_SECT_OUT", net.Node('B'), net.Section("TD")->GetGuid(), nullptr);
    EXPECT_EQ(CFlowDirection::IsMainFlowSectSet(nodes), 0) << "TD does not leave B";
}

TEST(FlowDirection, ANodeForgetsAMainOutletThatIsTakenOut) {
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

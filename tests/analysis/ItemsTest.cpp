// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// What all checks have in common: identity, forms, the frame of a run.
#include "analysis/FAI_ManholePipe.h"
#include "analysis/FAI_MinimalPipeDepth.h"
#include "analysis/FAI_MultipleOutletSections.h"
#include "analysis/FAI_NegativeCascade.h"
#include "analysis/FAI_NegativeSlope.h"
#include "analysis/FAI_NegativeSlopeCalc.h"
#include "analysis/FAI_SmallerDiametersDownflow.h"
#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/HostServices.h"
#include "tests/support/AnalysisStage.h"

using namespace OLMGis;
using testing::ElementsAre;
using testing::IsEmpty;
using Topology::IFunctionalAnalysisItem;

namespace {

struct CItemRow {
    boost::shared_ptr<IFunctionalAnalysisItem> m_item;
    const char* m_key;
    int m_nameMessage;
    std::string m_caption;
    const char* m_tag;
    bool m_walksNodes;
    int m_availableElsewhere;
    std::vector<CFormCategory> m_form;
};

std::vector<CItemRow> ItemTable() {
    const std::vector<CFormCategory> none;
    const auto slopes = [](int name) {
        return std::vector<CFormCategory>{{name, 0, {{"VALUE_MIN", 0, 8695, 5.0}, {"VALUE_MAX", 0, 10349, 30.0}}}};
    };
    const Data::CDataBox unset{};
    const std::vector<CFormCategory> depths{
        {878, 0, {{"TERRAIN", 1, 4597, 1, 1, unset, unset}, {"VALUE_MIN", 0, 9066, 1.0}, {"VALUE_MAX", 0, 9067, 3.5}}}};
    return {
        {boost::make_shared<CFAI_MinimalPipeDepth>(), "0002_MIN_PIPE_DEPTH", 878, Msg(878), "FAI_MIN_PIPE_DEPTH", false,
         1, depths},
        {boost::make_shared<CFAI_NegativeSlopeCalc>(), "0003_MIN_LL_SLOPE", 10363, "Pad", "FAI_NEG_SLOPE", false, 0,
         slopes(10363)},
        {boost::make_shared<CFAI_NegativeSlope>(), "0004_MIN_SLOPE", 10359, Msg(10359), "FAI_NEG_SLOPE", false, 0,
         slopes(10359)},
        {boost::make_shared<CFAI_ManholePipe>(), "0005_MANHOLE_PIPE", 11020, Msg(3552), "FAI_MIN_PIPE_DEPTH", true, 0,
         none},
        {boost::make_shared<CFAI_MultipleOutletSections>(), "0005_MULTI_OUTLET_SECT", 3237, Msg(3237),
         "FAI_MULTIPLE_OUT_SECT", false, 0, none},
        {boost::make_shared<CFAI_NegativeCascade>(), "0006_NEGATIVE_CASCADE", 3239, Msg(3239), "FAI_CASCADE", false, 0,
         none},
        {boost::make_shared<CFAI_SmallerDiametersDownflow>(), "0007_SMALLER_DIAMETERS", 10356, Msg(10355),
         "FAI_SMALLER_DIAM_DOWNFLOW", false, 0, none},
    };
}

/// Keeps what the progress display shows.
class CProgressWatch final : public System::IBasicHostServices {
public:
    int ShowProgress(std::string_view caption, double /*done*/) override {
        if (m_captions.empty() || m_captions.back() != caption)
            m_captions.emplace_back(caption);
        m_greatest = Utility::CCoreProgressBar::Instance()->GetMaximum();
        return 1;
    }
    void HideProgress() override { ++m_hidden; }

    std::vector<std::string> m_captions;
    int m_greatest = -1;
    int m_hidden = 0;

private:
    System::CHostServicesScope m_services{*this};
};

} // namespace

TEST(AnalysisItems, Identity) {
    const CTestProject project;
    for (const CItemRow& row : ItemTable()) {
        SCOPED_TRACE(row.m_key);
        EXPECT_EQ(row.m_item->GetItemKey(), row.m_key);
        EXPECT_EQ(row.m_item->GetItemName(), Msg(row.m_nameMessage));
        EXPECT_EQ(row.m_item->GetAnalysisTag(), row.m_tag);
        EXPECT_EQ(row.m_item->GetItemFlagA(), 1);
        EXPECT_EQ(row.m_item->GetItemFlagB(), 0);
        EXPECT_EQ(row.m_item->IsAvailableForSystemFunction(0), 1);
        EXPECT_EQ(row.m_item->IsAvailableForSystemFunction(1), row.m_availableElsewhere);
        EXPECT_EQ(row.m_item->IsAvailableForSystemFunction(-1), row.m_availableElsewhere);
    }
}

TEST(AnalysisItems, EachCallMakesANewForm) {
    const CTestProject project;
    for (const CItemRow& row : ItemTable()) {
        SCOPED_TRACE(row.m_key);
        const auto form = row.m_item->CreateProperties();
        ASSERT_TRUE(form);
        ExpectForm(*form, row.m_form, 1);
        EXPECT_NE(row.m_item->CreateProperties(), form);
    }
    EXPECT_THAT(ChoicesOf(*CFAI_MinimalPipeDepth().CreateProperties(), "TERRAIN"),
                ElementsAre("1 1", "2 2", "3 3", "4 4", "5 5", "6 6", "7 7", "8 8", "9 9", "10 10"));
}

TEST(AnalysisItems, TheFrameOfARun) {
    for (const char* drawing : {"A---B---C", ""}) {
        CAnalysisStage stage(drawing);
        for (const CItemRow& row : ItemTable()) {
            SCOPED_TRACE(row.m_key);
            CProgressWatch watch;
            row.m_item->RunAnalysis(row.m_item->CreateProperties(), nullptr, stage.messages);
            EXPECT_THAT(watch.m_captions, IsEmpty()) << "no network, no progress";
            EXPECT_THAT(stage.RunWith(*row.m_item, row.m_item->CreateProperties()), IsEmpty());
            EXPECT_THAT(watch.m_captions, ElementsAre(row.m_caption));
            const auto& topology = stage.net.Topology();
            EXPECT_EQ(watch.m_greatest,
                      static_cast<int>(row.m_walksNodes ? topology.GetNodes().size() : topology.GetSections().size()));
            EXPECT_GE(watch.m_hidden, 1);
            EXPECT_EQ(Utility::CCoreProgressBar::Instance()->GetDepth(), 0U);
            EXPECT_FALSE(Utility::CCoreProgressBar::Instance()->IsShown());
        }
    }
}

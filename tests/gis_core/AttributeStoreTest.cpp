// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/AttributeStore.h"

#include "host/gis_core/DataRW.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace OLMGis::Data;

namespace {

class CThing final : public CAttributeOwner {
public:
    explicit CThing(CAttributeStore& store, enmEntityKind kind = enmEntityKind::Section)
        : CAttributeOwner(store, kind) {}
};

/// Refuses writes to one key.
class CRefuse final : public IWriteGuard {
public:
    bool IsWriteAllowed(const CDataDefinition& definition, std::uint32_t) override {
        return definition.m_id != "FLOW_TOTAL";
    }
};

} // namespace

TEST(DataRW, AnswersAndLeavesBoxesAsLaidDown) {
    CTestProject project;
    CThing section(project.Store());
    const CThing* nobody = nullptr;
    CDataBox box(7);
    EXPECT_EQ(CDataRW::Read("FLOW_TOTAL", &section, box, 0, nullptr), 0) << "never written";
    EXPECT_FALSE(box.IsNotNull()) << "a read that fills nothing empties the box";
    EXPECT_EQ(CDataRW::Write("FLOW_TOTAL", &section, 2.5, nullptr), 1);
    EXPECT_EQ(CDataRW::Read("FLOW_TOTAL", &section, box, 0, nullptr), 1);
    EXPECT_EQ(box, CDataBox(2.5));
    EXPECT_EQ(CDataRW::Write("NO_SUCH_KEY", &section, 1.0, nullptr), 0);
    EXPECT_EQ(CDataRW::Write("MAIN_SECT_OUT", &section, "x", nullptr), 0) << "a key of nodes";
    EXPECT_EQ(CDataRW::Write("FLOW_TOTAL", nobody, 1.0, nullptr), 0);
    EXPECT_EQ(CDataRW::Read("FLOW_TOTAL", nobody, box, 0, nullptr), 0);
    section.SetReadOnly(true);
    EXPECT_EQ(CDataRW::Write("FLOW_TOTAL", &section, 9.0, nullptr), 0);
    section.SetReadOnly(false);
    EXPECT_EQ(CDataRW::Write("FLOW_TOTAL", &section, CDataBox(), nullptr), 1) << "null is a value to store";
    EXPECT_EQ(CDataRW::Read("FLOW_TOTAL", &section, box, 0, nullptr), 0);
}

TEST(AttributeStore, ValuesTakeTheTypeOfTheirKeyAndSpecialNumbersStay) {
    CTestProject project;
    CThing section(project.Store());
    CDataBox box;
    CDataRW::Write("FLOW_TOTAL", &section, "1.5 l", nullptr);
    CDataRW::Read("FLOW_TOTAL", &section, box, 0, nullptr);
    EXPECT_EQ(box, CDataBox(1.5));
    CDataRW::Write("LEVEL_LINE_POSITION", &section, 2.9, nullptr);
    CDataRW::Read("LEVEL_LINE_POSITION", &section, box, 0, nullptr);
    EXPECT_EQ(box, CDataBox(2));
    CDataRW::Write("PIPE_REF", &section, "", nullptr);
    EXPECT_EQ(CDataRW::Read("PIPE_REF", &section, box, 0, nullptr), 1) << "an empty text is not a null";
    for (const double value : {-1000000.0, std::nan(""), -HUGE_VAL}) {
        CDataRW::Write("FLOW_TOTAL", &section, value, nullptr);
        ASSERT_EQ(CDataRW::Read("FLOW_TOTAL", &section, box, 0, nullptr), 1) << "no number means absence";
        EXPECT_TRUE(box.AsDouble() == value || (std::isnan(value) && std::isnan(box.AsDouble())));
    }
}

TEST(AttributeStore, AGuardRefusesWritesAndTheFormerValueStays) {
    CTestProject project;
    CThing section(project.Store());
    CRefuse guard;
    CDataRW::Write("FLOW_TOTAL", &section, 1.0, nullptr);
    project.Store().SetWriteGuard(&guard);
    EXPECT_EQ(CDataRW::Write("FLOW_TOTAL", &section, 2.0, nullptr), 0);
    EXPECT_EQ(CDataRW::Write("FLOW_POINT", &section, 2.0, nullptr), 1);
    project.Store().SetWriteGuard(nullptr);
    CDataBox box;
    CDataRW::Read("FLOW_TOTAL", &section, box, 0, nullptr);
    EXPECT_EQ(box, CDataBox(1.0));
}

TEST(Journal, UndoAndRedoAreExactForRandomWrites) {
    CTestProject project;
    CAttributeStore& store = project.Store();
    std::vector<std::unique_ptr<CThing>> things;
    for (int i = 0; i < 70; ++i) // more than one word of null bits
        things.push_back(std::make_unique<CThing>(store));
    const std::vector<std::string> keys{"FLOW_TOTAL", "LEVEL_LINE_POSITION", "PIPE_REF", "FLOW_POINT"};
    std::mt19937_64 random(1);
    const auto writeSome = [&](int count) {
        for (int i = 0; i < count; ++i) {
            const auto& key = keys[random() % keys.size()];
            const auto number = static_cast<int>(random() % 100);
            const CDataBox box = number < 20 ? CDataBox() : CDataBox(std::to_string(number));
            CDataRW::Write(key, things[random() % things.size()].get(), box, nullptr);
        }
    };
    const auto picture = [&] {
        std::vector<CDataBox> boxes;
        for (const auto& key : keys)
            for (const auto& thing : things)
                CDataRW::Read(key, thing.get(), boxes.emplace_back(), 0, nullptr);
        return boxes;
    };
    writeSome(200);
    const auto before = picture();
    CJournal journal;
    {
        const CJournalScope open(store, &journal);
        writeSome(500);
    }
    const auto after = picture();
    ASSERT_NE(before, after);
    EXPECT_EQ(journal.GetAttributeChanges().size(), 500U);
    journal.Undo(store);
    EXPECT_EQ(picture(), before);
    journal.Redo(store);
    EXPECT_EQ(picture(), after);
    writeSome(1);
    EXPECT_EQ(journal.GetAttributeChanges().size(), 500U) << "a closed journal notes nothing";
}

TEST(AttributeStore, RepeatedTextsAreKeptOnce) {
    CTestProject project;
    const std::string parameters(500, 'p');
    std::vector<std::unique_ptr<CThing>> things;
    for (int i = 0; i < 1000; ++i) {
        things.push_back(std::make_unique<CThing>(project.Store()));
        CDataRW::Write("FLOW_TOTAL_S", things.back().get(), parameters, nullptr);
        CDataRW::Write("PIPE_REF", things.back().get(), i % 2 == 0 ? "a" : "b", nullptr);
    }
    EXPECT_EQ(project.Store().GetTexts().GetCount(), 3U);
}

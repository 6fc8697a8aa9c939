// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/ModuleApplication.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

using namespace OLMGis::Workspace;

namespace {

/// Answers each message with the number of its operation among the sixteen.
class CProbe final : public AcRxArxApp {
public:
    int m_calls = 0;

private:
    int Answer(int place) {
        ++m_calls;
        return place;
    }
    int OnLoad(void*) override { return Answer(1); }
    int OnUnload(void*) override { return Answer(2); }
    int OnLoadDrawing(void*) override { return Answer(3); }
    int OnUnloadDrawing(void*) override { return Answer(4); }
    int OnCallFunction(void*) override { return Answer(5); }
    int OnConfiguration(void*) override { return Answer(6); }
    int OnEnd(void*) override { return Answer(7); }
    int OnQuit(void*) override { return Answer(8); }
    int OnSave(void*) override { return Answer(9); }
    int OnDependency(void*) override { return Answer(10); }
    int OnNoDependency(void*) override { return Answer(11); }
    int OnUnloadHost(void*) override { return Answer(12); }
    int OnBeforeQuit(void*) override { return Answer(13); }
    int OnBeginDialog(void*) override { return Answer(14); }
    int OnEndDialog(void*) override { return Answer(15); }
    int OnNull(void*) override { return Answer(16); }
};

class CFlagged final : public AcRxArxApp {
public:
    CFlagged(int isUnlockable, int isDocumentAware) {
        m_isUnlockable = isUnlockable;
        m_isDocumentAware = isDocumentAware;
    }
};

class CLinker final : public AcRxDynamicLinker {
public:
    std::string m_declared;
    void UnlockApplication() override { m_declared += "unlock "; }
    void RegisterAppDocumentAware() override { m_declared += "documents "; }
};

} // namespace

TEST(ModuleApplication, EachMessageGoesToItsOperation) {
    CProbe probe;
    EXPECT_EQ(probe.EntryPoint(0, nullptr), 16);
    for (unsigned message = 1; message <= 15; ++message)
        EXPECT_EQ(probe.EntryPoint(message, nullptr), static_cast<int>(message));
    EXPECT_EQ(probe.m_calls, 16);
    for (const unsigned message : {16U, 17U, 0x80000001U, std::numeric_limits<unsigned>::max()})
        EXPECT_EQ(probe.EntryPoint(message, nullptr), 0) << message;
    EXPECT_EQ(probe.m_calls, 16) << "a number above 15 calls nothing";
}

TEST(ModuleApplication, LoadingDeclaresTheFlagsToTheHost) {
    const struct {
        int isUnlockable;
        int isDocumentAware;
        const char* declared;
    } cases[] = {{0, 0, ""}, {1, 0, "unlock "}, {0, 1, "documents "}, {1, 1, "unlock documents "}};
    for (const auto& [isUnlockable, isDocumentAware, declared] : cases) {
        CFlagged application(isUnlockable, isDocumentAware);
        EXPECT_EQ(application.GetInstance(), nullptr) << "before the load message";
        CLinker linker;
        int file = 0;
        CApplicationPacket packet{&linker, &file};
        for (unsigned message = 2; message <= 16; ++message)
            EXPECT_EQ(application.EntryPoint(message % 16, &packet), 0);
        EXPECT_EQ(linker.m_declared, "") << "only loading declares";
        EXPECT_EQ(application.EntryPoint(LoadMessage, &packet), 0);
        EXPECT_EQ(linker.m_declared, declared);
        EXPECT_EQ(application.GetInstance(), &file);
    }
}

TEST(ModuleApplication, LoadingWithoutAPacketOrALinker) {
    CFlagged application(1, 1);
    EXPECT_EQ(application.EntryPoint(LoadMessage, nullptr), 0);
    EXPECT_EQ(application.GetInstance(), nullptr);
    CApplicationPacket packet;
    EXPECT_EQ(application.EntryPoint(LoadMessage, &packet), 0);
}

// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/AvailableResources.h"
#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/HostServices.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/NotificationFramework.h"
#include "host/gis_core/PerformanceTimer.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/RunTrace.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sys/resource.h>
#include <unistd.h>

using namespace OLMGis;
using Utility::CCoreProgressBar;
using Utility::CModuleConfiguration;

namespace {

class CProgressHost final : public System::IBasicHostServices {
public:
    int m_shown = 0;
    int m_cancelAfter = 1 << 30;
    double m_last = -1.0;
    int ShowProgress(std::string_view, double done) override {
        m_last = done;
        return ++m_shown <= m_cancelAfter ? 1 : 0;
    }
    System::CHostServicesScope m_scope{*this};
};

} // namespace

TEST(ModuleConfiguration, EditionIsLaidOverTheLanguageAndUnknownNumbersShow) {
    CTestProject project;
    CModuleConfiguration& texts = *CModuleConfiguration::Instance();
    EXPECT_EQ(texts.GetMsg(0), "STANDARD");
    System::CProjectSettings::Instance()->Set("edition", "RO");
    ASSERT_TRUE(texts.ApplySettings());
    EXPECT_EQ(texts.GetMsg(0), "RO");
    EXPECT_EQ(texts.GetMsg(123456), "#123456");
    EXPECT_FALSE(texts.HasMsg(123456));
    EXPECT_FALSE(texts.SetLanguage("../en")) << "an unknown language is refused";
    EXPECT_TRUE(texts.HasMsg(2050)) << "and the one in force stays";
    EXPECT_TRUE(texts.GetIcon("../icons/IDI_SEWAGE").empty());
    EXPECT_FALSE(texts.GetIcon("IDI_SEWAGE").empty());
}

TEST(ProjectContext, EachProjectHasItsOwn) {
    CTestProject first;
    CModuleConfiguration::Instance()->SetEdition("BLG");
    {
        CTestProject second;
        EXPECT_EQ(CModuleConfiguration::Instance()->GetMsg(0), "STANDARD");
    }
    EXPECT_EQ(CModuleConfiguration::Instance()->GetMsg(0), "BLG");
}

TEST(CoreProgressBar, DrawsByThousandthsNestsAndStaysCancelled) {
    CTestProject project;
    CProgressHost host;
    CCoreProgressBar& bar = *CCoreProgressBar::Instance();
    bar.SaveState();
    bar.Show("outer", 0, 1000000);
    for (int i = 0; i < 1000000; ++i)
        ASSERT_NE(bar.SetPosition(i), 0);
    EXPECT_LE(host.m_shown, 1001);
    bar.SaveState();
    bar.Show("inner", 0, 10);
    host.m_cancelAfter = host.m_shown;
    EXPECT_EQ(bar.SetPosition(5), 0);
    bar.Hide();
    bar.RestoreState();
    EXPECT_EQ(bar.GetCaption(), "outer");
    EXPECT_TRUE(bar.IsCancelled()) << "cancelling an inner operation cancels the outer one";
    EXPECT_EQ(bar.SetPosition(999999), 0);
    bar.RestoreState();
    host.m_cancelAfter = 1 << 30;
    bar.SaveState();
    bar.Show("next", 0, 0);
    EXPECT_EQ(host.m_last, 1.0) << "a range without width is done";
    EXPECT_FALSE(bar.IsCancelled());
    bar.RestoreState();
    EXPECT_FALSE(bar.IsShown());
}

TEST(ModuleScope, TakesOutWhatAModuleRegisteredLastFirst) {
    CTestProject project;
    auto& scope = *System::CModuleScope::Instance();
    std::string order;
    scope.NoteRegistered([&] { order += "host "; });
    scope.Open();
    scope.NoteRegistered([&] { order += "first "; });
    scope.NoteRegistered([&] { order += "second "; });
    scope.Close();
    scope.SetLoaded(true);
    scope.NoteMade([&] { order += "made "; });
    scope.TakeOutAll();
    EXPECT_EQ(order, "made second first ");
}

TEST(RunTrace, IsClosedUntilAHostOpensIt) {
    EXPECT_EQ(Utility::CRunTrace::Active(), nullptr);
    Utility::CRunTrace trace;
    {
        const Utility::CRunTraceScope open(trace);
        auto& table = Utility::CRunTrace::Active()->GetTable("pipes", {{"flow", "m³/s"}});
        table.m_rows.push_back({"g", "S1", {0.25}});
        EXPECT_EQ(&Utility::CRunTrace::Active()->GetTable("pipes", {}), &table);
    }
    EXPECT_EQ(Utility::CRunTrace::Active(), nullptr);
    ASSERT_NE(trace.FindTable("pipes"), nullptr);
    EXPECT_EQ(trace.FindTable("pipes")->m_rows.size(), 1U);
}

TEST(AvailableResources, SystemReportsFreeMemoryInBytes) {
    const auto memory = System::AvailableResources().GetFreeMemory();
    ASSERT_TRUE(memory.has_value());
    EXPECT_GT(*memory, 1.0e6) << "bytes, not kB: this process alone takes more";
}

TEST(AvailableResources, MemoryEndsAtTheLimitOfTheProcess) {
    constexpr rlim_t room = 300'000'000;
    std::ifstream table("/proc/self/statm");
    rlim_t pages = 0;
    table >> pages;
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_AS, &former), 0);
    const rlimit limited{pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + room, former.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_AS, &limited), 0);
    const auto memory = System::AvailableResources().GetFreeMemory();
    ASSERT_EQ(setrlimit(RLIMIT_AS, &former), 0);
    ASSERT_TRUE(memory.has_value());
    EXPECT_LE(*memory, static_cast<double>(room));
    EXPECT_GT(*memory, 0.5 * static_cast<double>(room));
}

TEST(PerformanceTimer, ReadsWithDecimalsAndUnknownNumbersAsNought) {
    CTestProject project;
    auto& timers = *Utility::CPerformanceTimer::Instance();
    const int timer = timers.CreateTimer();
    EXPECT_EQ(timers.ReadTimerStr(timer, 4), "0.0000 s") << "not started";
    timers.StartTimer(timer);
    timers.StopTimer(timer);
    EXPECT_EQ(timers.ReadTimerStr(timer, 4), timers.ReadTimerStr(timer, 4)) << "no longer changes once stopped";
    timers.DestroyTimer(timer);
    EXPECT_EQ(timers.ReadTimerStr(timer, 2), "0.00 s");
    EXPECT_NE(timers.CreateTimer(), timer);
}

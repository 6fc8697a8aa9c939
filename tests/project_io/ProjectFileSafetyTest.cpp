// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/HostServices.h"
#include "host/project_io/store/ProjectFile.h"
#include "tests/project_io/ProjectFileFixture.h"

#include <gmock/gmock.h>

#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace OLMGis;
using ProjectIo::CProjectFile;
using testing::HasSubstr;
using Utility::enmErrorKind;

namespace {

/// Runs a step in a process of its own and returns its status as waitpid gives it. The step's result is the exit code.
int InChild(const std::function<int()>& step) {
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(step());
    int status = -1;
    ::waitpid(child, &status, 0);
    return status;
}

/// Progress that ends the process in the middle of a save.
class CKillingHost final : public System::IBasicHostServices {
public:
    int ShowProgress(std::string_view /*caption*/, double done) override {
        if (done > 0.3)
            ::kill(::getpid(), SIGKILL);
        return 1;
    }

private:
    System::CHostServicesScope m_scope{*this};
};

/// Fills the active project with a line of sections, long enough that a save takes several steps.
void FillLine(int sections) {
    auto& topology = ActiveTopology();
    auto last = topology.AddNode("n", "n", {0, 0}).Value();
    for (int i = 0; i < sections; ++i) {
        const std::string name = std::to_string(i);
        const auto next = topology.AddNode("n" + name, name, {10.0 * i, 1.0}).Value();
        EXPECT_TRUE(topology.AddSection("s" + name, name, last.get(), next.get(), {}));
        last = next;
    }
}

/// A host that is asked whether to go on while a save waits for other programs.
class CWaitingHost final : public System::IBasicHostServices {
public:
    explicit CWaitingHost(std::function<int()> answer) : m_answer(std::move(answer)) {}
    int ShowProgress(std::string_view caption, double /*done*/) override {
        return caption == "Waiting for other programs" ? m_answer() : 1;
    }

private:
    std::function<int()> m_answer;
    System::CHostServicesScope m_scope{*this};
};

void ExpectRefused(const Utility::Status& status, const std::string& text) {
    ASSERT_FALSE(status);
    EXPECT_EQ(status.GetError().kind, enmErrorKind::Refused);
    EXPECT_THAT(status.GetError().message, HasSubstr(text));
}

/// A file with the small network, opened in a project of its own.
class ProjectFileSafety : public testing::Test {
protected:
    ProjectFileSafety() {
        CTestProject project;
        FillSmall();
        EXPECT_TRUE(CProjectFile::Create(m_path, false));
        m_bytes = BytesOf(m_path);
    }

    CProjectFile Opened() const {
        auto file = CProjectFile::Open(m_path);
        EXPECT_TRUE(file) << file.GetError().message;
        return std::move(file.Value());
    }

    void ExpectUntouched() const {
        EXPECT_EQ(m_folder.List(), "small.gpkg");
        EXPECT_TRUE(BytesOf(m_path) == m_bytes);
    }

    const CTestFolder m_folder;
    const std::string m_path = m_folder.File("small.gpkg");
    std::string m_bytes;
    CTestProject m_project;
};

} // namespace

TEST_F(ProjectFileSafety, AKilledSaveLeavesTheOldFileAndTheNextOneClearsUp) {
    auto file = Opened();
    FillLine(5000);
    const int status = InChild([&] {
        const CKillingHost host;
        return file.Save() ? 0 : 1;
    });
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    EXPECT_TRUE(BytesOf(m_path) == m_bytes);
    EXPECT_NE(m_folder.List(), "small.gpkg"); // what the killed process left
    const auto saved = file.Save();
    ASSERT_TRUE(saved) << saved.GetError().message;
    EXPECT_EQ(m_folder.List(), "small.gpkg");
    CTestProject other;
    ASSERT_TRUE(CProjectFile::Open(m_path));
    EXPECT_EQ(ActiveTopology().GetSections().size(), 5001U);
}

TEST_F(ProjectFileSafety, ASaveThatIsStillGoingOnIsNoLeftOver) {
    const std::string others = m_folder.File(".drenova-save-0123456789abcdef.gpkg");
    const std::string foreign = m_folder.File(".drenova-save-notes.gpkg");
    WriteBytes(others, "being written");
    WriteBytes(foreign, "no name of ours");
    const int lock = ::open(others.c_str(), O_RDONLY);
    ASSERT_EQ(::flock(lock, LOCK_EX), 0);
    auto file = Opened();
    EXPECT_TRUE(file.Save());
    EXPECT_TRUE(std::filesystem::exists(others));
    ::close(lock);
    EXPECT_TRUE(file.Save());
    EXPECT_FALSE(std::filesystem::exists(others));
    EXPECT_TRUE(std::filesystem::exists(foreign));
}

TEST_F(ProjectFileSafety, AFullDiskLeavesTheOldFile) {
    auto file = Opened();
    FillLine(5000);
    for (const rlim_t limit : {0U, 1000U, 20000U, 300000U, 900000U}) {
        SCOPED_TRACE(limit);
        const int status = InChild([&] {
            const struct rlimit size = {limit, limit};
            ::setrlimit(RLIMIT_FSIZE, &size);
            std::signal(SIGXFSZ, SIG_IGN); // as programs have to
            const auto saved = file.Save();
            return !saved && saved.GetError().kind == enmErrorKind::Refused ? 7 : 1;
        });
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7);
        ExpectUntouched();
    }
}

TEST_F(ProjectFileSafety, TheSecondOfTwoWritersIsWarned) {
    auto first = Opened();
    CTestProject project;
    auto second = Opened();
    ASSERT_TRUE(first.Save());
    const std::string bytes = BytesOf(m_path);
    ExpectRefused(second.Save(), "small.gpkg: was replaced by another program since it was opened here");
    EXPECT_TRUE(BytesOf(m_path) == bytes);
    EXPECT_TRUE(first.Save()); // its own saves do not count as another program
    EXPECT_TRUE(second.SaveAs(m_path, true));
    ExpectRefused(first.Save(), "was replaced by another program");
}

TEST_F(ProjectFileSafety, AChangeByOthersIsNoticed) {
    auto file = Opened();
    RunSql(m_path, "UPDATE nodes SET TERRAIN_1 = 3");
    ExpectRefused(file.Save(), "small.gpkg: was changed by another program since it was opened here");
    std::filesystem::remove(m_path);
    ExpectRefused(file.Save(), "small.gpkg: was removed since it was opened here");
    EXPECT_EQ(m_folder.List(), "");
}

TEST_F(ProjectFileSafety, AFileInUseByAnotherProgramIsNotReplaced) {
    auto file = Opened();
    int ready[2];
    int done[2];
    ASSERT_EQ(::pipe(ready), 0);
    ASSERT_EQ(::pipe(done), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        sqlite3* const database = OpenAsGis(m_path);
        sqlite3_exec(database, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
        char byte = 'x';
        const bool isTold = ::write(ready[1], &byte, 1) == 1 && ::read(done[0], &byte, 1) == 1;
        ::_exit(isTold ? 0 : 1);
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    {
        const CWaitingHost impatient([] { return 0; });
        EXPECT_EQ(file.Save().GetError().kind, enmErrorKind::Cancelled);
        ExpectUntouched();
    }
    bool hasEnded = false;
    const CWaitingHost patient([&] {
        if (!std::exchange(hasEnded, true)) {
            EXPECT_EQ(::write(done[1], &byte, 1), 1);
            ::waitpid(child, nullptr, 0);
        }
        return 1;
    });
    EXPECT_TRUE(file.Save()) << "a save waits for other programs";
    EXPECT_TRUE(hasEnded);
}

TEST_F(ProjectFileSafety, OpeningLeavesNoTrace) {
    struct stat before {};
    ::stat(m_path.c_str(), &before);
    std::filesystem::permissions(m_folder.Path(), std::filesystem::perms(0555));
    // Root gives up its rights, to see whether reading needs to write.
    const int status = InChild([&] {
        if (::getuid() == 0 && (::setgid(65534) != 0 || ::setuid(65534) != 0))
            return 2;
        auto file = CProjectFile::Open(m_path);
        if (!file)
            return 3;
        const auto saved = file->Save();
        return !saved && saved.GetError().kind == enmErrorKind::Refused ? 0 : 4;
    });
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << WEXITSTATUS(status);
    Opened();
    struct stat after {};
    ::stat(m_path.c_str(), &after);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(after.st_ino, before.st_ino);
    ExpectUntouched();
}

TEST_F(ProjectFileSafety, TheLogOfAnotherProgramIsReadAndNeverWrittenOver) {
    // A program that was killed while its changes were in a log beside the file.
    InChild([&] {
        sqlite3* const database = OpenAsGis(m_path);
        sqlite3_exec(database, "PRAGMA journal_mode = WAL; UPDATE sections SET name = 'in the log'", nullptr, nullptr,
                     nullptr);
        return 0;
    });
    const std::string files = m_folder.List();
    ASSERT_THAT(files, HasSubstr("small.gpkg-wal"));
    const std::string bytes = BytesOf(m_path);
    const std::string log = BytesOf(m_path + "-wal");
    auto file = Opened();
    EXPECT_EQ(ActiveTopology().GetSections().front()->GetName(), "in the log");
    ExpectRefused(file.Save(), "unfinished changes of it in small.gpkg-wal");
    ExpectRefused(file.SaveAs(m_path, true), "unfinished changes of it in small.gpkg-wal");
    EXPECT_TRUE(BytesOf(m_path) == bytes);
    EXPECT_TRUE(BytesOf(m_path + "-wal") == log);
    EXPECT_EQ(m_folder.List(), files);
    ASSERT_TRUE(file.SaveAs(m_folder.File("other.gpkg"), false));

    // Closed by the other program, the file is complete again, though its head still says that it uses a log.
    RunSql(m_path, "PRAGMA wal_checkpoint(TRUNCATE)");
    ASSERT_THAT(m_folder.List(), testing::Not(HasSubstr("small.gpkg-wal")));
    CTestProject other;
    auto whole = Opened();
    EXPECT_EQ(ActiveTopology().GetSections().front()->GetName(), "in the log");
    EXPECT_EQ(m_folder.List(), "other.gpkg small.gpkg");
    EXPECT_TRUE(whole.Save());
}

TEST_F(ProjectFileSafety, AHalfMadeChangeOfAnotherProgramIsRefused) {
    InChild([&] {
        sqlite3* const database = OpenAsGis(m_path);
        // A cache of one page makes SQLite write into the file before the transaction ends.
        sqlite3_exec(database,
                     "PRAGMA cache_size = 1; BEGIN; CREATE TABLE big(a); WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL "
                     "SELECT x + 1 FROM c LIMIT 2000) INSERT INTO big SELECT hex(zeroblob(500)) FROM c; "
                     "DELETE FROM gpkg_contents",
                     nullptr, nullptr, nullptr);
        return 0;
    });
    ASSERT_EQ(m_folder.List(), "small.gpkg small.gpkg-journal");
    const std::string bytes = BytesOf(m_path);
    const auto file = CProjectFile::Open(m_path);
    ASSERT_FALSE(file);
    EXPECT_EQ(file.GetError().kind, enmErrorKind::Refused);
    EXPECT_THAT(file.GetError().message, HasSubstr("killed while it did: found small.gpkg-journal"));
    EXPECT_TRUE(BytesOf(m_path) == bytes);
    EXPECT_EQ(m_folder.List(), "small.gpkg small.gpkg-journal");
}

TEST_F(ProjectFileSafety, ModeAndLinksAreKept) {
    std::filesystem::permissions(m_path, std::filesystem::perms(0640));
    const std::string link = m_folder.File("link.gpkg");
    std::filesystem::create_symlink("small.gpkg", link);
    auto file = CProjectFile::Open(link);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->Save());
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(std::filesystem::status(m_path).permissions(), std::filesystem::perms(0640));
    EXPECT_FALSE(BytesOf(m_path) == m_bytes); // the save counter has increased
    EXPECT_TRUE(file->Save());

    // A link to a missing file: the file is made where the link points.
    const std::string early = m_folder.File("early.gpkg");
    std::filesystem::create_symlink("later.gpkg", early);
    ASSERT_TRUE(CProjectFile::Create(early, false));
    EXPECT_EQ(m_folder.List(), "early.gpkg later.gpkg link.gpkg small.gpkg");
    std::filesystem::create_symlink("round.gpkg", m_folder.File("round.gpkg"));
    EXPECT_FALSE(CProjectFile::Create(m_folder.File("round.gpkg"), true));
}

TEST_F(ProjectFileSafety, PlacesThatCannotBeWrittenAreRefused) {
    const std::string folder = m_folder.File("folder.gpkg");
    std::filesystem::create_directory(folder);
    for (const std::string& path : {m_folder.File("missing/p.gpkg"), folder, m_path + "/p.gpkg", std::string(),
                                    std::string("/dev/null"), m_folder.File(std::string(300, 'x'))}) {
        SCOPED_TRACE(path);
        const auto created = CProjectFile::Create(path, true);
        ASSERT_FALSE(created);
        EXPECT_EQ(created.GetError().kind, enmErrorKind::Refused);
        const auto opened = CProjectFile::Open(path);
        ASSERT_FALSE(opened);
        EXPECT_EQ(opened.GetError().kind, enmErrorKind::Refused);
    }
    // A name as long as the file system allows is no problem, nor are characters with a meaning in a URI.
    const std::string longest(250, 'x');
    for (const char* start : {longest.c_str(), "a b%20?mode=ro#č"}) {
        const std::string name = std::string(start).append(".gpkg");
        ASSERT_TRUE(CProjectFile::Create(m_folder.File(name), false)) << name;
        CTestProject other;
        EXPECT_TRUE(CProjectFile::Open(m_folder.File(name))) << name;
    }
}

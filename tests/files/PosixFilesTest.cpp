#include "files/AtomicFileFixture.h"
#include "files/FileIO.h"
#include "files/FreeName.h"
#include "files/Import.h"
#include "files/SaveCommands.h"
#include "files/WriteLimit.h"
#include "support/Fakes.h"
#include "support/Trials.h"

#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#ifdef __linux__
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

/// Links, permissions, pipes and limits as only POSIX systems have them.

namespace tavex2::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

unsigned modeOf(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions());
}

/// Whether a folder's disk knows files without a name.
bool knowsNamelessFiles([[maybe_unused]] const fs::path& folder) {
#ifdef O_TMPFILE
    const int file = ::open(folder.c_str(), O_TMPFILE | O_WRONLY, 0600);
    if (file >= 0) ::close(file);
    return file >= 0;
#else
    return false;
#endif
}

/// Makes this process's disks such as know no files without a name, as network disks do; false when that cannot be.
bool forbidNamelessFiles() {
#ifdef __linux__
    constexpr auto argument = [](unsigned i) { return static_cast<unsigned>(offsetof(seccomp_data, args) + 8 * i); };
    constexpr unsigned nameless = O_TMPFILE & ~O_DIRECTORY;
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_openat, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, argument(2)),
        BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, nameless, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EOPNOTSUPP),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{static_cast<unsigned short>(std::size(rules)), rules};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
#else
    return true; // there are none
#endif
}

/// Sets the mask of new files while it lives.
class FileMask {
  public:
    explicit FileMask(mode_t mask) : m_old(::umask(mask)) {}
    ~FileMask() { ::umask(m_old); }
    FileMask(const FileMask&) = delete;
    FileMask& operator=(const FileMask&) = delete;

  private:
    mode_t m_old;
};

TEST_F(AtomicFileTest, LeavesTheOldFileWhenTheDiskTakesNoMore) {
    ASSERT_TRUE(save(m_path, "old"));
    {
        const WriteLimit limit(100000);
        AtomicFile file = AtomicFile::create(m_path).value();
        const auto written = put(file, std::string(200000, 'x'));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().kind, ErrorKind::WriteFailed);
        EXPECT_THAT(written.error().text, HasSubstr("size"));
        EXPECT_FALSE(put(file, "more")) << "an error stays";
        EXPECT_FALSE(file.commit());
    }
    EXPECT_EQ(bytesOf(m_path), "old");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, ReportsAtCommitWhatTheLastPieceRanInto) {
    const WriteLimit limit(10);
    {
        AtomicFile file = AtomicFile::create(m_path).value();
        ASSERT_TRUE(put(file, "more than ten bytes")) << "still collected";
        EXPECT_FALSE(file.commit());
    }
    EXPECT_THAT(namesIn(m_folder.path()), IsEmpty());
}

TEST_F(AtomicFileTest, GivesANewFileThePermissionsOfAnyNewFile) {
    const FileMask mask(027);
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_EQ(modeOf(m_path), 0640U);
}

TEST_F(AtomicFileTest, KeepsThePermissionsOfTheFileItReplaces) {
    const FileMask mask(077);
    ASSERT_TRUE(save(m_path, "old"));
    fs::permissions(m_path, fs::perms{0664});
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_EQ(modeOf(m_path), 0664U);
}

TEST_F(AtomicFileTest, FollowsASymbolicLink) {
    fs::create_directory(m_folder / "elsewhere");
    const fs::path real = m_folder.path() / "elsewhere" / "real.lmb";
    ASSERT_TRUE(save(real, "old"));
    fs::create_symlink("elsewhere/real.lmb", m_folder / "middle");
    fs::create_symlink(m_folder / "middle", m_path);
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_TRUE(fs::is_symlink(m_path));
    EXPECT_FALSE(fs::is_symlink(real));
    EXPECT_EQ(bytesOf(real), "new");
    EXPECT_THAT(namesIn(m_folder / "elsewhere"), ElementsAre("real.lmb"));
}

TEST_F(AtomicFileTest, MakesTheFileThatADanglingLinkNames) {
    fs::create_symlink("real.lmb", m_path);
    ASSERT_TRUE(save(m_path, "new"));
    EXPECT_EQ(bytesOf(m_folder / "real.lmb"), "new");
    EXPECT_TRUE(fs::is_symlink(m_path));
}

TEST_F(AtomicFileTest, RefusesLinksThatLeadInACircle) {
    fs::create_symlink("b.lmb", m_path);
    fs::create_symlink("a.lmb", m_folder / "b.lmb");
    EXPECT_FALSE(save(m_path, "new"));
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb", "b.lmb"));
}

TEST_F(AtomicFileTest, ReplacesNoDeviceOrPipe) {
    ASSERT_EQ(::mkfifo(m_path.c_str(), 0666), 0);
    const auto result = save(m_path, "new");
    ASSERT_FALSE(result);
    EXPECT_THAT(result.error().text, HasSubstr("not an ordinary file"));
    EXPECT_TRUE(fs::is_fifo(m_path));
}

TEST_F(AtomicFileTest, RespectsWriteProtection) {
    if (::geteuid() == 0) GTEST_SKIP() << "nothing is protected from this user";
    ASSERT_TRUE(save(m_path, "old"));
    fs::permissions(m_path, fs::perms{0444});
    EXPECT_THAT(save(m_path, "new").error().text, HasSubstr("no permission"));
    EXPECT_EQ(bytesOf(m_path), "old");

    fs::permissions(m_folder.path(), fs::perms{0555});
    EXPECT_THAT(save(m_folder / "b.lmb", "new").error().text, HasSubstr("no permission"));
    fs::permissions(m_folder.path(), fs::perms{0755});
}

TEST_F(AtomicFileTest, RefusesADanglingLinkToo) {
    fs::create_symlink("nowhere", m_path);
    EXPECT_EQ(save(m_path, "new", IfExists::Refuse).error().kind, ErrorKind::AlreadyExists);
    EXPECT_FALSE(fs::exists(m_folder / "nowhere"));
}

TEST_F(AtomicFileTest, TakesANameAsLongAsTheDiskDoes) {
    const std::string longest(255, 'a');
    ASSERT_TRUE(save(m_folder / longest, "new"));
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre(longest));
}

TEST_F(AtomicFileTest, ReportsAFolderThatVanishes) {
    const fs::path folder = m_folder / "going";
    fs::create_directory(folder);
    AtomicFile file = AtomicFile::create(folder / "a.lmb").value();
    ASSERT_TRUE(put(file, "new"));
    fs::remove_all(folder);
    const auto result = file.commit();
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().kind, ErrorKind::NotFound);
}

TEST_F(AtomicFileTest, AFailedSaveOfATrialLeavesTheOldFile) {
    ASSERT_TRUE(save(m_path, "old"));
    ProgramState state;
    collect(state, trialOf({std::vector<double>(400000, 1.0)}));
    FakeDialogs dialogs;
    FakeMessages messages;
    FakeFileView view;
    SaveCommands commands(state, dialogs, messages, view);
    dialogs.answers = {m_path};
    {
        const WriteLimit limit(1000000);
        const auto written = WriteLmb(m_path, *state.trials.CurrentTrial, "title");
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().kind, ErrorKind::WriteFailed);
        EXPECT_FALSE(commands.mnuSave_Click());
    }
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_THAT(messages.shown[0].text, HasSubstr("a.lmb"));
    EXPECT_EQ(bytesOf(m_path), "old");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb")) << "nothing is left lying about";
    EXPECT_TRUE(state.Unsaved());
    EXPECT_TRUE(state.TrialNotSaved());
}

TEST(FreeNameTest, CountsDanglingLinksAsTaken) {
    const TemporaryFolder folder;
    fs::create_symlink(folder / "nowhere", folder / "a.lmb");
    EXPECT_EQ(freeName(folder.path(), "a", ".lmb"), folder / "a (2).lmb");
}

TEST(ReadLmbFileTest, ReadsNoPipe) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe.lmb").c_str(), 0666), 0);
    EXPECT_THAT(readLmbFile(folder / "pipe.lmb").error().text, HasSubstr("not an ordinary file"));
}

TEST(ReadLmbFileTest, SaysThatAFileMayNotBeRead) {
    if (::geteuid() == 0) GTEST_SKIP() << "nothing is hidden from this user";
    const TemporaryFolder folder;
    std::ofstream(folder / "secret.lmb") << "x";
    fs::permissions(folder / "secret.lmb", fs::perms::none);
    EXPECT_THAT(readLmbFile(folder / "secret.lmb").error().text, HasSubstr("no permission"));
}

/// Runs something in a process of its own, which ends without tidying up, and gives its number.
template <class Work>
pid_t inAnotherProcess(const Work& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        work();
        ::_exit(0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    return child;
}

std::string hiddenName(pid_t process) {
    return ".tavex2-" + std::to_string(process) + "-0";
}

TEST_F(AtomicFileTest, ANewFileHasNoNameBeforeItIsWhole) {
    if (!knowsNamelessFiles(m_folder.path())) GTEST_SKIP() << "this disk does not";
    AtomicFile file = AtomicFile::create(m_path).value();
    ASSERT_TRUE(put(file, "new"));
    EXPECT_THAT(namesIn(m_folder.path()), IsEmpty());
    ASSERT_TRUE(file.commit());
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, AProcessEndedByForceLeavesNothing) {
    if (!knowsNamelessFiles(m_folder.path())) GTEST_SKIP() << "this disk does not";
    ASSERT_TRUE(save(m_path, "old"));
    inAnotherProcess([this] {
        AtomicFile file = AtomicFile::create(m_path).value();
        (void)put(file, std::string(1000000, 'x'));
        ::_exit(0);
    });
    EXPECT_EQ(bytesOf(m_path), "old");
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre("a.lmb"));
}

TEST_F(AtomicFileTest, ADiskWithoutNamelessFilesGetsHiddenOnes) {
    inAnotherProcess([this] {
        if (!forbidNamelessFiles()) ::_exit(1);
        AtomicFile file = AtomicFile::create(m_path).value();
        const bool hidden = put(file, "new") && namesIn(m_folder.path()) == std::vector{hiddenName(::getpid())};
        if (!hidden || !file.commit() || !save(m_path, "newer") || save(m_path, "other", IfExists::Refuse)) ::_exit(1);
        if (!checkWritable(m_folder.path()) || namesIn(m_folder.path()) != std::vector<std::string>{"a.lmb"})
            ::_exit(1);
    });
    EXPECT_EQ(bytesOf(m_path), "newer");
}

TEST_F(AtomicFileTest, WhatAProcessEndedByForceLeftIsRemovedAtTheNextStart) {
    const pid_t gone = inAnotherProcess([this] {
        if (!forbidNamelessFiles()) ::_exit(1);
        AtomicFile file = AtomicFile::create(m_path).value();
        ::_exit(put(file, std::string(1000000, 'x')) ? 0 : 1);
    });
    ASSERT_THAT(namesIn(m_folder.path()), ElementsAre(hiddenName(gone)));
    removeAbandonedFiles(m_folder.path());
    EXPECT_THAT(namesIn(m_folder.path()), IsEmpty());
}

TEST_F(AtomicFileTest, AFileThatIsBeingWrittenIsNotTakenForAnAbandonedOne) {
    const pid_t gone = inAnotherProcess([] {});
    const std::string living = hiddenName(::getppid());
    ASSERT_TRUE(save(m_folder / living, "of a process that lives"));
    // As it looks when another machine writes into a folder that both share.
    std::ofstream(m_folder / hiddenName(gone)) << "of a process that this machine does not have";
    const int open = ::open((m_folder / hiddenName(gone)).c_str(), O_WRONLY);
    ASSERT_EQ(::flock(open, LOCK_EX), 0);
    removeAbandonedFiles(m_folder.path());
    EXPECT_THAT(namesIn(m_folder.path()), testing::UnorderedElementsAre(living, hiddenName(gone)));
    ::close(open);
    removeAbandonedFiles(m_folder.path());
    EXPECT_THAT(namesIn(m_folder.path()), ElementsAre(living));
}

TEST_F(AtomicFileTest, TidyingUpFollowsNoLinkAndRemovesNoFolder) {
    const pid_t gone = inAnotherProcess([] {});
    ASSERT_TRUE(save(m_path, "precious"));
    fs::create_symlink(m_path, m_folder / hiddenName(gone));
    fs::create_directory(m_folder / (".tavex2-" + std::to_string(gone) + "-1"));
    removeAbandonedFiles(m_folder.path());
    EXPECT_EQ(bytesOf(m_path), "precious");
    EXPECT_THAT(namesIn(m_folder.path()), testing::SizeIs(3));
}

TEST_F(AtomicFileTest, TryingAFolderFollowsNoLink) {
    ASSERT_TRUE(save(m_path, "precious"));
    for (const char* name : {".tavex2-write-probe", "any", ".tavex2"})
        fs::create_symlink(m_path, m_folder / name);
    EXPECT_TRUE(checkWritable(m_folder.path()));
    EXPECT_EQ(bytesOf(m_path), "precious");
}

TEST_F(AtomicFileTest, KeepsTheTailOfTheFileThatALinkNames) {
    ASSERT_TRUE(save(m_folder / "real.plv", "old and longer"));
    fs::create_symlink("real.plv", m_path);
    ASSERT_TRUE(save(m_path, "new", IfExists::KeepTail));
    EXPECT_EQ(bytesOf(m_folder / "real.plv"), "new and longer");
    EXPECT_TRUE(fs::is_symlink(m_path));
}

TEST_F(AtomicFileTest, ManyProcessesThatWantOneNameAllGetOneOfTheirOwn) {
    constexpr int processes = 4;
    constexpr int filesEach = 50;
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process)
        if (const pid_t child = ::fork(); child != 0) {
            children.push_back(child);
        } else {
            for (int i = 0; i < filesEach; ++i)
                if (!writeToFreeName(m_folder.path(), "a", ".lmb", [&](const fs::path& path) {
                        return save(path, std::to_string(process) + "/" + std::to_string(i), IfExists::Refuse);
                    }))
                    ::_exit(1);
            ::_exit(0);
        }
    for (const pid_t child : children) {
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    std::set<std::string> contents;
    for (const std::string& name : namesIn(m_folder.path()))
        contents.insert(bytesOf(m_folder / name));
    EXPECT_EQ(contents.size(), static_cast<std::size_t>(processes * filesEach));
}

} // namespace
} // namespace tavex2::test

#include "Engine/File/DestinationFile.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "Engine/File/SourceFile.h"
#include "Engine/File/StandardStreams.h"
#include "Tests/Engine/File/ChildProcess.h"
#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {
namespace {

using Names = std::set<std::string>;

enum Outcome { Written, NotOpened, Failed };

Outcome Write(std::u16string_view path, const std::string& content, int patience = 60) {
    DestinationFile destination(patience);
    if (!destination.Open(path))
        return NotOpened;
    constexpr std::size_t kPiece = 300000;
    for (std::size_t i = 0; i < content.size(); i += kPiece) {
        const std::size_t count = std::min(kPiece, content.size() - i);
        if (destination.Write(content.data() + i, count) != count)
            break; // remembered by Close()
    }
    return destination.Close() == 0 ? Written : Failed;
}

TEST(DestinationFileTest, NewAndOldFilesGetTheWholeContent) {
    const TemporaryFolder folder;
    const std::string large(1000001, 'l');
    for (const std::string& content : {std::string("first"), large, std::string("short"), std::string()}) {
        EXPECT_EQ(Write(folder / "file", content), Written);
        EXPECT_EQ(folder.Get("file"), content);
        EXPECT_EQ(folder.List(), Names{"file"}) << "no temporary is left";
    }
}

TEST(DestinationFileTest, NothingChangesUntilClose) {
    const TemporaryFolder folder;
    folder.Put("old", "old");
    for (const char* name : {"old", "new"}) {
        DestinationFile destination;
        ASSERT_TRUE(destination.Open(folder / name));
        EXPECT_EQ(destination.Write("replaced", 8), 8u);
        EXPECT_EQ(folder.Get("old"), "old");
    }
    EXPECT_EQ(folder.Get("old"), "old");
    EXPECT_EQ(folder.List(), Names{"old"});
}

TEST(DestinationFileTest, WhatIsNoFileDoesNotOpen) {
    const TemporaryFolder folder;
    folder.Put("file", "content");
    for (const char* name : {"", ".", "missing/file", "missing/", "file/below"})
        EXPECT_EQ(Write(folder / name, "x"), NotOpened) << name;
    EXPECT_EQ(Write(u"", "x"), NotOpened);
    DestinationFile unopened;
    EXPECT_EQ(unopened.Write("x", 1), 0u);
    EXPECT_NE(unopened.Close(), 0);
    EXPECT_EQ(folder.List(), Names{"file"});
}

#ifndef _WIN32

mode_t ModeOf(const TemporaryFolder& folder, const char* name) {
    struct stat status {};
    return stat(folder.GetName(name).c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
}

// Runs `body` where it has no rights but its own; false, visibly, when this process cannot become someone else.
template <class Body> bool RunAsOther(const TemporaryFolder& folder, Body body) {
    if (geteuid() == 0)
        chmod(folder.GetName("").c_str(), 0777);
    ChildProcess child([&] { return geteuid() == 0 && setuid(65534) != 0 ? 99 : body(); });
    const int result = child.Wait();
    EXPECT_TRUE(result == 0 || result == 99) << "step " << result;
    return result != 99;
}

TEST(DestinationFileTest, ModeIsKeptOrFollowsTheMask) {
    const TemporaryFolder folder;
    const mode_t mask = umask(027);
    EXPECT_EQ(Write(folder / "new", "x"), Written);
    for (const mode_t mode : {0600u, 0666u, 0755u, 0201u}) {
        const std::string name = std::to_string(mode);
        folder.Put(name, "old");
        chmod(folder.GetName(name).c_str(), mode);
        EXPECT_EQ(Write(folder / name, "x"), Written);
        EXPECT_EQ(ModeOf(folder, name.c_str()), mode);
    }
    umask(mask);
    EXPECT_EQ(ModeOf(folder, "new"), mode_t(0640));
}

TEST(DestinationFileTest, LinksAreWrittenThroughAndStay) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.GetPath() / "below");
    const auto link = [&](const std::string& text, const char* name) {
        ASSERT_EQ(symlink(text.c_str(), folder.GetName(name).c_str()), 0);
    };
    folder.Put("below/old", "old");
    link("below/second", "chain");
    link("../below/old", "below/second");
    link(folder.GetName("below/fresh"), "dangling");
    link("below/missing/file", "lost");
    link("loop", "loop");
    EXPECT_EQ(Write(folder / "chain", "through"), Written);
    EXPECT_EQ(folder.Get("below/old"), "through");
    EXPECT_EQ(Write(folder / "dangling", "created"), Written);
    EXPECT_EQ(folder.Get("below/fresh"), "created");
    EXPECT_EQ(Write(folder / "lost", "x"), NotOpened);
    EXPECT_EQ(Write(folder / "loop", "x"), NotOpened);
    for (const char* name : {"chain", "below/second", "dangling"})
        EXPECT_TRUE(std::filesystem::is_symlink(folder.GetPath() / name)) << name;
    EXPECT_EQ(folder.List(), (Names{"below", "chain", "dangling", "lost", "loop"}));
}

TEST(DestinationFileTest, HardLinksStayLinkedAndWaitForEachOther) {
    const TemporaryFolder folder;
    folder.Put("one", "old");
    std::filesystem::create_hard_link(folder.GetPath() / "one", folder.GetPath() / "two");
    for (const std::string& content : {std::string(300000, 'n'), std::string("short"), std::string()}) {
        EXPECT_EQ(Write(folder / "two", content), Written);
        EXPECT_EQ(folder.Get("one"), content);
    }
    folder.Put("one", "kept");
    const int other = open(folder.GetName("one").c_str(), O_RDONLY);
    flock(other, LOCK_EX);
    EXPECT_EQ(Write(folder / "two", "late"), Failed);
    EXPECT_EQ(folder.Get("two"), "kept");
    close(other);
    EXPECT_EQ(std::filesystem::hard_link_count(folder.GetPath() / "one"), 2u);
}

TEST(DestinationFileTest, RightsOfOtherUsersAreRespected) {
    const TemporaryFolder folder;
    for (const char* name : {"readonly", "shared"})
        folder.Put(name, "old");
    std::filesystem::create_directory(folder.GetPath() / "closed");
    folder.Put("closed/open", "old");
    chmod(folder.GetName("readonly").c_str(), 0444);
    chmod(folder.GetName("shared").c_str(), 0666);
    chmod(folder.GetName("closed/open").c_str(), 0666);
    chmod(folder.GetName("closed").c_str(), 0555);
    const bool ran = RunAsOther(folder, [&] {
        return Write(folder / "readonly", "x") != NotOpened           ? 1
               : Write(folder / "closed/new", "x") != NotOpened       ? 2
               : Write(folder / "closed/open", "in place") != Written ? 3
               : Write(folder / "shared", "in place") != Written      ? 4
                                                                      : 0;
    });
    chmod(folder.GetName("closed").c_str(), 0755);
    if (!ran)
        GTEST_SKIP() << "this process cannot become another user";
    EXPECT_EQ(folder.Get("readonly"), "old");
    EXPECT_EQ(folder.Get("closed/open"), "in place");
    EXPECT_EQ(folder.Get("shared"), "in place");
    struct stat status {};
    stat(folder.GetName("shared").c_str(), &status);
    EXPECT_EQ(status.st_uid, geteuid()) << "the owner stays";
    EXPECT_EQ(folder.List(), (Names{"closed", "readonly", "shared"}));
}

// For this process alone.
bool Mount(const std::string& what, const std::string& where, const char* type, unsigned long flags,
           const char* options) {
    return unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount(what.c_str(), where.c_str(), type, flags, options) == 0;
}

TEST(DestinationFileTest, WhatCannotBeRenamedOverIsRewritten) {
    const TemporaryFolder folder;
    folder.Put("mounted", "below");
    folder.Put("elsewhere", "old");
    const std::string content(100000, 'm');
    ChildProcess child([&] {
        if (!Mount(folder.GetName("elsewhere"), folder.GetName("mounted"), nullptr, MS_BIND, nullptr))
            return 99;
        return static_cast<int>(Write(folder / "mounted", content));
    });
    const int result = child.Wait();
    if (result == 99)
        GTEST_SKIP() << "this process cannot mount";
    EXPECT_EQ(result, Written);
    EXPECT_EQ(folder.Get("elsewhere"), content);
    EXPECT_EQ(folder.List(), (Names{"elsewhere", "mounted"}));
}

TEST(DestinationFileTest, FullDiskKeepsTheOldFile) {
    const TemporaryFolder folder;
    ChildProcess child([&] {
        if (!Mount("none", folder.GetName(""), "tmpfs", 0, "size=400k"))
            return 99;
        const std::string old(100000, 'o'), larger(500000, 'n');
        for (const std::string name : {"ordinary", "linked"})
            folder.Put(name, old);
        std::filesystem::create_hard_link(folder.GetPath() / "linked", folder.GetPath() / "linked2");
        for (const std::string name : {"ordinary", "linked", "new"})
            if (Write(folder / name, larger) != Failed || (name != "new" && folder.Get(name) != old))
                return 1;
        return folder.List() == Names{"linked", "linked2", "ordinary"} ? 0 : 2;
    });
    const int result = child.Wait();
    if (result == 99)
        GTEST_SKIP() << "this process cannot mount";
    EXPECT_EQ(result, 0);
}

TEST(DestinationFileTest, SizeLimitsAndFullDevicesKeepTheOldFile) {
    const TemporaryFolder folder;
    const std::string old(300000, 'o');
    folder.Put("ordinary", "old");
    folder.Put("linked", "old");
    folder.Put("larger", old);
    for (const std::string name : {"linked", "larger"})
        std::filesystem::create_hard_link(folder.GetPath() / name, folder.GetPath() / (name + "2"));
    const Names names = folder.List();
    for (const char* name : {"ordinary", "linked", "larger", "new"}) {
        ChildProcess child([&] {
            PrepareStandardStreams(); // or the limit's signal would kill
            const rlimit limit{100000, 100000};
            setrlimit(RLIMIT_FSIZE, &limit);
            return static_cast<int>(Write(folder / name, std::string(200000, 'n')));
        });
        EXPECT_EQ(child.Wait(), Failed) << name;
    }
    EXPECT_EQ(folder.Get("ordinary"), "old");
    EXPECT_EQ(folder.Get("linked"), "old");
    EXPECT_EQ(folder.Get("larger"), old) << "within its old size";
    EXPECT_EQ(folder.List(), names);
    EXPECT_EQ(Write(u"/dev/full", "x"), Failed);
    EXPECT_EQ(Write(u"/dev/null", "x"), Written);
}

TEST(DestinationFileTest, KillLeavesTheOldFile) {
    const TemporaryFolder folder;
    for (const std::string name : {"ordinary", "linked"})
        folder.Put(name, "old");
    std::filesystem::create_hard_link(folder.GetPath() / "linked", folder.GetPath() / "linked2");
    for (const char* name : {"ordinary", "linked"}) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        ChildProcess child([&] {
            DestinationFile destination;
            const std::string half(500000, 'h');
            const bool isHalf = destination.Open(folder / name) && destination.Write(half.data(), half.size()) > 0;
            return write(ends[1], "!", isHalf ? 1 : 0) == 1 ? pause() : 1;
        });
        char ready;
        close(ends[1]);
        EXPECT_EQ(read(ends[0], &ready, 1), 1);
        child.Kill();
        EXPECT_EQ(child.Wait(), SIGKILL - 256);
        close(ends[0]);
        EXPECT_EQ(folder.Get(name), "old");
    }
    if (close(open(folder.GetName("").c_str(), O_WRONLY | O_TMPFILE, 0600)) == 0) {
        EXPECT_EQ(folder.List(), (Names{"linked", "linked2", "ordinary"}));
    }
}

// Without /proc, a file that was written without a name gets none.
TEST(DestinationFileTest, FilesThatGetNoNameAreCopied) {
    const TemporaryFolder folder;
    const std::string content(100000, 'c');
    folder.Put("old", "old");
    chmod(folder.GetName("old").c_str(), 0640);
    ChildProcess child([&] {
        if (!Mount("none", "/proc", "tmpfs", 0, ""))
            return 99;
        return Write(folder / "old", content) == Written && Write(folder / "new", content) == Written ? 0 : 1;
    });
    const int result = child.Wait();
    if (result == 99)
        GTEST_SKIP() << "this process cannot mount";
    EXPECT_EQ(result, 0);
    EXPECT_EQ(folder.Get("old"), content);
    EXPECT_EQ(folder.Get("new"), content);
    EXPECT_EQ(ModeOf(folder, "old"), mode_t(0640));
    EXPECT_EQ(folder.List(), (Names{"new", "old"}));
}

TEST(DestinationFileTest, TwoRunsAtOnceLeaveOneWholeResult) {
    const TemporaryFolder folder;
    const std::string first(700000, '1'), second(400000, '2');
    const auto isWhole = [&](const char* name) { return folder.Get(name) == first || folder.Get(name) == second; };
    for (const char* name : {"ordinary", "linked"}) {
        const bool isLinked = std::string(name) == "linked";
        folder.Put(name, first);
        if (isLinked)
            std::filesystem::create_hard_link(folder.GetPath() / name, folder.GetPath() / "linked2");
        const auto writeMany = [&](const std::string& content) {
            for (int i = 0; i < 60; ++i)
                if (Write(folder / name, content, DestinationFile::kPatienceMilliseconds) != Written)
                    return 1;
            return 0;
        };
        for (int round = 0; round < 3; ++round) {
            ChildProcess one([&] { return writeMany(first); });
            ChildProcess two([&] { return writeMany(second); });
            for (int i = 0; i < 100 && !isLinked; ++i) { // an ordinary file is whole at every instant
                const std::string content = folder.Get(name);
                ASSERT_TRUE(content == first || content == second) << content.size();
            }
            EXPECT_EQ(one.Wait(), 0) << name;
            EXPECT_EQ(two.Wait(), 0) << name;
            EXPECT_TRUE(isWhole(name)) << name;
        }
    }
    EXPECT_EQ(folder.List(), (Names{"linked", "linked2", "ordinary"}));
}

TEST(DestinationFileTest, FifoNeedsAReaderThatReads) {
    const TemporaryFolder folder;
    const std::string name = folder.GetName("fifo"), content(1000000, 'f');
    ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
    PrepareStandardStreams();
    EXPECT_EQ(Write(folder / "fifo", content), NotOpened) << "nobody reads";
    const int stalled = open(name.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_EQ(Write(folder / "fifo", content), Failed) << "the reader stalls";
    close(stalled);
    ChildProcess late([&] {
        usleep(50000);
        SourceFile source;
        std::string bytes(content.size() + 1, '\0');
        return source.Open(folder / "fifo") && source.Read(bytes.data(), bytes.size()) == content.size() ? 0 : 1;
    });
    EXPECT_EQ(Write(folder / "fifo", content, 3000), Written);
    EXPECT_EQ(late.Wait(), 0);
}

TEST(DestinationFileTest, DescriptorsAreWrittenWhereTheyStand) {
    const TemporaryFolder folder;
    const auto pathOf = [](int number) {
        const std::string text = "/dev/fd/" + std::to_string(number);
        return std::u16string(text.begin(), text.end());
    };
    for (const bool isSocket : {false, true}) {
        int ends[2];
        ASSERT_EQ(isSocket ? socketpair(AF_UNIX, SOCK_STREAM, 0, ends) : pipe(ends), 0);
        char bytes[8] = {};
        EXPECT_EQ(Write(pathOf(ends[1]), "through"), Written);
        EXPECT_EQ(read(ends[0], bytes, sizeof bytes), 7) << bytes;
        if (isSocket) {
            EXPECT_EQ(Write(pathOf(ends[1]), std::string(10000000, 'x')), Failed) << "nobody reads";
        }
        close(ends[0]);
        close(ends[1]);
    }
    struct Case {
        bool isDeleted;
        bool isAliased;
    };
    for (const Case row : {Case{false, false}, Case{true, false}, Case{true, true}}) {
        folder.Put("file", "longer than before");
        const int file = open(folder.GetName("file").c_str(), O_RDWR);
        if (row.isDeleted)
            unlink(folder.GetName("file").c_str());
        const TemporaryFolder aliases;
        std::filesystem::create_symlink(pathOf(file), aliases.GetPath() / "alias");
        EXPECT_EQ(Write(row.isAliased ? aliases / "alias" : pathOf(file), "in place"), Written);
        char bytes[20] = {};
        EXPECT_EQ(read(file, bytes, sizeof bytes), 8) << bytes;
        EXPECT_EQ(folder.List(), row.isDeleted ? Names() : Names{"file"});
        close(file);
    }
    EXPECT_EQ(Write(u"/dev/fd/999", "x"), NotOpened);
}

TEST(DestinationFileTest, MessagesOfClosedStreamsNeverLandInIt) {
    const TemporaryFolder folder;
    ChildProcess child([&] {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            close(stream);
        PrepareStandardStreams();
        DestinationFile destination;
        if (!destination.Open(folder / "file") || destination.Write("content", 7) != 7)
            return 1;
        return WriteStandardOutput("message", 7) && write(STDERR_FILENO, "error", 5) == 5 ? destination.Close() : 2;
    });
    EXPECT_EQ(child.Wait(), 0);
    EXPECT_EQ(folder.Get("file"), "content");
}

#endif

} // namespace
} // namespace Corvid

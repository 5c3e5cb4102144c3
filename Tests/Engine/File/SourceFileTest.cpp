#include "Engine/File/SourceFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "Tests/Engine/File/ChildProcess.h"
#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {
namespace {

std::string ReadAll(SourceFile& source, std::size_t step = 1000) {
    std::string content;
    std::string buffer(step, '\0');
    while (const std::size_t count = source.Read(buffer.data(), step))
        content.append(buffer, 0, count);
    EXPECT_EQ(source.Read(buffer.data(), step), 0u) << "the end is final";
    return content;
}

TEST(SourceFileTest, RegularFilesKnowTheirSize) {
    const TemporaryFolder folder;
    std::string binary;
    for (int i = 0; i < 70000; ++i)
        binary.push_back(static_cast<char>(i)); // every byte: line ends and 1A are nothing special
    SourceFile source;
    for (const std::string& content : {binary, std::string("x"), std::string("\r\n\x1A\n")}) {
        folder.Put("file", content);
        ASSERT_TRUE(source.Open(folder / "file"));
        EXPECT_TRUE(source.IsRegular());
        EXPECT_EQ(source.GetSize(), content.size());
        EXPECT_EQ(ReadAll(source), content);
        EXPECT_EQ(source.Close(), 0);
    }
    folder.Put("file", "");
    ASSERT_TRUE(source.Open(folder / "file"));
    EXPECT_FALSE(source.IsRegular());
    EXPECT_EQ(ReadAll(source), "");
    EXPECT_EQ(source.GetError(), SourceError::None);
}

TEST(SourceFileTest, FoldersAndMissingFilesDoNotOpen) {
    const TemporaryFolder folder;
    folder.Put("file", "content");
    SourceFile source;
    for (const char* name : {"", ".", "other", "other/file", "file/below"})
        EXPECT_FALSE(source.Open(folder / name)) << name;
    EXPECT_FALSE(source.Open(u""));
    char byte;
    EXPECT_EQ(source.Read(&byte, 1), 0u);
    EXPECT_EQ(source.Close(), 0);
}

TEST(SourceFileTest, SizesThatChangeWhileReadingDoNoHarm) {
    const TemporaryFolder folder;
    for (const std::size_t later : {20u, 300u, 90000u}) {
        folder.Put("file", std::string(300, 'a'));
        SourceFile source;
        ASSERT_TRUE(source.Open(folder / "file"));
        char first[10];
        ASSERT_EQ(source.Read(first, sizeof first), sizeof first);
        std::filesystem::resize_file(folder.GetPath() / "file", later);
        EXPECT_EQ(ReadAll(source, 64).size(), std::min<std::size_t>(later, 300) - sizeof first) << later;
        EXPECT_EQ(source.GetError(), SourceError::None);
    }
}

#ifndef _WIN32

std::u16string DescriptorPath(int number) {
    std::u16string path = u"/dev/fd/";
    for (const char digit : std::to_string(number))
        path.push_back(static_cast<char16_t>(digit));
    return path;
}

TEST(SourceFileTest, PipesAndSocketsAreReadToTheirEnd) {
    const std::string content(300000, 'p'); // more than either holds at a time
    for (const bool isSocket : {false, true}) {
        int ends[2];
        ASSERT_EQ(isSocket ? socketpair(AF_UNIX, SOCK_STREAM, 0, ends) : pipe(ends), 0);
        ChildProcess writer([&] {
            close(ends[0]);
            usleep(20000);
            const char* next = content.data();
            while (next < content.data() + content.size())
                next += write(ends[1], next, static_cast<std::size_t>(content.data() + content.size() - next));
            return 0;
        });
        close(ends[1]);
        SourceFile source;
        ASSERT_TRUE(source.Open(DescriptorPath(ends[0])));
        EXPECT_FALSE(source.IsRegular());
        EXPECT_EQ(ReadAll(source, 262144), content) << isSocket;
        EXPECT_EQ(source.GetError(), SourceError::None);
        EXPECT_EQ(fcntl(ends[0], F_GETFL) & O_NONBLOCK, 0) << "the caller's descriptor was changed";
        close(ends[0]);
    }
}

// A writer that comes late and then thinks is waited for.
TEST(SourceFileTest, FifoWaitsForItsWriter) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.GetName("fifo").c_str(), 0600), 0);
    SourceFile source;
    ASSERT_TRUE(source.Open(folder / "fifo"));
    ChildProcess late([&] {
        usleep(50000);
        const int writer = open(folder.GetName("fifo").c_str(), O_WRONLY);
        for (const char* piece : {"late", " and", " slow"}) {
            usleep(50000);
            if (write(writer, piece, std::strlen(piece)) < 0)
                return 1;
        }
        return 0;
    });
    EXPECT_EQ(ReadAll(source), "late and slow");
    EXPECT_EQ(source.GetError(), SourceError::None);
}

// A shell opens the FIFO, the writer comes and goes, and only then is the FIFO opened again by its descriptor.
TEST(SourceFileTest, FifoWhoseWriterHasLeftEnds) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.GetName("fifo").c_str(), 0600), 0);
    const int shell = open(folder.GetName("fifo").c_str(), O_RDONLY | O_NONBLOCK);
    const int writer = open(folder.GetName("fifo").c_str(), O_WRONLY);
    ASSERT_EQ(write(writer, "all", 3), 3);
    close(writer);
    SourceFile source;
    ASSERT_TRUE(source.Open(DescriptorPath(shell)));
    EXPECT_EQ(ReadAll(source), "all");
    EXPECT_EQ(source.GetError(), SourceError::None);
    close(shell);
}

TEST(SourceFileTest, EndlessSourcesStopAtTheBound) {
    SourceFile zeros(100000);
    ASSERT_TRUE(zeros.Open(u"/dev/zero"));
    EXPECT_EQ(ReadAll(zeros, 262144).size(), 100000u);
    EXPECT_EQ(zeros.GetError(), SourceError::Endless);

    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    ASSERT_EQ(write(ends[1], "exact", 5), 5);
    close(ends[1]);
    SourceFile exact(5);
    ASSERT_TRUE(exact.Open(DescriptorPath(ends[0])));
    EXPECT_EQ(ReadAll(exact), "exact");
    EXPECT_EQ(exact.GetError(), SourceError::None);
    close(ends[0]);
}

TEST(SourceFileTest, FilesThatHideTheirSizeAreReadWhole) {
    SourceFile status;
    ASSERT_TRUE(status.Open(u"/proc/self/status"));
    EXPECT_FALSE(status.IsRegular());
    EXPECT_NE(ReadAll(status, 16).find("Threads:"), std::string::npos);
}

#endif

} // namespace
} // namespace Corvid

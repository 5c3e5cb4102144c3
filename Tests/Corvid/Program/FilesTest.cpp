#include "Tests/Corvid/Program/ProgramFixture.h"

#include "Corvid/Files/FileList.h"
#include "Corvid/Files/PrintedPath.h"

namespace Corvid {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class FilesTest : public ProgramFixture {
protected:
    static std::vector<std::string> Found(std::vector<std::string> paths, const std::string& destination = "") {
        FileSelection selection;
        selection.m_Paths = std::move(paths);
        std::vector<std::string> found;
        for (const ListedFile& file : FindFiles(selection, destination).m_Files)
            found.push_back(file.m_Path + (file.m_Error.empty() ? "" : "!"));
        return found;
    }
};

TEST_F(FilesTest, FoldersAreSearchedInOrderOfBytes) {
    for (const char* name : {"d/a-b/x.entity", "d/a.entity", "d/a/x.entity", "d/a0.ENTITY", "d/B.Mesh", "d/.h.mesh",
                             "d/.git/x.mesh", "d/readme.txt", "d/out/y.mesh", "d/folder.mesh/z.brushes"})
        Put(name, "");
    EXPECT_THAT(Found({"d"}, "d/out"), ElementsAre("d/B.Mesh", "d/a-b/x.entity", "d/a.entity", "d/a/x.entity",
                                                   "d/a0.ENTITY", "d/folder.mesh/z.brushes"));
    EXPECT_THAT(Found({"d//", "./d/a.entity", "d/a/../a0.ENTITY"}, "d/out").size(), 6u);
    EXPECT_THAT(Found({"d/.git", "d/readme.txt", "gone"}), ElementsAre("d/.git/x.mesh", "d/readme.txt", "gone!"));
}

#ifndef _WIN32
TEST_F(FilesTest, LinksAreFollowedToFilesOnly) {
    Put("far/b.entity", "");
    Put("d/a.entity", "");
    std::filesystem::create_symlink("../far", "d/folder");
    std::filesystem::create_symlink("../far/b.entity", "d/l.entity");
    std::filesystem::create_symlink("..", "d/up");
    std::filesystem::create_symlink("nowhere", "d/z.entity");
    std::filesystem::create_symlink("d", "way");
    EXPECT_THAT(Found({"d"}), ElementsAre("d/a.entity", "d/l.entity", "d/z.entity!"));
    EXPECT_THAT(Found({"way"}), ElementsAre("way/a.entity", "way/l.entity", "way/z.entity!"));
    EXPECT_THAT(Found({"d", "way", "far"}), ElementsAre("d/a.entity", "d/l.entity", "d/z.entity!", "far/b.entity"));
}

// Each entry of a folder is a file of its own, so that each gets its result; a given link is the file it leads to.
TEST_F(FilesTest, LinksWithinAFolderAreFilesOfTheirOwn) {
    Put("d/a.entity", "");
    std::filesystem::create_symlink("a.entity", "d/l.entity");
    std::filesystem::create_hard_link("d/a.entity", "d/h.entity");
    std::filesystem::create_symlink("d/a.entity", "l");
    EXPECT_THAT(Found({"d", "./d/l.entity"}), ElementsAre("d/a.entity", "d/h.entity", "d/l.entity"));
    EXPECT_THAT(Found({"d/a.entity", "l"}), ElementsAre("d/a.entity"));
    EXPECT_THAT(Found({"l", "d"}), ElementsAre("d/h.entity", "d/l.entity", "l"));
}
#endif

TEST_F(FilesTest, ListsTakeStandardInputAndNoNul) {
    Put("list", std::string("\xEF\xBB\xBF-\nd/a.entity\0d/b.entity\n", 27));
    FileSelection selection;
    selection.m_ListPath = "list";
    const FileList list = FindFiles(selection, "");
    ASSERT_EQ(list.m_Files.size(), 2u);
    EXPECT_TRUE(list.m_Files[0].IsStandardInput());
    EXPECT_THAT(list.m_Files[1].m_Error, HasSubstr("-0"));
    selection.m_Paths = {"-"};
    EXPECT_THAT(FindFiles(selection, "").m_UsageError, HasSubstr("once"));
}

TEST_F(FilesTest, ShardsAreDisjointAndTogetherEverything) {
    EXPECT_EQ(HashOfPath(""), 0xCBF29CE484222325u);
    EXPECT_EQ(HashOfPath("a"), 0xAF63DC4C8601EC8Cu);
    for (int i = 0; i < 40; ++i)
        Put("d/f" + std::to_string(i) + ".mesh", "");
    std::size_t count = 0;
    for (std::uint64_t number = 1; number <= 3; ++number) {
        FileSelection selection;
        selection.m_Paths = {"d"};
        selection.m_Shard = {number, 3};
        for (const ListedFile& file : FindFiles(selection, "").m_Files)
            EXPECT_EQ(file.m_IsInShard, HashOfPath(file.m_Path) % 3 == number - 1);
        count += FindFiles(selection, "").CountInShard();
    }
    EXPECT_EQ(count, 40u);
}

// While it is still being read, threads ask for what is known of its files.
TEST_F(FilesTest, ALargeFolderIsTheSameOnManyThreads) {
    for (int i = 0; i < 1500; ++i)
        Put("d/f" + std::to_string(i) + (i % 3 == 0 ? ".txt" : ".mesh"), std::string(static_cast<std::size_t>(i), 'x'));
    FileSelection selection;
    selection.m_Paths = {"d"};
    const FileList one = FindFiles(selection, "", 1);
    ASSERT_EQ(one.m_Files.size(), 1000u);
    for (const int jobs : {2, 5}) {
        const FileList many = FindFiles(selection, "", jobs);
        ASSERT_EQ(many.m_Files.size(), one.m_Files.size());
        for (std::size_t i = 0; i < one.m_Files.size(); ++i) {
            EXPECT_EQ(many.m_Files[i].m_Path, one.m_Files[i].m_Path);
            EXPECT_EQ(std::to_string(many.m_Files[i].m_Size),
                      one.m_Files[i].m_Path.substr(3, one.m_Files[i].m_Path.size() - 8));
            EXPECT_TRUE(many.m_Files[i].m_IsFile);
        }
    }
}

TEST_F(FilesTest, ControlCharactersAreQuoted) {
    EXPECT_EQ(PrintedPath("sp ace\xC3\xA9"), "sp ace\xC3\xA9");
    EXPECT_EQ(PrintedPath("t\tb\x01\x7F\n\"q\""), "\"t\\tb\\001\\177\\n\\\"q\\\"\"");
}

TEST_F(FilesTest, DestinationsAreJudgedBeforeAnythingIsWritten) {
    Put("a/x.entity", Example("Entity/HullFragments.entity"));
    Put("b/x.entity", Example("Entity/HullFragments.entity"));
    Put("file", "");
    Put("list", "../x.entity\n");
    struct Case {
        std::vector<std::string> arguments;
        const char* cause;
    };
    const Case cases[] = {
        {{"-o", "out", "a/x.entity", "b/x.entity"}, "would both become out/x.entity"},
        {{"-o", "out", "a", "b", "--shard", "1/50"}, "would both become out/x.entity"},
        {{"-o", "a", "a"}, "use -i"},
        {{"-o", "a/", "./a"}, "use -i"},
        {{"-o", "file", "a"}, "file is a file"},
        {{"-o", "-", "a/x.entity", "b/x.entity"}, "standard output"},
        {{"-o", "out", "--files-from", "list"}, "leaves the working folder"},
    };
    for (const Case& row : cases) {
        std::vector<std::string> arguments = {"convert", "--to", "bin"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const Run run = Corvid(arguments);
        EXPECT_EQ(run.m_Status, kExitCouldNotRun) << row.cause;
        EXPECT_THAT(run.m_Err, HasSubstr(row.cause));
    }
    EXPECT_FALSE(Exists("out"));
    Put("list", "a/x.entity\r\na/../b/x.entity\r\n");
    EXPECT_EQ(Corvid({"convert", "--to", "bin", "-o", "out", "--files-from", "list"}).m_Status, kExitDone);
    EXPECT_TRUE(Exists("out/a/x.entity") && Exists("out/b/x.entity"));
    EXPECT_EQ(Corvid({"convert", "--to", "bin", "-o", "one", "a/x.entity", "./a/x.entity"}).m_Status, kExitDone);
    EXPECT_TRUE(std::filesystem::is_regular_file("one")); // there is one file, however often it is named
}

} // namespace Corvid

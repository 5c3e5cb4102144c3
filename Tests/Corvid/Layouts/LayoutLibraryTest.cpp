#include "Engine/Layout/LayoutLibrary.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "Kinds/BuiltInLayouts.h"
#include "Tests/Support/WorkingFolder.h"

namespace Corvid {

namespace {

void Write(const std::string& path, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

std::string Quest(const std::string& label) {
    return "layout 1\nentity Quest\n\t" + label + " int\n";
}

TEST(LayoutLibrary, TheFirstFolderThatHasAFileGivesIt) {
    const WorkingFolder folder;
    Write("a/Buff.layout", "layout 1\nentity Buff\n\tx flot\n");
    Write("b/Quest.layout", Quest("b"));
    Write("b/Buff.layout", "layout 1\nentity Buff\n");
    Write("c/Quest.layout", Quest("c"));
    Write("c/Player.layout", Quest("c"));
    Write("./Evil.layout", "layout 1\nentity Evil\n");
    const LayoutLibrary library({u"a", u"missing", u"b", u"c/"}, BuiltInBlocks);

    const auto quest = library.Find("Quest");
    ASSERT_TRUE(quest != nullptr && quest->m_Plan != nullptr);
    EXPECT_EQ(quest->m_Path, u"b/Quest.layout");
    EXPECT_EQ(quest->m_Plan->GetLayout()[0].m_Label, "b");
    EXPECT_EQ(library.Find("Quest"), quest);

    const auto buff = library.Find("Buff"); // a wrong one is not passed over
    ASSERT_NE(buff, nullptr);
    EXPECT_EQ(buff->m_Plan, nullptr);
    EXPECT_EQ(buff->m_Errors[0].m_Line, 3);

    const auto player = library.Find("Player"); // what a file is for, it says itself
    ASSERT_NE(player, nullptr);
    EXPECT_EQ(player->m_Plan, nullptr);

    EXPECT_EQ(library.Find("Squad"), nullptr);
    EXPECT_EQ(library.Find("../Evil"), nullptr);
    EXPECT_EQ(library.Find(""), nullptr);
}

} // namespace

} // namespace Corvid

#include "Recast/SaveGameCopy.h"

#include <gtest/gtest.h>

#include <string>

#include "Engine/String/Unicode.h"
#include "Tests/Recast/ProgramFixture.h"

namespace Corvid {
namespace {

using SaveGameCopyTest = ProgramFixture;

TEST_F(SaveGameCopyTest, OnlyTheByteAtOffset4Changes) {
    std::string large;
    for (int i = 0; i < 700'001; ++i)
        large.push_back(static_cast<char>(i * 31 >> 3));
    const std::pair<std::string, std::string> kCases[] = {
        {"", {"\0\0\0\0(", 5}},
        {"\r", {"\r\0\0\0(", 5}},
        {"12", {"12\0\0(", 5}},
        {"123", {"123\0(", 5}},
        {"1234", "1234("},
        {"BIN\n5", "BIN\n("},
        {"BIN\n(6", "BIN\n(6"},
        {{"TXT\n\0\xFF\x1A\r\n\0", 10}, {"TXT\n(\xFF\x1A\r\n\0", 10}},
        {large, large.substr(0, 4) + '(' + large.substr(5)},
    };
    for (const auto& [source, copy] : kCases) {
        for (const std::u16string destination : {u"b", u"new", u"a", u"./a", u"hard"}) {
            m_Folder.Put("a", source);
            m_Folder.Put("b", "something longer than most of the sources");
            std::filesystem::remove("new");
            std::filesystem::remove("hard");
            std::filesystem::create_hard_link("a", "hard");
            EXPECT_EQ(Convert({u"saveGame", u"a", destination, u"txt"}), "");
            EXPECT_TRUE(m_Folder.Get(ToUtf8(destination)) == copy) << source.size() << ToUtf8(destination);
        }
    }
}

} // namespace
} // namespace Corvid

#include "Engine/File/PathParts.h"

#include <gtest/gtest.h>

#include "Engine/String/Unicode.h"

namespace Corvid {
namespace {

TEST(PathPartsTest, PathsAreSplitAlikeOnEverySystem) {
    struct Case {
        const char16_t* drive;
        const char16_t* folder;
        const char16_t* name;
        const char16_t* extension;
    };
    const Case kCases[] = {
        // put together, they are the path
        {u"", u"", u"", u""},
        {u"", u"", u"ship", u""},
        {u"", u"", u"ship", u".mesh"},
        {u"", u"", u"ship", u"."},
        {u"", u"", u"ship.old", u".mesh"},
        {u"", u"", u"", u".hidden"},
        {u"", u"", u".", u"."},
        {u"", u"/", u"ship", u".mesh"},
        {u"", u"a/b\\c/", u"ship", u".mesh"},
        {u"", u"a.b\\c.d/", u"ship", u""},
        {u"", u"a/", u"", u""},
        {u"", u"..\\", u"ship", u".x"},
        {u"C:", u"", u"ship", u".mesh"},
        {u"C:", u"\\a\\", u"ship", u".mesh"},
        {u"C:", u"", u"", u""},
        {u"", u"\\\\server\\share\\", u"ship", u".x"},
        {u"", u"a/", u"b:c", u".x"},
        {u"\u8266:", u"\u8266/", u"\U0001F680", u".\u8266"},
    };
    for (const Case& row : kCases) {
        const std::u16string path = std::u16string(row.drive) + row.folder + row.name + row.extension;
        const PathParts parts = SplitPath(path);
        EXPECT_EQ(parts.m_Drive, row.drive) << ToUtf8(path);
        EXPECT_EQ(parts.m_Folder, row.folder) << ToUtf8(path);
        EXPECT_EQ(parts.m_Name, row.name) << ToUtf8(path);
        EXPECT_EQ(parts.m_Extension, row.extension) << ToUtf8(path);
    }
}

} // namespace
} // namespace Corvid

#include "Engine/File/NativePath.h"

#include <gtest/gtest.h>

#include <string>

#include "Engine/File/DestinationFile.h"
#include "Engine/File/SourceFile.h"
#include "Tests/Engine/File/TemporaryFolder.h"

namespace Corvid {
namespace {

TEST(NativePathTest, KindFollowsWhatIsThere) {
    const TemporaryFolder folder;
    folder.Put("file", "");
    EXPECT_EQ(GetPathKind(folder / "file"), PathKind::File);
    EXPECT_EQ(GetPathKind(folder.GetPath().u16string()), PathKind::Folder);
    EXPECT_EQ(GetPathKind(folder / "other"), PathKind::Missing);
    EXPECT_EQ(GetPathKind(folder / "file/below"), PathKind::Missing);
    EXPECT_EQ(GetPathKind(u""), PathKind::Missing);
}

#ifndef _WIN32

TEST(NativePathTest, IllFormedBytesAreEscapedOneByOne) {
    struct Case {
        const char* native;
        const char16_t* path;
    };
    const Case kCases[] = {
        {"a/\xC3\xA9.mesh", u"a/\u00E9.mesh"},
        {"\xE2\x82\xAC\xF0\x9F\x9A\x80", u"\u20AC\U0001F680"},
        {"\xEF\xBF\xBF\xF4\x8F\xBF\xBF", u"\uFFFF\U0010FFFF"},
        {"\xFF", u"\xDCFF"},
        {"\xC3\xA9\xC3", u"\u00E9\xDCC3"},                                     // cut at the end
        {"\xE2\x82z", u"\xDCE2\xDC82z"},                                       // cut in the middle
        {"\xC0\xAF", u"\xDCC0\xDCAF"},                                         // overlong
        {"\xC1\xBF\xE0\x9F\xBF", u"\xDCC1\xDCBF\xDCE0\xDC9F\xDCBF"},           // overlong
        {"\xF0\x8F\xBF\xBF", u"\xDCF0\xDC8F\xDCBF\xDCBF"},                     // overlong
        {"\xED\xA0\xBD\xED\xBA\x80", u"\xDCED\xDCA0\xDCBD\xDCED\xDCBA\xDC80"}, // surrogates as three bytes each
        {"\xF4\x90\x80\x80", u"\xDCF4\xDC90\xDC80\xDC80"},                     // past the last code point
    };
    for (const Case& row : kCases) {
        EXPECT_EQ(PathFromNative(row.native), row.path) << row.native;
        EXPECT_EQ(NativeFromPath(row.path), row.native) << row.native;
    }
}

TEST(NativePathTest, EveryPairOfBytesInAnyCompanyRoundTrips) {
    for (const std::string company : {"", "\xC3", "\xF0\x9F", "\xED\xA0", "\xF0\x9F\x9A\x80"}) {
        for (int pair = 0; pair < 0x10000; ++pair) {
            const std::string native = company + static_cast<char>(pair >> 8) + static_cast<char>(pair & 0xFF) + "\x80";
            ASSERT_EQ(NativeFromPath(PathFromNative(native)), native) << pair;
        }
    }
    EXPECT_EQ(NativeFromPath(u"\xD800x\xDC00"), "\uFFFDx\uFFFD"); // no bytes have this form
}

TEST(NativePathTest, NamesThatAreNotUtf8OpenByTheirBytes) {
    const TemporaryFolder folder;
    const std::string name = "\xFF\xFEsh\xC3\xA9p.mesh";
    DestinationFile destination;
    ASSERT_TRUE(destination.Open(PathFromNative(folder.GetName(name))));
    EXPECT_EQ(destination.Write("ship", 4), 4u);
    EXPECT_EQ(destination.Close(), 0);
    EXPECT_EQ(folder.List(), std::set<std::string>{name});
    SourceFile source;
    EXPECT_TRUE(source.Open(PathFromNative(folder.GetName(name))));
    EXPECT_EQ(source.GetSize(), 4u);
}

#endif

} // namespace
} // namespace Corvid

#include "Engine/String/ReportText.h"

#include <gtest/gtest.h>

#include "Engine/Report/Reporter.h"
#include "Tests/Support/ReportLog.h"

namespace Corvid {
namespace {

using namespace std::string_view_literals;

TEST(ReportTextTest, MessagesReadExactlySo) {
    struct Case {
        Message message;
        std::initializer_list<ReportArgument> arguments;
        const char* text;
    };
    const Case kCases[] = {
        {Message::FailedToOpenFile, {u"a b"sv}, "Failed to Open File: 'a b'\n"},
        {Message::FailedToReadFile,
         {u"a"sv, 1, 0},
         "Failed to Read File 'a'. desired read bytes = 1, actual read bytes = 0.\n"},
        {Message::UndetectedEncoding, {u"a"sv}, "Could not detect if Archive File is Binary or Text: a"},
        {Message::MissingLabel,
         {u"a"sv, u"Count"sv, 3, "\tCountMax 3\r\n"sv},
         "Text FileArchive missing Label.\n\nFile: a\nLabel: Count\nLine Number:3\nLine Contents:\tCountMax 3\n\n"},
        {Message::UnterminatedString,
         {"x\r\n"sv, u"a"sv, -1, "n \"x\r\n"sv},
         "\" not found wrapping data string: x\n\nFileName: a\nLine #: -1\nLine Content: n \"x\n"},
        {Message::UnknownEnumWord, {u"point"sv}, "Failed to convert 'point' to an enum value.\n"},
        {Message::VersionedFileNotFound, {u"a"sv}, "a not found... New Version being created.\n"},
        {Message::VersionedFileFailedToOpen, {u"a"sv}, "a failed to open... New Version being created.\n"},
        {Message::VersionedFileOld, {u"a"sv}, "Detected old version of a... New Version being created.\n"},
        {Message::MeshNotFound, {u"a"sv}, "Could not find Mesh: a\n"},
        {Message::DataFileNotFound, {u"a"sv, u"b"sv}, "Failed to find data file 'a'. (SubPath = b)\n"},
        {Message::EntityNameTooLong, {u"a"sv}, "EntityDefName is too long: a\n"},
        {Message::UnreadLines, {u"a"sv, 2, 7, "b 1"sv}, "Unread input in 'a': 2 lines, the first is line 7: b 1\n"},
        // Arguments are no formats, and are made well-formed.
        {Message::FailedToOpenFile, {u"%s%d\xDC80\U0001F680"sv}, "Failed to Open File: '%s%d\uFFFD\U0001F680'\n"},
        {Message::UnknownEnumWord,
         {"\xFF\r\r\n\xE2\x82"sv},
         "Failed to convert '\uFFFD\r\n\uFFFD' to an enum value.\n"},
    };
    for (const Case& row : kCases) {
        ReportLog reports;
        ReportMessage(row.message, row.arguments);
        EXPECT_EQ(reports.Take(), row.text);
    }
}

TEST(ReportTextTest, ChecksNameConditionFileAndLine) {
    const char* const kFiles[] = {"Engine/Math/Matrix.h", "/build/of/Engine/source/Engine/Math/Matrix.h"};
    for (const char* file : kFiles) {
        ReportLog reports;
        ReportFailedCheck("(0 <= row) && (row < 3)", file, 20);
        EXPECT_EQ(reports.Take(), "Assertion failed: (0 <= row) && (row < 3) (Engine/Math/Matrix, line 20)\n");
    }
}

} // namespace
} // namespace Corvid

#include "Corvid/View/PageWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Corvid/Commands/View.h"
#include "Corvid/View/Base64.h"

namespace Corvid {

namespace {

using testing::HasSubstr;
using testing::Not;

constexpr PageAssets kAssets = {
    {"<head><!-- @policy@ --><!-- @style@ --></head><!-- @licence@ --><!-- @data@ --><!-- @scripts@ -->end", "00"},
    {"STYLE", "01"},
    {"SCRIPT", "02"},
    {"LIBRARY", "03"},
    {"LICENCE", "04"}};

struct Page {
    std::string m_Bytes;
    std::uint64_t m_Size = 0;
    bool m_IsTooLarge = false;
};

Page WritePage(const std::vector<ViewEntry>& entries, std::uint64_t maxSize = 1 << 20) {
    Page page;
    PageWriter writer(kAssets, maxSize, [&](std::string_view bytes) {
        page.m_Bytes += bytes;
        return true;
    });
    for (const ViewEntry& entry : entries)
        writer.Add(entry);
    writer.Finish();
    page.m_Size = writer.GetSize();
    page.m_IsTooLarge = writer.IsTooLarge();
    return page;
}

ViewEntry BrushEntry(std::string values) {
    ViewEntry entry;
    entry.m_Path = "a.brushes";
    entry.m_Kind = "brushes";
    entry.m_Values = std::move(values);
    return entry;
}

} // namespace

TEST(PageWriterTest, NothingOfAFileIsMarkup) {
    ViewEntry entry = BrushEntry(R"json({"brush":[{"name":"</script><!-- <script>alert(1)"}]})json");
    entry.m_Path = "</script><img src=x>\xFF.brushes";
    DiagnosticLog log;
    log.Add(DiagnosticCode::BadValue, DiagnosticPlace::AtLine(3, 4), "<b>", "<!-- here");
    AddDiagnostics(entry, log);
    const std::string page = WritePage({entry}).m_Bytes;
    EXPECT_THAT(page, HasSubstr(R"json("name":"\u003c/script>\u003c!-- \u003cscript>alert(1)")json"));
    EXPECT_THAT(page, HasSubstr("\"file\":\"\\u003c/script>\\u003cimg src=x>\xEF\xBF\xBD.brushes\""));
    EXPECT_THAT(page, HasSubstr(R"("place":"3:4","field":"\u003cb>","message":"\u003c!-- here")"));
    for (const char* markup : {"<img", "<b>", "<!--", "<script>alert"})
        EXPECT_THAT(page, Not(HasSubstr(markup)));
}

TEST(PageWriterTest, TellsItsOwnSize) {
    const Page page = WritePage({BrushEntry("{}"), BrushEntry("{}")});
    EXPECT_EQ(page.m_Bytes.size(), page.m_Size);
    const std::string text = std::to_string(page.m_Size);
    EXPECT_THAT(page.m_Bytes, HasSubstr("\"pageBytes\":" + std::string(20 - text.size(), ' ') + text + ","));
}

TEST(PageWriterTest, AboveTheMostItCountsOnAndWritesNothingMore) {
    const std::uint64_t whole = WritePage({BrushEntry(std::string(5000, ' ') + "{}")}).m_Size;
    EXPECT_FALSE(WritePage({BrushEntry(std::string(5000, ' ') + "{}")}, whole).m_IsTooLarge);
    const Page page = WritePage({BrushEntry(std::string(5000, ' ') + "{}")}, whole - 1);
    EXPECT_TRUE(page.m_IsTooLarge);
    EXPECT_EQ(page.m_Size, whole);
    EXPECT_LT(page.m_Bytes.size(), whole);
}

TEST(PageWriterTest, TheLibraryComesWithMeshesOnly) {
    EXPECT_THAT(WritePage({BrushEntry("{}")}).m_Bytes, Not(HasSubstr("LIBRARY")));
    ViewEntry mesh;
    mesh.m_Model = "glTF";
    mesh.m_VertexLists = "[]";
    const std::string page = WritePage({mesh}).m_Bytes;
    EXPECT_THAT(page, HasSubstr("<script>LIBRARY</script>"));
    EXPECT_THAT(page, HasSubstr("<script id=\"model-0\" type=\"model/gltf-binary\">Z2xURg==</script>"));
    EXPECT_THAT(page, HasSubstr("script-src 'sha256-Ag==' 'sha256-Aw=='; style-src 'sha256-AQ=='"));
}

TEST(Base64Test, PadsTheLastGroup) {
    struct Case {
        std::string m_Bytes, m_Text;
    };
    for (const Case& row :
         {Case{"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {{"\0\xFF\x10\x80", 4}, "AP8QgA=="}})
        EXPECT_EQ(ToBase64(row.m_Bytes), row.m_Text);
}

TEST(ViewTest, SizesHaveTwoUnits) {
    struct Case {
        const char* m_Text;
        std::optional<std::uint64_t> m_Size;
    };
    for (const Case& row : {Case{"1", 1},
                            {"200M", 200u << 20},
                            {"3K", 3072},
                            {"3k", 3072},
                            {"0", {}},
                            {"", {}},
                            {"K", {}},
                            {"-1", {}},
                            {"1.5M", {}},
                            {"1G", {}},
                            {"1MB", {}},
                            {"99999999999999999M", {}}})
        EXPECT_EQ(SizeFromText(row.m_Text), row.m_Size) << row.m_Text;
}

} // namespace Corvid

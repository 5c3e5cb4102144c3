#include "Corvid/Load/StreamedLoad.h"

#include <algorithm>

#include "Tests/Corvid/Program/ProgramFixture.h"

namespace Corvid {

using StreamedLoadTest = ProgramFixture;

namespace {

// Larger than any window of the input.
std::string LargeMesh(ArchiveFormat format) {
    MeshObject object;
    object.m_Data.m_Vertices.SetSize(6'000);
    std::fill(object.m_Data.m_Vertices.begin(), object.m_Data.m_Vertices.end(), MeshVertex{});
    object.m_Data.m_Materials.SetSize(1);
    return SaveToBytes(object, format, FloatPrecision::Exact).value();
}

} // namespace

// What is streamed is what is sound; the rest is left to the way that explains, wherever in the file it stands.
TEST_F(StreamedLoadTest, TakesWhatIsSoundAndGivesTheSame) {
    const std::string text = LargeMesh(ArchiveFormat::Text);
    const std::string binary = LargeMesh(ArchiveFormat::Binary);
    ASSERT_GT(binary.size(), InputStream::kWindowSize);
    const auto edited = [](std::string bytes, std::size_t at, std::size_t count, const std::string& with) {
        return bytes.replace(at, count, with);
    };
    const std::size_t name = text.find("DiffuseTextureFileName");
    const std::size_t string = text.find('"', name) + 1;
    const std::size_t last = text.rfind("\tNormal");
    const struct {
        const char* m_What;
        std::string m_Bytes;
        bool m_IsStreamed;
    } rows[] = {
        {"text", text, true},
        {"binary", binary, true},
        {"letters beyond ASCII", edited(text, string, 0, "\xC3\xA4\xE2\x82\xAC"), true},
        {"ill-formed bytes", edited(text, string, 0, "\xC3"), false},
        {"a NUL behind a value", edited(text, text.find("\r\n", last), 0, std::string(1, '\0')), false},
        {"a line that is too long", edited(text, string, 0, std::string(5'000, 'a')), false},
        {"a misspelt label", edited(text, last + 1, 1, "n"), false},
        {"another first label", edited(text, text.find("MeshData"), 4, "mash"), false},
        {"a lost end", text.substr(0, last), false},
        {"more than is asked for", text + "more", false},
        {"a cut binary", binary.substr(0, binary.size() - 1), false},
        {"no archive", std::string(300'000, 'x'), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.m_What);
        Put("large.mesh", row.m_Bytes);
        const std::optional<LoadedFile> streamed = LoadStreamed(u"large.mesh", {});
        const LoadedFile whole = LoadFromBytes(row.m_Bytes, u"large.mesh", {});
        EXPECT_EQ(whole.m_Log.IsEmpty(), row.m_IsStreamed);
        ASSERT_EQ(streamed.has_value(), row.m_IsStreamed);
        if (!streamed)
            continue;
        EXPECT_EQ(streamed->m_Size, row.m_Bytes.size());
        EXPECT_EQ(streamed->m_Encoding, whole.m_Encoding);
        EXPECT_TRUE(SaveToBytes(*streamed->m_Object, ArchiveFormat::Binary, FloatPrecision::Exact) ==
                    SaveToBytes(*whole.m_Object, ArchiveFormat::Binary, FloatPrecision::Exact));
    }
}

TEST_F(StreamedLoadTest, StringsThatTextCannotHoldAreForTheWayThatExplains) {
    MeshObject object;
    object.m_Data.m_Vertices.SetSize(0);
    object.m_Data.m_Materials.SetSize(1);
    object.m_Data.m_Materials[0].m_DiffuseTextureFileName = u"a\"b";
    Put("quote.mesh", SaveToBytes(object, ArchiveFormat::Binary, FloatPrecision::Exact).value());
    LoadOptions options;
    EXPECT_TRUE(LoadStreamed(u"quote.mesh", options).has_value());
    options.m_IsForText = true;
    EXPECT_FALSE(LoadStreamed(u"quote.mesh", options).has_value());
}

} // namespace Corvid

#include "Corvid/Content/ReferenceIndex.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "Tests/Support/CorvidRun.h"
#include "Tests/Support/WorkingFolder.h"

namespace Corvid {
namespace {

TEST(ReferenceIndex, NamesAreFoundWithoutCaseFolderOrUsualExtension) {
    ReferenceIndex index;
    for (const char16_t* name :
         {u"Hull-DA.dds", u"glow.TGA", u"Turret.mesh", u"Flame.v2.png", u"\u00C4rger.dds", u"NoExtension"})
        index.Add(name);
    struct Case {
        const char16_t* name;
        AssetKind asset;
        bool has;
    };
    const Case kCases[] = {
        {u"hull-da.DDS", AssetKind::Texture, true},
        {u"hull-da", AssetKind::Texture, true},
        {u"Textures\\Hull-da.dds", AssetKind::Texture, true},
        {u"C:/art/Hull-da", AssetKind::Texture, true},
        {u"hull-da.tga", AssetKind::Texture, false}, // an extension that is given counts
        {u"Glow", AssetKind::Texture, true},
        {u"glow", AssetKind::Mesh, false},
        {u"turret", AssetKind::Mesh, true},
        {u"turret", AssetKind::Texture, false},
        {u"Flame.v2", AssetKind::Texture, false}, // ".v2" is its extension
        {u"\u00E4rger", AssetKind::Texture, true},
        {u"noextension", AssetKind::Definition, true},
        {u"gone.texanim", AssetKind::TextureAnimation, false},
    };
    for (const Case& c : kCases)
        EXPECT_EQ(index.Has(c.name, c.asset), c.has) << testing::PrintToString(std::u16string(c.name));
}

TEST(ReferenceIndex, CheckReportsWhatIsMissing) {
    const WorkingFolder folder;
    std::filesystem::create_directories("assets/Textures");
    WriteFile("assets/Textures/panels.TGA", "");
    WriteFile("a.brushes",
              "TXT\nonlyLoadOnDemand FALSE\nbrushCount 3\n"
              "brush\n\tname \"x\"\n\tcontent \"Simple\"\n\tfileName \"Panels\"\n\tpixelBox [ 0 , 0 , 8 , 8 ]\n"
              "brush\n\tname \"y\"\n\tcontent \"Simple\"\n\tfileName \"Gone.tga\"\n\tpixelBox [ 0 , 0 , 8 , 8 ]\n"
              "brush\n\tname \"z\"\n\tcontent \"Simple\"\n\tfileName \"\"\n\tpixelBox [ 0 , 0 , 8 , 8 ]\n");
    EXPECT_EQ(CorvidRun({"check", "a.brushes"}).m_Output, "");
    const CorvidRun run({"check", "--references", "assets", "a.brushes"});
    EXPECT_EQ(run.m_Status, 0);
    EXPECT_EQ(run.m_Output,
              "a.brushes: warning: brush[1].fileName: no texture \"Gone.tga\" is there [missing-reference]\n");
    EXPECT_EQ(CorvidRun({"check", "--strict", "--references", "assets", "a.brushes"}).m_Status, 1);
    const CorvidRun gone({"check", "--references", "gone", "a.brushes"});
    EXPECT_EQ(gone.m_Status, 2);
    EXPECT_NE(gone.m_Errors.find("gone: error: "), std::string::npos) << gone.m_Errors;
}

} // namespace
} // namespace Corvid

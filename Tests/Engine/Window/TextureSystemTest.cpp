#include "Engine/Render/TextureSystem.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "Tests/Support/ReportLog.h"

namespace Corvid {
namespace {

TEST(TextureSystemTest, ReferencesAreCountedAndReturnedOnce) {
    TextureSystem textures;
    const auto expectCounts = [&](std::size_t textureCount, std::size_t referenceCount, const char* after) {
        EXPECT_EQ(textures.GetTextureCount(), textureCount) << after;
        EXPECT_EQ(textures.GetReferenceCount(), referenceCount) << after;
    };
    {
        TextureReference first = textures.Acquire(u"Hull.tga");
        TextureReference second = textures.Acquire(u"Hull.tga");
        expectCounts(1, 2, "acquiring a name twice");
        TextureReference other = textures.Acquire(u"hull.tga");
        const TextureReference copy = other;
        expectCounts(2, 4, "acquiring another name and copying");
        other = first;
        expectCounts(2, 4, "assigning over one of two references");
        second = std::move(first);
        expectCounts(2, 3, "moving over a reference");
        const TextureReference& same = second;
        second = same;
        expectCounts(2, 3, "assigning to itself");
        second.Return();
        second.Return();
        expectCounts(2, 2, "returning twice");
        EXPECT_EQ(std::u16string(second.GetName()), u"");
    }
    expectCounts(0, 0, "the end");
}

TEST(TextureSystemTest, TexturesCompareByExactName) {
    TextureSystem textures;
    TextureSystem otherTextures;
    const TextureReference none;
    EXPECT_EQ(textures.Acquire(u""), none);
    EXPECT_EQ(textures.Acquire(u"a"), otherTextures.Acquire(u"a"));
    EXPECT_FALSE(textures.Acquire(u"a") == textures.Acquire(u"A"));
    EXPECT_FALSE(textures.Acquire(u"a/b") == textures.Acquire(u"a\\b"));
    EXPECT_FALSE(textures.Acquire(u"a") == none);
}

TEST(TextureSystemTest, RecordsAcquireFromTheInnermostScope) {
    ReportLog reports;
    EXPECT_EQ(AcquireTexture(u"a"), TextureReference());
    EXPECT_EQ(reports.Count("textureSystem != NULL"), 1);
    reports.Take();

    TextureSystem outer;
    TextureSystem inner;
    const TextureScope outerScope(outer);
    TextureReference fromInner;
    {
        const TextureScope innerScope(inner);
        fromInner = AcquireTexture(u"a");
    }
    const TextureReference fromOuter = AcquireTexture(u"a");
    EXPECT_EQ(inner.GetReferenceCount(), 1u);
    EXPECT_EQ(outer.GetReferenceCount(), 1u);
    EXPECT_EQ(reports.Take(), "");
}

TEST(TextureSystemTest, WorkingDirectoryIsCopiedWithinBounds) {
    ReportLog reports;
    TextureSystem::SetWorkingDirectory(std::u16string(255, u'd').c_str());
    TextureSystem::SetWorkingDirectory(TextureSystem::GetWorkingDirectory());
    EXPECT_EQ(reports.Take(), "");
    TextureSystem::SetWorkingDirectory(std::u16string(256, u'e').c_str());
    EXPECT_EQ(TextureSystem::GetWorkingDirectory(), std::u16string(255, u'e'));
    EXPECT_EQ(reports.Count("GetLength( source ) < destination.m_BufferSize"), 1);
    TextureSystem::SetWorkingDirectory(u"");
}

} // namespace
} // namespace Corvid

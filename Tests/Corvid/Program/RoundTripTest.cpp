#include <gtest/gtest.h>

#include "Corvid/Load/LoadedFile.h"
#include "Tests/Corvid/Program/RandomArchive.h"

namespace Corvid {

namespace {

std::string SaveOrFail(const KindObject& object, ArchiveFormat format) {
    const std::optional<std::string> bytes = SaveToBytes(object, format, FloatPrecision::Exact);
    EXPECT_TRUE(bytes.has_value());
    return bytes.value_or("");
}

// Loads without a complaint, and saves again in either encoding.
std::string Convert(const std::string& bytes, Kind kind, ArchiveFormat format) {
    LoadOptions options;
    options.m_Kind = kind;
    const LoadedFile file = LoadFromBytes(bytes, u"random", options);
    for (const Diagnostic& diagnostic : file.m_Log.GetAll())
        ADD_FAILURE() << diagnostic.m_Place.m_Line << ": " << diagnostic.m_Field << ": " << diagnostic.m_Message;
    if (file.m_Object == nullptr) {
        ADD_FAILURE() << "no object";
        return {};
    }
    return SaveOrFail(*file.m_Object, format);
}

} // namespace

// text -> binary -> text and binary -> text -> binary give the same bytes, whatever the object holds.
TEST(RoundTripTest, RandomObjectsComeBackBitByBit) {
    constexpr std::uint32_t kSeeds = 60;
    const std::uint32_t first = std::random_device()() % 1'000'000;
    for (const Kind kind : kKinds) {
        for (std::uint32_t seed = first; seed < first + kSeeds && !::testing::Test::HasFailure(); ++seed) {
            SCOPED_TRACE(std::string(WordOf(kind)) + ", seed " + std::to_string(seed));
            RandomArchive archive(seed);
            const std::unique_ptr<KindObject> object = CreateKindObject(kind, u"random");
            object->Load(archive);
            object->Finish();
            const std::string text = SaveOrFail(*object, ArchiveFormat::Text);
            const std::string binary = Convert(text, kind, ArchiveFormat::Binary);
            EXPECT_EQ(Convert(binary, kind, ArchiveFormat::Text), text);
            EXPECT_EQ(Convert(Convert(binary, kind, ArchiveFormat::Text), kind, ArchiveFormat::Binary), binary);
        }
    }
}

} // namespace Corvid

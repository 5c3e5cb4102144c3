#include "Corvid/Load/LoadedFile.h"
#include "Engine/String/Unicode.h"
#include "Recast/Program.h"
#include "Tests/Corvid/Program/ProgramFixture.h"
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

// With six decimals, corvid writes what recast writes: from the examples, and from random objects in both encodings.
class SixDecimalsTest : public ProgramFixture {
protected:
    struct NoOutput final : TextSink {
        void WriteText(std::string_view) override {}
    };

    static void ExpectSame(Kind kind, const std::string& bytes, const std::string& what) {
        const std::string source = "source." + std::string(WordOf(kind));
        Put(source, bytes);
        for (const char* const format : {"txt", "bin"}) {
            const std::u16string type = ToUtf16(WordOf(kind));
            const std::u16string from = ToUtf16(source);
            const std::u16string to = ToUtf16(format);
            const char16_t* const arguments[] = {u"recast", type.c_str(), from.c_str(), u"recast-made", to.c_str()};
            NoOutput ignored;
            RunProgram(arguments, ignored);
            const Run run =
                Corvid({"convert", "--to", format, "--floats", "six", "--allow-loss", "-o", "corvid-made", source});
            EXPECT_EQ(run.m_Status, kExitDone) << run.m_Err;
            EXPECT_TRUE(Get("recast-made") == Get("corvid-made")) << what << " into " << format;
            std::filesystem::remove("recast-made");
            std::filesystem::remove("corvid-made");
        }
    }
};

TEST_F(SixDecimalsTest, ExamplesAndRandomObjectsAreTheSameAsOfRecast) {
    for (const char* const name : {"Mesh/cube.mesh", "Mesh/cube-binary.mesh", "Particle/ReactorBlast.particle",
                                   "Particle/ReactorBlastBinary.particle", "Brushes/ConsolePanels.brushes",
                                   "Brushes/Portraits.brushes", "Entity/HullFragments.entity",
                                   "Entity/IceShards.entity", "Entity/OutpostRaid.entity", "Entity/PatrolWing.entity"})
        ExpectSame(*KindFromFileName(ToUtf16(name)), Example(name), name);
    const std::uint32_t first = std::random_device()() % 1'000'000;
    for (const Kind kind : kKinds) {
        for (std::uint32_t seed = first; seed < first + 20 && !::testing::Test::HasFailure(); ++seed) {
            RandomArchive archive(seed);
            const std::unique_ptr<KindObject> object = CreateKindObject(kind, u"random");
            object->Load(archive);
            object->Finish();
            for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary})
                ExpectSame(kind, SaveOrFail(*object, format), "seed " + std::to_string(seed));
        }
    }
}

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

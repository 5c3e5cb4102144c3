#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

#include "Engine/Layout/DescribedRecord.h"
#include "Engine/Layout/LayoutLister.h"
#include "Engine/Layout/LayoutParser.h"
#include "Engine/Layout/LayoutText.h"
#include "Engine/Render/TextureSystem.h"
#include "GS/Entity/EntityTypeTable.h"
#include "Kinds/BuiltInLayouts.h"
#include "Kinds/KindObject.h"
#include "Tests/Support/ArchiveFixture.h"
#include "Tests/Support/RandomValues.h"

namespace Corvid {

namespace {

class CompiledRecord : public Archivable {
public:
    virtual ~CompiledRecord() = default;
};

// Something compiled and its layout: the fields of a kind of file, or what stands behind an entity's type word.
struct Compiled {
    std::string m_Name;
    std::function<std::unique_ptr<CompiledRecord>()> m_Create;
    Layout m_Layout;
};

class KindRecord final : public CompiledRecord {
public:
    explicit KindRecord(Kind kind) : m_Object(CreateKindObject(kind, u"")) {}
    void Load(Archive& archive) override { m_Object->Load(archive); }
    void Save(Archive& archive) const override { m_Object->Save(archive); }

    std::unique_ptr<KindObject> m_Object;
};

class EntityRecord final : public CompiledRecord {
public:
    explicit EntityRecord(EntityType type) : m_Definition(CreateEntityDef(type, EntityDefName())) {}
    void Load(Archive& archive) override { m_Definition->Load(archive); }
    void Save(Archive& archive) const override { m_Definition->Save(archive); }

private:
    std::unique_ptr<EntityDef> m_Definition;
};

std::vector<Compiled> AllCompiled() {
    std::vector<Compiled> all;
    for (const Kind kind : {Kind::Mesh, Kind::Particle, Kind::Brushes}) {
        const std::string name(WordOf(kind));
        all.push_back(
            {name, [kind] { return std::make_unique<KindRecord>(kind); }, LayoutOf(name, *KindRecord(kind).m_Object)});
    }
    for (int value = 0; value < kEntityTypeCount; ++value) {
        const auto type = static_cast<EntityType>(value);
        if (auto layout = BuiltInLayout(type))
            all.push_back({layout->GetName(), [type] { return std::make_unique<EntityRecord>(type); }, *layout});
    }
    return all;
}

class CompiledRecordsTest : public ArchiveFixture {
protected:
    std::string Convert(const std::string& file, ArchiveFormat format, Archivable& record) {
        Load(file, record);
        return Save(format, record);
    }

    // The interpreter and the compiled code, over the same file.
    void ExpectSame(const Compiled& compiled, const std::string& file) {
        const auto plan = std::make_shared<RecordPlan>(compiled.m_Layout);
        for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
            const std::string expected = Convert(file, format, *compiled.m_Create());
            const std::string reports = m_Reports.Take();
            DescribedRecord record(plan);
            EXPECT_EQ(Convert(file, format, record), expected);
            EXPECT_EQ(m_Reports.Take(), reports);
        }
    }

    TextureSystem m_Textures;
    TextureScope m_TextureScope{m_Textures};
};

TEST_F(CompiledRecordsTest, RandomFilesConvertAlike) {
    for (const Compiled& compiled : AllCompiled()) {
        for (std::uint32_t seed = 1; seed <= 20; ++seed) {
            SCOPED_TRACE(compiled.m_Name + ", seed " + std::to_string(seed));
            const auto write = [&](FileArchive& archive) { RandomValues(compiled.m_Layout, seed).Write(archive); };
            for (const ArchiveFormat format : {ArchiveFormat::Text, ArchiveFormat::Binary}) {
                // What the compiled code derives while it loads or saves is derived then.
                const auto record = compiled.m_Create();
                const std::string settled = Convert(SaveWith(format, write), format, *record);
                EXPECT_EQ(m_Reports.Take(), "");
                ExpectSame(compiled, settled);
            }
        }
    }
}

TEST_F(CompiledRecordsTest, ExamplesConvertAlike) {
    int count = 0;
    const std::filesystem::path folder(CORVID_SOURCE_FOLDER "/Examples");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        const auto kind = KindFromFileName(entry.path().u16string());
        if (!kind || *kind == Kind::Entity)
            continue;
        SCOPED_TRACE(entry.path().string());
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string file{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        for (const Compiled& compiled : AllCompiled()) {
            if (compiled.m_Name != WordOf(*kind))
                continue;
            const auto record = compiled.m_Create();
            ExpectSame(compiled, Convert(file, ArchiveFormat::Text, *record));
            ++count;
        }
    }
    EXPECT_GE(count, 5);
}

// Every layout that the program knows can be written down and read again.
TEST_F(CompiledRecordsTest, LayoutsComeBackFromText) {
    for (const Compiled& compiled : AllCompiled()) {
        SCOPED_TRACE(compiled.m_Name);
        const std::string text = WriteLayoutText(compiled.m_Layout, BuiltInBlocks());
        const ParsedLayout parsed = ParseLayout(text, BuiltInBlocks());
        ASSERT_TRUE(parsed.m_Layout) << text;
        EXPECT_EQ(WriteLayoutText(*parsed.m_Layout, BuiltInBlocks()), text);

        // Spelled out without blocks it describes the same files.
        const ParsedLayout spelled = ParseLayout(WriteLayoutText(compiled.m_Layout, LayoutBlocks()), LayoutBlocks());
        ASSERT_TRUE(spelled.m_Layout);
        const auto write = [&](FileArchive& archive) { RandomValues(compiled.m_Layout, 7).Write(archive); };
        const std::string file = SaveWith(ArchiveFormat::Binary, write);
        DescribedRecord record(std::make_shared<RecordPlan>(*spelled.m_Layout));
        EXPECT_EQ(Convert(file, ArchiveFormat::Binary, record), file);
        EXPECT_EQ(m_Reports.Take(), "");
    }
}

} // namespace

} // namespace Corvid

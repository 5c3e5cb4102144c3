// MakeSeeds folder: fills a folder with the seeds of every fuzz target, made from default records, and with a
// dictionary of all labels and words, taken from what those records are saved as:
//     <folder>/<Kind>/<name>.txt and .bin, <folder>/labels.dict
// Only the outlines below name labels by hand: the counts and type words that bring the other records into being.

#include <cstdio>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "Engine/String/Unicode.h"
#include "Fuzz/Archives.h"
#include "GS/Entity/EntityTypeTable.h"

namespace Corvid::Fuzz {

namespace {

// By the names of the fuzz targets, in the order of the kinds.
constexpr const char* kFolders[] = {"Mesh", "Particle", "Brushes", "Entity"};

class SeedFolder {
public:
    explicit SeedFolder(std::filesystem::path path) : m_Path(std::move(path)) {}

    // The record that the outline brings into being, all else at its default.
    void Add(Kind kind, const std::string& name, const std::string& outline) {
        const std::unique_ptr<KindObject> object = CreateObject(kind);
        Load(AsFile(outline, ArchiveFormat::Text), *object);
        if (!object->IsThere())
            return;
        const std::string text = Save(*object, ArchiveFormat::Text);
        const std::filesystem::path folder = kFolders[static_cast<std::size_t>(kind)];
        Put(folder / (name + ".txt"), text);
        Put(folder / (name + ".bin"), Save(*object, ArchiveFormat::Binary));
        TakeWords(text);
    }

    void PutDictionary() const {
        std::string dictionary;
        for (const std::string& word : m_Words)
            dictionary += "\"" + word + "\"\n";
        Put("labels.dict", dictionary);
    }

private:
    void Put(const std::filesystem::path& name, const std::string& bytes) const {
        std::filesystem::create_directories((m_Path / name).parent_path());
        std::FILE* const file = std::fopen((m_Path / name).c_str(), "wb");
        Require(file != nullptr, "seeds can be written");
        Require(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(), "seeds can be written");
        Require(std::fclose(file) == 0, "seeds can be written");
    }

    // Labels, and the words in quotes behind them, also as a binary file holds those.
    void TakeWords(std::string_view text) {
        constexpr std::string_view kBlanks = "\t\r\n ";
        for (std::size_t start = 0; start < text.size();) {
            const std::size_t end = text.find('\n', start);
            std::string_view line = text.substr(start, end - start);
            start = end + 1;
            line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
            const std::string_view label = line.substr(0, line.find_first_of(kBlanks));
            if (label.empty() || label.front() == '[' || label.front() == '\xEF')
                continue;
            m_Words.emplace(label);
            const std::size_t quote = line.find('"');
            if (quote == line.npos || line[quote + 1] == '"')
                continue;
            const std::string_view word = line.substr(quote + 1, line.rfind('"') - quote - 1);
            m_Words.insert("\\\"" + std::string(word) + "\\\"");
            std::string stored;
            AppendEscaped(stored, static_cast<unsigned>(word.size()), 4);
            for (const char c : word)
                AppendEscaped(stored, static_cast<unsigned char>(c), 2);
            m_Words.insert(stored);
        }
    }

    static void AppendEscaped(std::string& text, unsigned value, int bytes) {
        for (int i = 0; i < bytes; ++i, value >>= 8) {
            char byte[5];
            std::snprintf(byte, sizeof byte, "\\x%02X", value & 0xFF);
            text += byte;
        }
    }

    std::filesystem::path m_Path;
    std::set<std::string> m_Words;
};

void AddMeshes(SeedFolder& seeds) {
    seeds.Add(Kind::Mesh, "Empty", "MeshData\n");
    seeds.Add(Kind::Mesh, "OneOfEach",
              "MeshData\nBoundingRadius 1\nNumMaterials 1\nMaterial\nNumPoints 1\nPoint\nNumVertices 3\nVertex\n"
              "Normal [ 0 1 0 ]\nVertex\nPosition [ 1 0 0 ]\nNormal [ 1 0 0 ]\nVertex\nPosition [ 0 0 1 ]\n"
              "Normal [ 0 0 -1 ]\nNumTriangles 1\nTriangle\niVertex2 2\n");
}

template <class Type> void AddEntries(SeedFolder& seeds, const std::string& kind) {
    std::string all;
    for (const EnumWord word : EnumWords<Type>::Words) {
        const std::string name = ToUtf8(word);
        const std::string entry = kind + "Type \"" + name + "\"\n" + kind + "Contents\nName \"" + name + "\"\n";
        seeds.Add(Kind::Particle, name, "ParticleSimulation\nNum" + kind + "s 1\n" + entry);
    }
}

void AddEffects(SeedFolder& seeds) {
    AddEntries<EmitterType>(seeds, "Emitter");
    AddEntries<AffectorType>(seeds, "Affector");
    seeds.Add(Kind::Particle, "AttachedEmitter",
              "ParticleSimulation\nNumEmitters 1\nEmitterType \"Point\"\nEmitterContents\nName \"smoke\"\n"
              "NumAffectors 1\nAffectorType \"Drag\"\nAffectorContents\nnumAttachedEmitters 1\n"
              "attachedEmitterName \"smoke\"\n");
}

void AddBrushes(SeedFolder& seeds) {
    const std::string margins = "stretchMargins\nleft 1\ncontentMargins\nbottom 2\n";
    const std::string states = "Disabled\nfileName \"panel\"\nPressed\npixelBox [ 1 , 2 , 3 , 4 ]\nNormal\n";
    for (const std::string content : {"Simple", "Margins", "States", "MarginsAndStates"})
        seeds.Add(Kind::Brushes, content,
                  "brushCount 1\nbrush\nname \"" + content + "\"\ncontent \"" + content + "\"\n" +
                      (content.starts_with("Margins") ? margins : "") +
                      (content.ends_with("States") ? states : "fileName \"panel\"\n"));
}

void AddEntities(SeedFolder& seeds) {
    for (const EntityTypeRow& row : kEntityTypes)
        seeds.Add(Kind::Entity, ToUtf8(row.m_Word), "entityType \"" + ToUtf8(row.m_Word) + "\"\n");
    for (const EnumWord word : EnumWords<MissionType>::Words)
        seeds.Add(Kind::Entity, "Mission" + ToUtf8(word) + "Type",
                  "entityType \"MissionRaid\"\nmissionType \"" + ToUtf8(word) + "\"\n");
    for (const EnumWord word : EnumWords<CohesionRange>::Words)
        seeds.Add(Kind::Entity, "Cohesion" + ToUtf8(word),
                  "entityType \"Fleet\"\ndefaultCohesionRange \"" + ToUtf8(word) + "\"\n");
}

} // namespace

} // namespace Corvid::Fuzz

int main(int argumentCount, char** arguments) {
    using namespace Corvid::Fuzz;
    if (argumentCount != 2) {
        std::fputs("Usage: MakeSeeds folder\n", stderr);
        return 1;
    }
    SeedFolder seeds(arguments[1]);
    AddMeshes(seeds);
    AddEffects(seeds);
    AddBrushes(seeds);
    AddEntities(seeds);
    seeds.PutDictionary();
    return 0;
}

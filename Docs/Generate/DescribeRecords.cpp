// describe-records template output: writes the manual page of the file formats. The template's line "@RECORDS@" becomes
// the fields of every record, taken from the field lists that load and save them.
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "Docs/Generate/FieldDescriber.h"
#include "Engine/Render/Mesh/MeshData.h"
#include "Engine/Render/Particle/ColorAffectors.h"
#include "Engine/Render/Particle/MotionAffectors.h"
#include "Engine/Render/Particle/ParticleAffector_KillParticlesNearPoint.h"
#include "Engine/Render/Particle/ParticleEmitter_Point.h"
#include "Engine/Render/Particle/ParticleEmitter_Ring.h"
#include "Engine/Render/Particle/ParticleEmitter_Sphere.h"
#include "Engine/Render/Particle/ParticleSimulationDefinition.h"
#include "Engine/Render/Particle/SizeAffectors.h"
#include "Engine/Window/BrushSystem.h"
#include "GS/Entity/EntityTypeTable.h"
#include "GS/Entity/ISpaceMineDef.h"

namespace {

using namespace Corvid;

[[noreturn]] void Fail(const std::string& reason) {
    std::fprintf(stderr, "describe-records: %s\n", reason.c_str());
    std::exit(1);
}

// Describes a class of each kind; what they hold comes along.
template <class... Records> void DescribeAll(Descriptions& all, const auto&... arguments) {
    (FieldDescriber::Describe(all, Records(arguments...)), ...);
}

void AddSection(Manual& manual, Descriptions& all, const char* title, const char* introduction) {
    for (const std::string& name : all.m_Mentioned) {
        if (!all.m_Described.contains(name))
            Fail(name + " stands in files and is not described: add it to Docs/Generate/DescribeRecords.cpp");
    }
    manual.BeginSection(title);
    manual.Paragraph(introduction);
    for (const RecordTable& record : all.m_Records)
        manual.Table(record);
    all.m_Records.clear();
}

RecordTable DescribeEntityTypes(Descriptions& all) {
    RecordTable table{"EntityType", {}};
    for (const EntityTypeRow& row : kEntityTypes) {
        std::string text = "no definition, no file is written";
        if (row.m_Create != nullptr) {
            ProbeArchive archive;
            row.m_Create()->Load(archive);
            if (archive.GetValueCount() > 0)
                Fail("an entity definition has fields outside its blocks");
            text.clear();
            for (const std::string& block : archive.GetBlocks()) {
                text += text.empty() ? block : ", " + block;
                all.m_Mentioned.insert(block);
            }
            if (text.empty())
                text = "nothing";
            if (!row.m_IsLayoutSettled)
                text += "; incomplete";
        }
        table.m_Rows.push_back({Narrow(row.m_Word), text});
    }
    return table;
}

std::string DescribeEverything() {
    Manual manual;
    Descriptions all;

    DescribeAll<MeshData, ArchivableMeshVertex>(all);
    AddSection(manual, all, "MESHES",
               "A file holds one record MeshData under the label MeshData.\n"
               "The lists of vertex indices are computed anew whenever a mesh is saved.");

    DescribeAll<ParticleSimulationDefinition, ParticleEmitter_Point, ParticleEmitter_Sphere, ParticleEmitter_Ring>(all);
    const auto effect = std::make_unique<ParticleSimulationDefinition>();
    DescribeAll<ParticleAffector_ColorOscillator, ParticleAffector_Drag, ParticleAffector_Fade, ParticleAffector_Jitter,
                ParticleAffector_KillParticlesNearPoint, ParticleAffector_LinearBoundedInflate,
                ParticleAffector_LinearForceInDirection, ParticleAffector_LinearForceToPoint,
                ParticleAffector_LinearInflate, ParticleAffector_RotateAboutAxis, ParticleAffector_SizeOscillator>(
        all, *effect);
    AddSection(manual, all, "PARTICLE EFFECTS",
               "A file holds one record ParticleSimulationDefinition under the label\n"
               "ParticleSimulation.\n"
               "The classes of emitters and affectors bear the names of their types.");

    DescribeAll<BrushSystem::BrushSet>(all);
    AddSection(manual, all, "BRUSH SETS", "A file holds the fields of BrushSystem::BrushSet, without a label.");

    all.m_Records.push_back(DescribeEntityTypes(all));
    DescribeAll<IRenderDefinition, IUserInterfaceDef, IShieldDefinition, IRigidBodyDefinition, IFleetMemberDefinition,
                IOrbitBodyDefinition, IHUDDefinition, ISpaceMineDef, IDebrisDef, IMissionDefinition, IFleetDefinition,
                IFormationDefinition>(all);
    AddSection(manual, all, "ENTITY DEFINITIONS",
               "A file holds a word of EntityType under the label entityType, then the blocks\n"
               "of that type: fields that follow each other without a label of their own.\n"
               "Where the list is incomplete, files hold more than what is known here, and\n"
               "loading one is reported.");

    manual.BeginSection("WORDS");
    manual.Paragraph("The words of each enumeration, in the order of its values from 0.\n"
                     "Every enumeration has the word Invalid, too, for \\-1.");
    for (const RecordTable& words : all.m_Words)
        manual.Table(words);
    return manual.GetText();
}

std::string ReadFile(const char* path) {
    std::FILE* const file = std::fopen(path, "rb");
    if (file == nullptr)
        Fail(std::string("cannot read ") + path);
    std::string text;
    for (int character; (character = std::fgetc(file)) != EOF;)
        text.push_back(static_cast<char>(character));
    std::fclose(file);
    return text;
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 3)
        Fail("usage: describe-records template output");
    std::string page = ReadFile(arguments[1]);
    const std::string mark = "@RECORDS@\n";
    const std::size_t position = page.find(mark);
    if (position == page.npos)
        Fail(std::string(arguments[1]) + " has no line @RECORDS@");
    page.replace(position, mark.size(), DescribeEverything());

    std::FILE* const file = std::fopen(arguments[2], "wb");
    if (file == nullptr || std::fwrite(page.data(), 1, page.size(), file) != page.size() || std::fclose(file) != 0)
        Fail(std::string("cannot write ") + arguments[2]);
}

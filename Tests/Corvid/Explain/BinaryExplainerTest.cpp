#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "Tests/Corvid/Explain/ExplainFixture.h"

namespace Corvid {
namespace {

std::string BinaryOf(const std::string& example) {
    return *SaveToBytes(*LoadNamed(ReadExample(example), example).m_Object, ArchiveFormat::Binary,
                        FloatPrecision::Exact);
}

std::string WithInt(std::string bytes, std::size_t offset, std::int32_t value) {
    std::memcpy(bytes.data() + offset, &value, sizeof value);
    return bytes;
}

// Offsets into the cube: the header, three numbers, two vectors, the count of materials, the first string's length.
constexpr std::size_t kMaterialCount = 4 + 4 + 1 + 4 + 12 + 12;

// Into the panels: "Margins", behind its length.
constexpr std::size_t kMarginsWord = 151;

TEST(BinaryExplainer, EachFaultIsFoundOnceAtItsOffset) {
    const std::string cube = BinaryOf("Mesh/cube.mesh");
    const std::string hull = BinaryOf("Entity/HullFragments.entity");
    const std::string panels = BinaryOf("Brushes/ConsolePanels.brushes");
    struct Case {
        const char* m_Name;
        std::string m_Bytes;
        const char* m_File;
        const char* m_Findings;
    };
    const Case kCases[] = {
        {"Sound", cube, "a.mesh", ""},
        {"EndsWithinAVector", cube.substr(0, 20), "a.mesh", "@13 MeshData.MaxBoundingExtents [input-ends]\n"},
        {"EndsWithinAString", cube.substr(0, kMaterialCount + 20), "a.mesh",
         "@41 MeshData.Material[0].DiffuseTextureFileName [input-ends]\n"},
        {"HeaderAlone", "BIN\n", "a.entity", "@4 entityType [input-ends]\n"},
        {"BytesAreLeft", hull + "abc", "a.entity", "@56 [unread-input]\n"},
        {"NegativeCount", WithInt(cube, kMaterialCount, -1), "a.mesh", "@37 MeshData.NumMaterials [bad-count]\n"},
        {"CountBeyondTheFile", WithInt(cube, kMaterialCount, 1 << 30), "a.mesh",
         "@37 MeshData.NumMaterials [bad-count]\n"},
        {"StringTooLong", WithInt(cube, kMaterialCount + 4, 256), "a.mesh",
         "@41 MeshData.Material[0].DiffuseTextureFileName [too-long]\n"},
        {"ContentWordUnknown", WithInt(panels, kMarginsWord, 'X' | 'a' << 16), "a.brushes",
         "@147 brush[1].content [unknown-word]\n"},
        {"UnknownType", WithInt(hull, 8, 'X' | 'e' << 16), "a.entity", "@4 entityType [unknown-type]\n"},
    };
    for (const Case& each : kCases)
        EXPECT_EQ(FindingsOf(LoadNamed(each.m_Bytes, each.m_File)).substr(0, 200), each.m_Findings) << each.m_Name;
}

TEST(BinaryExplainer, CutAnywhereIsFoundOnce) {
    for (const char* example : {"Mesh/cube.mesh", "Particle/ReactorBlast.particle", "Brushes/ConsolePanels.brushes"}) {
        const std::string bytes = BinaryOf(example);
        for (std::size_t size = 4; size < bytes.size(); ++size) {
            const LoadedFile file = LoadNamed(bytes.substr(0, size), example);
            EXPECT_EQ(file.m_Log.GetAll().size(), 1u) << example << " cut to " << size << " bytes\n"
                                                      << FindingsOf(file);
        }
    }
}

TEST(BinaryExplainer, StringsThatTextCannotHoldAreFoundForText) {
    const std::string bytes = std::string("BIN\n\0\1\0\0\0\1\0\0\0", 13); // one brush with a name of one unit
    for (const char16_t unit : {u'"', u'\n', u'\r', u'\0', u'\xD800'}) {
        std::string file = bytes;
        file.append(reinterpret_cast<const char*>(&unit), 2);
        file.append("\6\0\0\0S\0i\0m\0p\0l\0e\0", 16).append(20, '\0');
        LoadOptions options;
        EXPECT_EQ(FindingsOf(LoadNamed(file, "a.brushes", options)), "") << int(unit);
        options.m_IsForText = true;
        EXPECT_EQ(FindingsOf(LoadNamed(file, "a.brushes", options)), "@9 brush[0].name [not-in-text]\n") << int(unit);
    }
}

} // namespace
} // namespace Corvid

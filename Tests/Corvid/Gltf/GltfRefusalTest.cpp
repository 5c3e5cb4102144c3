#include "Tests/Corvid/Gltf/GltfFixture.h"
#include "Tests/Corvid/Gltf/GltfText.h"
#include "Tests/Corvid/Gltf/MeshSamples.h"

namespace Corvid {
namespace {

class GltfRefusalTest : public GltfFixture {
protected:
    // A triangle with indices and a sparse accessor, its members as they should be.
    static GltfText Sound() {
        GltfText file;
        return file.Floats({0, 0, 0, 1, 0, 0, 0, 1, 0}).Data<std::uint16_t>({0, 1, 2, 1}).Floats({2, 2, 2});
    }
    static std::string Members() {
        return R"("scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"children":[1]},{"mesh":0}],)"
               R"("meshes":[{"primitives":[{"attributes":{"POSITION":0},"indices":1,"material":0}]}],"materials":[{}],)"
               R"("bufferViews":[{"buffer":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":6},)"
               R"({"buffer":0,"byteOffset":42,"byteLength":2},{"buffer":0,"byteOffset":44,"byteLength":12}],)"
               R"("accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","sparse":{"count":1,)"
               R"("indices":{"bufferView":2,"componentType":5123},"values":{"bufferView":3}}},)"
               R"({"bufferView":1,"componentType":5123,"count":3,"type":"SCALAR"}])";
    }
};

// One claim at a time that the file does not keep: a clause says which.
TEST_F(GltfRefusalTest, ClaimsAreChecked) {
    struct Case {
        const char* from;
        const char* to;
        const char* error; // a part of it; empty: nothing is wrong
    };
    const Case kCases[] = {
        {"", "", ""},
        {"\"count\":3", "\"count\":4", "3 components wanted|4 elements wanted of buffer view 0"},
        {"\"count\":3", "\"count\":18446744073709551615", "more than the file can hold"},
        {"\"bufferView\":0,\"componentType\":5126,\"count\":3", "\"componentType\":5126,\"count\":4000000000",
         "more than the file can hold"},
        {"\"bufferView\":0", "\"bufferView\":7", "no buffer view 7"},
        {"\"bufferView\":0", "\"bufferView\":-5", "no buffer view -5"},
        {"\"bufferView\":0", "\"bufferView\":0,\"byteOffset\":18446744073709551612", "elements wanted"},
        {"\"byteLength\":36", "\"byteLength\":1000", "reaches beyond its buffer"},
        {"\"byteLength\":36", "\"byteOffset\":18446744073709551615,\"byteLength\":36", "reaches beyond its buffer"},
        {"\"byteLength\":36", "\"byteLength\":36,\"byteStride\":4", "overlap"},
        {"\"buffer\":0,\"byteLength\":36", "\"buffer\":9,\"byteLength\":36", "reaches beyond its buffer"},
        {"5126", "5125999", "componentType"},
        {"5126", "5124", "not expected"},
        {"VEC3", "MAT4", "3 components wanted"},
        {"\"POSITION\":0", "\"POSITION\":2", "accessor 2: it does not exist"},
        {"\"POSITION\":0", "\"NORMAL\":0", "no positions"},
        {"\"indices\":1", "\"indices\":0", "no indices"},
        {"\"indices\":1", "\"indices\":99", "indices accessor out of bounds"},
        {"\"indices\":1,\"mat", "\"indices\":1,\"mode\":99,\"mat", "neither triangles"},
        {"\"byteOffset\":36,\"byteLength\":6", "\"byteOffset\":44,\"byteLength\":6", "0 vertices|3 vertices"},
        {"\"sparse\":{\"count\":1", "\"sparse\":{\"count\":4", "sparse"},
        {"\"sparse\":{\"count\":1", "\"sparse\":{\"count\":-1", "sparse"},
        {"\"byteOffset\":42", "\"byteOffset\":46", "sparse element 0"},
        {"\"material\":0", "\"material\":1", "no material 1"},
        {"\"mesh\":0", "\"mesh\":3", "no mesh 3"},
        {"\"children\":[1]", "\"children\":[1,1]", "reached in two ways"},
        {"\"children\":[1]", "\"children\":[0]", "reached in two ways"},
        {"\"children\":[1]", "\"children\":[-7]", "no node -7"},
        {"{\"mesh\":0}", "{\"mesh\":0,\"children\":[0]}", "reached in two ways"},
        {"\"meshes\"", "\"extensionsRequired\":[\"KHR_draco_mesh_compression\"],\"meshes\"",
         "'KHR_draco_mesh_compression'"},
        {"{\"nodes\":[0]}", "{\"nodes\":[]}", ""}, // then all nodes count
        {"\"mesh\":0", "\"skin\":0", "neither triangles nor an empty node"},
        {"\"materials\":[{}]", "\"materials\":[0]", "object"},
        {"\"materials\":[{}]", "\"materials\":[{}],\"images\":[{\"bufferView\":99}]", ""}, // nobody looks
    };
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.to);
        std::string members = Members();
        members.replace(members.find(each.from), std::strlen(each.from), each.to);
        MeshData mesh;
        const bool isImported = Import(Sound().Glb(members), mesh);
        const std::string wanted = each.error;
        const std::size_t bar = std::min(wanted.find('|'), wanted.size());
        if (wanted.empty())
            EXPECT_TRUE(isImported) << m_Error;
        else
            EXPECT_TRUE(!isImported && (m_Error.find(wanted.substr(0, bar)) != m_Error.npos ||
                                        (bar != wanted.size() && m_Error.find(wanted.substr(bar + 1)) != m_Error.npos)))
                << m_Error;
        EXPECT_EQ(m_Error.find('\n'), m_Error.npos);
    }
}

TEST_F(GltfRefusalTest, ContainersAndTexts) {
    const std::string deep = std::string(100000, '[');
    const struct {
        std::string bytes;
        const char* error;
    } kCases[] = {
        {"", "not glTF"},
        {"glTF", "header is cut off"},
        {std::string("glTF\1\0\0\0\20\0\0\0\0\0\0\0", 16), "GLB version 1"},
        {std::string("glTF\2\0\0\0\0\1\0\0\0\0\0\0", 16), "cut off: 256 bytes stated"},
        {std::string("glTF\2\0\0\0\24\0\0\0\377\377\377\377JSON", 20), "reaches beyond its end"},
        {std::string("glTF\2\0\0\0\30\0\0\0\4\0\0\0BIN\0"
                     "....",
                     24),
         "does not begin with a JSON chunk"},
        {"TXT - a mesh", "not glTF"},
        {"[]", "not glTF"},
        {"{}", "'asset.version' is missing"},
        {R"({"asset":{"version":"1.0"}})", "glTF version 1.0"},
        {R"({"asset":{"version":2}})", "'asset.version' is missing"},
        {R"({"asset":{"version":"2.0"}})", "neither triangles nor an empty node"},
        {R"({"asset":{"version":"2.0"},"extras":)" + deep, "nested too deep"},
        {R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":4}]})", "neither a URI nor a binary chunk"},
        {R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":9999,"uri":"data:application/octet-stream;base64,AAAA"}]})",
         "Failed to decode"},
        {R"({"asset":{"version":"2.0"},"buffers":[{"byteLength":1,"uri":"a.bin"},{"byteLength":1,"uri":"./a.bin"}]})",
         "each once"},
    };
    m_Neighbours["a.bin"] = "x";
    for (const auto& each : kCases) {
        SCOPED_TRACE(each.bytes.substr(0, 80));
        MeshData mesh;
        EXPECT_FALSE(Import(each.bytes, mesh));
        EXPECT_NE(m_Error.find(each.error), m_Error.npos) << m_Error;
    }
}

// A short text may not describe a large mesh: neither by repeating, nor by values that cost more than their text.
TEST_F(GltfRefusalTest, MemoryAndTimeAreBoundedByTheFile) {
    const auto repeated = [](const std::string& text, int count) {
        std::string all = text;
        for (int i = 1; i < count; ++i)
            all += "," + text;
        return all;
    };
    const auto roots = [](int count) {
        std::string all = "0";
        for (int i = 1; i < count; ++i)
            all += "," + std::to_string(i);
        return all;
    };
    GltfText file;
    for (int i = 0; i < 3000; ++i)
        file.Floats({0, 0, 0});
    const std::string accessors = R"(,"accessors":[{"bufferView":0,"componentType":5126,"count":3000,"type":"VEC3"}])";
    const std::string meshes = R"(,"meshes":[{"primitives":[{"attributes":{"POSITION":0,"NORMAL":0}}]}])";
    const struct {
        const char* name;
        std::string members;
        const char* error;
    } kCases[] = {
        {"Instances",
         R"("scenes":[{"nodes":[)" + roots(4000) + R"(]}],"nodes":[)" + repeated(R"({"mesh":0})", 4000) + "]" + meshes +
             accessors,
         "more than the file can hold"},
        {"PrimitivesThatHoldNothing",
         R"("nodes":[)" + repeated(R"({"mesh":0})", 3000) + R"(],"meshes":[{"primitives":[)" +
             repeated(R"({"attributes":{},"mode":0})", 3000) + "]}]",
         "more primitives"},
        {"Values", R"("extras":[)" + repeated("0", 900000) + "]", "more values"},
        {"Objects", R"("materials":[)" + repeated("{}", 90000) + "]", "more values"},
    };
    for (const auto& each : kCases) {
        SCOPED_TRACE(each.name);
        MeshData mesh;
        EXPECT_FALSE(Import(file.Glb(each.members), mesh));
        EXPECT_NE(m_Error.find(each.error), m_Error.npos) << m_Error;
    }
}

TEST_F(GltfRefusalTest, CutAnywhereNothingBreaks) {
    MeshMaker maker(11, MeshMaker::Numbers::AnyBits);
    MeshData sample;
    maker.Fill(sample, 5, 4, 1, 1);
    const std::string glb = Export(sample);
    std::uint32_t length = 0;
    for (std::size_t size = 0; size < glb.size(); ++size) {
        MeshData mesh;
        EXPECT_FALSE(Import(glb.substr(0, size), mesh)) << size;
        // The same with a header that tells the truth.
        std::string honest = glb.substr(0, size);
        length = static_cast<std::uint32_t>(size);
        if (size >= 12)
            std::memcpy(&honest[8], &length, 4);
        MeshData other;
        EXPECT_FALSE(Import(honest, other)) << size;
    }
}

} // namespace
} // namespace Corvid

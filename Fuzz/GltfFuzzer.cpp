// Any input is a glTF file, or the text and, behind a NUL, the binary chunk of a GLB whose lengths are right. What can
// be imported is exported, and comes back bit for bit.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "Corvid/Gltf/GltfFile.h"
#include "Corvid/Gltf/GltfToMesh.h"
#include "Corvid/Gltf/MeshToGltf.h"
#include "Tests/Corvid/Gltf/MeshSamples.h"

namespace Corvid::Fuzz {

namespace {

void Require(bool isTrue, const char* what) {
    if (isTrue)
        return;
    std::fprintf(stderr, "not so: %s\n", what);
    std::abort();
}

std::string NumberOf(std::size_t value) {
    const auto word = static_cast<std::uint32_t>(value);
    return std::string(reinterpret_cast<const char*>(&word), sizeof word);
}

std::string AsFile(std::string_view input) {
    const std::size_t end = input.find('\0');
    if (input.starts_with("glTF") || end == input.npos)
        return std::string(input);
    std::string text(input.substr(0, end));
    std::string binary(input.substr(end + 1));
    text.resize((text.size() + 3) / 4 * 4, ' ');
    binary.resize((binary.size() + 3) / 4 * 4);
    return "glTF" + NumberOf(2) + NumberOf(28 + text.size() + binary.size()) + NumberOf(text.size()) + "JSON" + text +
           NumberOf(binary.size()) + std::string("BIN\0", 4) + binary;
}

bool Import(const std::string& file, MeshData& mesh) {
    GltfDocument document;
    std::vector<std::string> leftOut;
    std::string error;
    const auto readNeighbour = [&](const std::string&) { return GltfBytes(file.begin(), file.end()); };
    const bool isMade =
        ReadGltf({reinterpret_cast<const unsigned char*>(file.data()), file.size()}, readNeighbour, document, error) &&
        TakeGltf(document, mesh, leftOut, error);
    Require(isMade == error.empty(), "what fails says why");
    Require(error.find('\n') == error.npos && error.size() < 1000, "an error is a clause");
    return isMade;
}

} // namespace

} // namespace Corvid::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace Corvid;
    using namespace Corvid::Fuzz;
    MeshData mesh;
    // A short file may bring a million vertices into being; their way back says no more than that of a few.
    constexpr int kMostForTheWayBack = 10000;
    if (!Import(AsFile({reinterpret_cast<const char*>(data), size}), mesh) ||
        mesh.m_Vertices.GetSize() > kMostForTheWayBack || mesh.m_Triangles.GetSize() > kMostForTheWayBack)
        return 0;
    std::string glb, error;
    Require(WriteGlb(MakeGltf(mesh, u"Mesh", {}), glb, error), "every mesh can be exported");
    MeshData back;
    Require(Import(glb, back), "what was exported is imported");
    Require(BytesOf(back) == BytesOf(mesh), "a mesh comes back bit for bit");
    return 0;
}

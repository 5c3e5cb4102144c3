#pragma once

#include <map>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Corvid/Gltf/GltfFile.h"
#include "Corvid/Gltf/GltfToMesh.h"
#include "Corvid/Gltf/MeshToGltf.h"

namespace Corvid {

// Files in memory: what is exported, what is imported, and what that says.
class GltfFixture : public testing::Test {
protected:
    std::string Export(const MeshData& mesh, const TextureReader& readTexture = {}) {
        std::string bytes, error;
        EXPECT_TRUE(WriteGlb(MakeGltf(mesh, u"Sample", readTexture), bytes, error)) << error;
        return bytes;
    }

    // False when the file is refused: see m_Error.
    bool Import(const std::string& bytes, MeshData& mesh) {
        GltfDocument document;
        m_Error.clear();
        m_Warnings.clear();
        const auto read = [this](const std::string& path) -> std::optional<GltfBytes> {
            const auto found = m_Neighbours.find(path);
            m_Asked.push_back(path);
            return found == m_Neighbours.end() ? std::nullopt
                                               : std::optional(GltfBytes(found->second.begin(), found->second.end()));
        };
        return ReadGltf({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()}, read, document,
                        m_Error) &&
               TakeGltf(document, mesh, m_Warnings, m_Error);
    }

    std::map<std::string, std::string> m_Neighbours; // files beside the one that is imported
    std::vector<std::string> m_Asked;                // of them
    std::vector<std::string> m_Warnings;
    std::string m_Error;
};

} // namespace Corvid

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace Corvid {

// A glTF 2.0 file as far as meshes need it, without the library that reads and writes it. Indices are as the file has
// them: whoever follows one checks it first (see GltfAccess.h).

// What travels in the extras of an object, in members of our own: texts by name.
using GltfNotes = std::map<std::string, std::string, std::less<>>;

inline constexpr int kGltfNone = -1; // an index that is not there

// The numbers are the file's.
enum class GltfComponent { Int8 = 5120, UInt8, Int16, UInt16, UInt32 = 5125, Float };
enum class GltfMode { Points, Lines, LineLoop, LineStrip, Triangles, TriangleStrip, TriangleFan };
enum class GltfTarget { None = 0, Vertices = 34962, Indices = 34963 };

struct GltfBufferView {
    int m_Buffer = 0;
    std::size_t m_Offset = 0; // bytes
    std::size_t m_Length = 0;
    std::size_t m_Stride = 0; // 0: elements follow one another
    GltfTarget m_Target = GltfTarget::None;
};

// Elements that stand in place of others.
struct GltfSparse {
    std::int64_t m_Count = 0;
    int m_IndexView = kGltfNone;
    std::int64_t m_IndexOffset = 0;
    GltfComponent m_IndexComponent = GltfComponent::UInt32;
    int m_ValueView = kGltfNone;
    std::int64_t m_ValueOffset = 0;
};

struct GltfAccessor {
    int m_View = kGltfNone; // none: zeros
    std::size_t m_Offset = 0;
    GltfComponent m_Component = GltfComponent::Float;
    int m_Width = 1; // components of an element, 1 to 4; 0 for matrices
    bool m_IsNormalized = false;
    std::size_t m_Count = 0;
    std::optional<GltfSparse> m_Sparse;
    std::vector<double> m_Min, m_Max;
};

struct GltfPrimitive {
    std::map<std::string, int> m_Attributes; // accessors by semantic
    int m_Indices = kGltfNone;
    int m_Material = kGltfNone;
    GltfMode m_Mode = GltfMode::Triangles;
    bool m_HasMorphTargets = false;
    bool m_HasExtensions = false;
    GltfNotes m_Notes;
};

struct GltfMesh {
    std::string m_Name;
    std::vector<GltfPrimitive> m_Primitives;
};

struct GltfNode {
    std::string m_Name;
    std::vector<int> m_Children;
    int m_Mesh = kGltfNone;
    std::optional<std::array<double, 16>> m_Matrix; // column by column; else the three below
    std::array<double, 3> m_Translation{0, 0, 0};
    std::array<double, 4> m_Rotation{0, 0, 0, 1}; // a quaternion, w last
    std::array<double, 3> m_Scale{1, 1, 1};
    bool m_HasObject = false; // a camera, a light, a skin: something that does not come along
    GltfNotes m_Notes;
};

struct GltfTextureUse {
    int m_Image = kGltfNone;
    int m_Set = 0;                // texture coordinates
    bool m_IsTransformed = false; // KHR_texture_transform:
    std::array<double, 2> m_Offset{0, 0};
    std::array<double, 2> m_Scale{1, 1};
    double m_Rotation = 0; // radians
};

struct GltfMaterial {
    std::string m_Name;
    std::array<double, 4> m_BaseColor{1, 1, 1, 1};
    std::array<double, 3> m_Emissive{0, 0, 0};
    double m_Metallic = 1;
    double m_Roughness = 1;
    GltfTextureUse m_BaseColorTexture;
    GltfTextureUse m_EmissiveTexture;
    GltfTextureUse m_NormalTexture;
    bool m_HasOtherTextures = false;
    bool m_IsTransparent = false;
    bool m_HasExtensions = false;
    GltfNotes m_Notes;
};

struct GltfImage {
    std::string m_Name; // or the last part of its URI
    std::string m_MimeType;
    int m_View = kGltfNone; // its bytes, PNG or JPEG
};

struct GltfDocument {
    std::vector<std::vector<unsigned char>> m_Buffers;
    std::vector<GltfBufferView> m_Views;
    std::vector<GltfAccessor> m_Accessors;
    std::vector<GltfMesh> m_Meshes;
    std::vector<GltfNode> m_Nodes;
    std::vector<GltfMaterial> m_Materials;
    std::vector<GltfImage> m_Images;
    std::vector<int> m_Roots;                 // of the scene that is shown
    std::vector<std::string> m_NotTranslated; // what the file has and a mesh does not, such as "2 animations"
    std::size_t m_SourceSize = 0;             // bytes that were read for it
};

} // namespace Corvid

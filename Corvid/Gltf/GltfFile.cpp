#include "Corvid/Gltf/GltfFile.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <exception>
#include <fstream> // for the library
#include <limits>
#include <new>
#include <sstream>
#include <string_view>
#include <utility>

#include "Corvid/Gltf/GltfSource.h"

// The one place that knows the library. Pictures stay as they are, files are read by us.
#define TINYGLTF_IMPLEMENTATION
#define TINYGLTF_NO_STB_IMAGE
#define TINYGLTF_NO_STB_IMAGE_WRITE
#define TINYGLTF_NO_EXTERNAL_IMAGE
#define TINYGLTF_NO_FS
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wall"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#include <tiny_gltf.h>
#pragma GCC diagnostic pop

namespace Corvid {

namespace {

// Of our members of an object's extras. They are not in an object of their own: some tools break on nested ones.
constexpr std::string_view kNotePrefix = "corvid.";

// The library's files are the source's buffers, by number.

const GltfBytes* FindBuffer(const std::string& name, void* source) {
    const std::vector<GltfBytes>& buffers = static_cast<GltfSource*>(source)->m_Buffers;
    std::size_t index = 0;
    const auto [end, failure] = std::from_chars(name.data(), name.data() + name.size(), index);
    const bool isNumber = failure == std::errc{} && end == name.data() + name.size();
    return isNumber && index < buffers.size() ? &buffers[index] : nullptr;
}

bool BufferExists(const std::string& name, void* source) {
    return FindBuffer(name, source) != nullptr;
}

std::string SamePath(const std::string& path, void*) {
    return path;
}

bool ReadBuffer(std::vector<unsigned char>* bytes, std::string*, const std::string& name, void* source) {
    const GltfBytes* buffer = FindBuffer(name, source);
    if (buffer != nullptr)
        *bytes = *buffer;
    return buffer != nullptr;
}

GltfNotes TakeNotes(const tinygltf::Value& extras) {
    GltfNotes notes;
    if (!extras.IsObject())
        return notes;
    for (const auto& [name, value] : extras.Get<tinygltf::Value::Object>()) {
        if (name.starts_with(kNotePrefix) && value.IsString())
            notes[name.substr(kNotePrefix.size())] = value.Get<std::string>();
    }
    return notes;
}

tinygltf::Value MakeExtras(const GltfNotes& notes) {
    if (notes.empty())
        return {};
    tinygltf::Value::Object texts;
    for (const auto& [name, text] : notes)
        texts[std::string(kNotePrefix) + name] = tinygltf::Value(text);
    return tinygltf::Value(std::move(texts));
}

template <std::size_t Size> void TakeNumbers(const std::vector<double>& numbers, std::array<double, Size>& target) {
    if (numbers.size() == Size)
        std::copy(numbers.begin(), numbers.end(), target.begin());
}

int WidthOf(int type) {
    switch (type) {
    case TINYGLTF_TYPE_SCALAR:
        return 1;
    case TINYGLTF_TYPE_VEC2:
        return 2;
    case TINYGLTF_TYPE_VEC3:
        return 3;
    case TINYGLTF_TYPE_VEC4:
        return 4;
    default:
        return 0;
    }
}

constexpr int kTypeOfWidth[] = {0, TINYGLTF_TYPE_SCALAR, TINYGLTF_TYPE_VEC2, TINYGLTF_TYPE_VEC3, TINYGLTF_TYPE_VEC4};

GltfAccessor TakeAccessor(const tinygltf::Accessor& source) {
    GltfAccessor accessor{source.bufferView,
                          source.byteOffset,
                          GltfComponent{source.componentType},
                          WidthOf(source.type),
                          source.normalized,
                          source.count,
                          std::nullopt,
                          {},
                          {}};
    if (source.sparse.isSparse)
        accessor.m_Sparse = GltfSparse{source.sparse.count,
                                       source.sparse.indices.bufferView,
                                       source.sparse.indices.byteOffset,
                                       GltfComponent{source.sparse.indices.componentType},
                                       source.sparse.values.bufferView,
                                       source.sparse.values.byteOffset};
    return accessor;
}

GltfMesh TakeMesh(const tinygltf::Mesh& source) {
    GltfMesh mesh{source.name, {}};
    for (const tinygltf::Primitive& primitive : source.primitives)
        mesh.m_Primitives.push_back({primitive.attributes, primitive.indices, primitive.material,
                                     GltfMode{primitive.mode}, !primitive.targets.empty(),
                                     !primitive.extensions.empty(), TakeNotes(primitive.extras)});
    return mesh;
}

GltfNode TakeNode(const tinygltf::Node& source) {
    GltfNode node;
    node.m_Name = source.name;
    node.m_Children = source.children;
    node.m_Mesh = source.mesh;
    if (source.matrix.size() == 16) {
        node.m_Matrix.emplace();
        TakeNumbers(source.matrix, *node.m_Matrix);
    }
    TakeNumbers(source.translation, node.m_Translation);
    TakeNumbers(source.rotation, node.m_Rotation);
    TakeNumbers(source.scale, node.m_Scale);
    node.m_HasObject = source.camera >= 0 || source.skin >= 0 || source.extensions.contains("KHR_lights_punctual");
    node.m_Notes = TakeNotes(source.extras);
    return node;
}

template <class Info> GltfTextureUse TakeTexture(const Info& info, const std::vector<tinygltf::Texture>& textures) {
    GltfTextureUse use;
    if (info.index >= 0 && static_cast<std::size_t>(info.index) < textures.size())
        use.m_Image = textures[static_cast<std::size_t>(info.index)].source;
    use.m_Set = info.texCoord;
    if (const auto found = info.extensions.find("KHR_texture_transform"); found != info.extensions.end()) {
        use.m_IsTransformed = true;
        const tinygltf::Value& transform = found->second;
        const auto numberAt = [&](const char* name, std::size_t index, double& target) {
            const tinygltf::Value& array = transform.Get(name);
            if (array.IsArray() && array.ArrayLen() == 2 && array.Get(static_cast<int>(index)).IsNumber())
                target = array.Get(static_cast<int>(index)).GetNumberAsDouble();
        };
        for (std::size_t i = 0; i < 2; ++i) {
            numberAt("offset", i, use.m_Offset[i]);
            numberAt("scale", i, use.m_Scale[i]);
        }
        if (transform.Get("rotation").IsNumber())
            use.m_Rotation = transform.Get("rotation").GetNumberAsDouble();
        if (transform.Get("texCoord").IsInt())
            use.m_Set = transform.Get("texCoord").GetNumberAsInt();
    }
    return use;
}

GltfMaterial TakeMaterial(const tinygltf::Material& source, const std::vector<tinygltf::Texture>& textures) {
    GltfMaterial material;
    const tinygltf::PbrMetallicRoughness& pbr = source.pbrMetallicRoughness;
    material.m_Name = source.name;
    TakeNumbers(pbr.baseColorFactor, material.m_BaseColor);
    TakeNumbers(source.emissiveFactor, material.m_Emissive);
    material.m_Metallic = pbr.metallicFactor;
    material.m_Roughness = pbr.roughnessFactor;
    material.m_BaseColorTexture = TakeTexture(pbr.baseColorTexture, textures);
    material.m_EmissiveTexture = TakeTexture(source.emissiveTexture, textures);
    material.m_NormalTexture = TakeTexture(source.normalTexture, textures);
    material.m_HasOtherTextures = pbr.metallicRoughnessTexture.index >= 0 || source.occlusionTexture.index >= 0;
    material.m_IsTransparent = source.alphaMode != "OPAQUE";
    material.m_HasExtensions = !source.extensions.empty();
    material.m_Notes = TakeNotes(source.extras);
    return material;
}

GltfDocument TakeModel(tinygltf::Model& model) {
    GltfDocument document;
    for (tinygltf::Buffer& buffer : model.buffers)
        document.m_Buffers.push_back(std::move(buffer.data));
    for (const tinygltf::BufferView& view : model.bufferViews)
        document.m_Views.push_back({view.buffer, view.byteOffset, view.byteLength, view.byteStride, {}});
    for (const tinygltf::Accessor& accessor : model.accessors)
        document.m_Accessors.push_back(TakeAccessor(accessor));
    for (const tinygltf::Mesh& mesh : model.meshes)
        document.m_Meshes.push_back(TakeMesh(mesh));
    for (const tinygltf::Node& node : model.nodes)
        document.m_Nodes.push_back(TakeNode(node));
    for (const tinygltf::Material& material : model.materials)
        document.m_Materials.push_back(TakeMaterial(material, model.textures));
    for (const tinygltf::Image& image : model.images)
        document.m_Images.push_back({image.uri.empty() ? image.name : image.uri, image.mimeType, kGltfNone});
    const std::size_t shown = model.defaultScene > 0 ? static_cast<std::size_t>(model.defaultScene) : 0;
    if (shown < model.scenes.size())
        document.m_Roots = model.scenes[shown].nodes;
    if (model.scenes.size() > 1)
        document.m_NotTranslated.push_back("other scenes than the one that is shown");
    return document;
}

void Load(const GltfSource& source, GltfDocument& document, std::string& error) {
    tinygltf::TinyGLTF loader;
    loader.SetFsCallbacks({BufferExists, SamePath, ReadBuffer, nullptr, const_cast<GltfSource*>(&source)});
    loader.SetImageLoader([](tinygltf::Image*, int, std::string*, std::string*, int, int, const unsigned char*, int,
                             void*) { return true; },
                          nullptr);
    tinygltf::Model model;
    std::string warnings;
    if (!loader.LoadASCIIFromString(&model, &error, &warnings, source.m_Text.data(),
                                    static_cast<unsigned>(source.m_Text.size()), "") &&
        error.empty())
        error = "not usable";
    if (error.empty())
        document = TakeModel(model);
}

// The library's messages are lines, several at times: the first one is told.
std::string FirstLine(const std::string& text) {
    const std::size_t end = text.find_first_of("\n");
    std::string line = text.substr(0, end);
    while (line.ends_with('.') || line.ends_with(' '))
        line.pop_back();
    return line.substr(0, 300);
}

tinygltf::Accessor MakeAccessor(const GltfAccessor& source) {
    tinygltf::Accessor accessor;
    accessor.bufferView = source.m_View;
    accessor.byteOffset = source.m_Offset;
    accessor.componentType = static_cast<int>(source.m_Component);
    accessor.normalized = source.m_IsNormalized;
    accessor.type = kTypeOfWidth[source.m_Width];
    accessor.count = source.m_Count;
    accessor.minValues = source.m_Min;
    accessor.maxValues = source.m_Max;
    return accessor;
}

tinygltf::Mesh MakeMesh(const GltfMesh& source) {
    tinygltf::Mesh mesh;
    mesh.name = source.m_Name;
    for (const GltfPrimitive& part : source.m_Primitives) {
        tinygltf::Primitive& primitive = mesh.primitives.emplace_back();
        primitive.attributes = part.m_Attributes;
        primitive.indices = part.m_Indices;
        primitive.material = part.m_Material;
        primitive.mode = static_cast<int>(part.m_Mode);
        primitive.extras = MakeExtras(part.m_Notes);
    }
    return mesh;
}

tinygltf::Node MakeNode(const GltfNode& source) {
    tinygltf::Node node;
    node.name = source.m_Name;
    node.children = source.m_Children;
    node.mesh = source.m_Mesh;
    // Always there: a node is then never smaller than a reader expects of its text.
    node.translation.assign(source.m_Translation.begin(), source.m_Translation.end());
    if (source.m_Rotation != GltfNode{}.m_Rotation)
        node.rotation.assign(source.m_Rotation.begin(), source.m_Rotation.end());
    node.extras = MakeExtras(source.m_Notes);
    return node;
}

tinygltf::Material MakeMaterial(const GltfMaterial& source, std::vector<tinygltf::Texture>& textures) {
    tinygltf::Material material;
    material.name = source.m_Name;
    material.pbrMetallicRoughness.baseColorFactor.assign(source.m_BaseColor.begin(), source.m_BaseColor.end());
    material.emissiveFactor.assign(source.m_Emissive.begin(), source.m_Emissive.end());
    material.pbrMetallicRoughness.metallicFactor = source.m_Metallic;
    material.pbrMetallicRoughness.roughnessFactor = source.m_Roughness;
    const auto use = [&](const GltfTextureUse& texture, auto& info) {
        if (texture.m_Image == kGltfNone)
            return;
        info.index = static_cast<int>(textures.size());
        textures.emplace_back().source = texture.m_Image;
    };
    use(source.m_BaseColorTexture, material.pbrMetallicRoughness.baseColorTexture);
    use(source.m_EmissiveTexture, material.emissiveTexture);
    use(source.m_NormalTexture, material.normalTexture);
    material.extras = MakeExtras(source.m_Notes);
    return material;
}

tinygltf::Model MakeModel(GltfDocument document) {
    tinygltf::Model model;
    model.asset.generator = "corvid";
    for (GltfBytes& bytes : document.m_Buffers)
        model.buffers.emplace_back().data = std::move(bytes);
    for (const GltfBufferView& source : document.m_Views) {
        tinygltf::BufferView& view = model.bufferViews.emplace_back();
        view.buffer = source.m_Buffer;
        view.byteOffset = source.m_Offset;
        view.byteLength = source.m_Length;
        view.target = static_cast<int>(source.m_Target);
    }
    for (const GltfAccessor& accessor : document.m_Accessors)
        model.accessors.push_back(MakeAccessor(accessor));
    for (const GltfMesh& mesh : document.m_Meshes)
        model.meshes.push_back(MakeMesh(mesh));
    for (const GltfNode& node : document.m_Nodes)
        model.nodes.push_back(MakeNode(node));
    for (const GltfMaterial& material : document.m_Materials)
        model.materials.push_back(MakeMaterial(material, model.textures));
    for (const GltfImage& source : document.m_Images) {
        tinygltf::Image& image = model.images.emplace_back();
        image.name = source.m_Name;
        image.mimeType = source.m_MimeType;
        image.bufferView = source.m_View;
    }
    model.scenes.emplace_back().nodes = document.m_Roots;
    model.defaultScene = 0;
    return model;
}

} // namespace

bool ReadGltf(std::span<const unsigned char> bytes, const GltfNeighbourReader& readNeighbour, GltfDocument& document,
              std::string& error) {
    error.clear();
    try {
        GltfSource source;
        if (!PrepareGltfSource(bytes, readNeighbour, source, error))
            return false;
        if (source.m_Text.size() > std::numeric_limits<unsigned>::max()) {
            error = "too large: its text has more than 4 GiB";
            return false;
        }
        Load(source, document, error);
        error = FirstLine(error);
        document.m_NotTranslated.insert(document.m_NotTranslated.end(), source.m_NotTranslated.begin(),
                                        source.m_NotTranslated.end());
        document.m_SourceSize = bytes.size();
        for (const GltfBytes& buffer : source.m_Buffers)
            document.m_SourceSize += buffer.size();
    } catch (const std::bad_alloc&) {
        error = "too little memory";
    } catch (const std::exception& failure) {
        error = FirstLine(failure.what());
    }
    return error.empty();
}

bool WriteGlb(GltfDocument document, std::string& bytes, std::string& error) {
    try {
        const tinygltf::Model model = MakeModel(std::move(document));
        tinygltf::TinyGLTF writer;
        std::ostringstream stream;
        writer.WriteGltfSceneToStream(&model, stream, false, true);
        bytes = std::move(stream).str();
    } catch (const std::bad_alloc&) {
        error = "too little memory";
    } catch (const std::exception& failure) {
        error = FirstLine(failure.what());
    }
    if (bytes.size() > std::numeric_limits<std::uint32_t>::max())
        error = "too large: a GLB has at most 4 GiB";
    return error.empty();
}

} // namespace Corvid

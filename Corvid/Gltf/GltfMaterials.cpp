#include "Corvid/Gltf/GltfMaterials.h"

#include <algorithm>
#include <cmath>

#include "Corvid/Gltf/GltfNames.h"
#include "Corvid/Gltf/GltfNotes.h"
#include "Engine/File/PathParts.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

namespace {

struct TextureField {
    const char* m_Name; // in the notes
    MeshName MeshMaterial::*m_Field;
    GltfTextureUse GltfMaterial::*m_Use; // null: glTF has no place for it
};

constexpr TextureField kTextures[] = {
    {"DiffuseTextureFileName", &MeshMaterial::m_DiffuseTextureFileName, &GltfMaterial::m_BaseColorTexture},
    {"SelfIlluminationTextureFileName", &MeshMaterial::m_SelfIlluminationTextureFileName,
     &GltfMaterial::m_EmissiveTexture},
    {"NormalTextureFileName", &MeshMaterial::m_NormalTextureFileName, &GltfMaterial::m_NormalTexture},
    {"DisplacementTextureFileName", &MeshMaterial::m_DisplacementTextureFileName, nullptr},
    {"TeamColorTextureFileName", &MeshMaterial::m_TeamColorTextureFileName, nullptr},
};

struct ColorField {
    const char* m_Name;
    Color MeshMaterial::*m_Field;
};

constexpr ColorField kColors[] = {{"Diffuse", &MeshMaterial::m_Diffuse},
                                  {"Ambient", &MeshMaterial::m_Ambient},
                                  {"Specular", &MeshMaterial::m_Specular},
                                  {"Emissive", &MeshMaterial::m_Emissive}};

// Below this the writer takes a factor for zero.
constexpr float kSmallestFactor = 1e-6f;

float PlainFactor(float value) {
    return value >= kSmallestFactor ? std::min(value, 1.0f) : 0.0f; // not a number: 0
}

// The width of the highlight that an exponent gives, and back.
float RoughnessOf(float glossiness) {
    return glossiness > 0.0f ? std::max(static_cast<float>(std::pow(2.0 / (glossiness + 2.0), 0.25)), 0.001f) : 1.0f;
}

float GlossinessOf(double roughness) {
    const double square = std::clamp(roughness, 0.05, 1.0) * std::clamp(roughness, 0.05, 1.0);
    return static_cast<float>(2.0 / (square * square) - 2.0);
}

float ToFloat(double value) {
    return static_cast<float>(value);
}

void TakeColor(const GltfNotes& notes, const char* name, Color& color,
               bool isStillMeant(const Color&, const GltfMaterial&), const GltfMaterial& source) {
    float channels[4];
    if (!FindFloats(notes, name, channels))
        return;
    const Color noted{channels[0], channels[1], channels[2], channels[3]};
    if (isStillMeant(noted, source))
        color = noted;
}

bool IsStillDiffuse(const Color& color, const GltfMaterial& source) {
    const auto& factor = source.m_BaseColor;
    return PlainFactor(color.red) == ToFloat(factor[0]) && PlainFactor(color.green) == ToFloat(factor[1]) &&
           PlainFactor(color.blue) == ToFloat(factor[2]) && PlainFactor(color.alpha) == ToFloat(factor[3]);
}

bool IsStillEmissive(const Color& color, const GltfMaterial& source) {
    const auto& factor = source.m_Emissive;
    return PlainFactor(color.red) == ToFloat(factor[0]) && PlainFactor(color.green) == ToFloat(factor[1]) &&
           PlainFactor(color.blue) == ToFloat(factor[2]);
}

bool IsAlwaysMeant(const Color&, const GltfMaterial&) {
    return true;
}

bool TakeTextureName(const TextureField& field, const GltfMaterial& source, const std::vector<GltfImage>& images,
                     MeshName& name) {
    const std::u16string noted = FindString(source.m_Notes, field.m_Name).value_or(u"");
    const int image = field.m_Use != nullptr ? (source.*field.m_Use).m_Image : kGltfNone;
    if (image < 0 || static_cast<std::size_t>(image) >= images.size())
        return CopyName(name, noted);
    const std::u16string shown = ToUtf16(images[static_cast<std::size_t>(image)].m_Name);
    return CopyName(name, SplitPath(shown).m_Name == SplitPath(noted).m_Name ? noted : shown);
}

} // namespace

GltfMaterial MakeGltfMaterial(const MeshMaterial& material, const GltfImageFinder& findImage) {
    GltfMaterial result;
    const std::u16string_view texture = SplitPath(material.m_DiffuseTextureFileName.GetView()).m_Name;
    result.m_Name = ToUtf8(texture);
    const Color& diffuse = material.m_Diffuse;
    result.m_BaseColor = {PlainFactor(diffuse.red), PlainFactor(diffuse.green), PlainFactor(diffuse.blue),
                          PlainFactor(diffuse.alpha)};
    const Color& emissive = material.m_Emissive;
    result.m_Emissive = {PlainFactor(emissive.red), PlainFactor(emissive.green), PlainFactor(emissive.blue)};
    result.m_Metallic = 0.0;
    result.m_Roughness = RoughnessOf(material.m_Glossiness);
    for (const TextureField& field : kTextures) {
        const std::u16string_view name = (material.*field.m_Field).GetView();
        if (name.empty())
            continue;
        NoteString(result.m_Notes, field.m_Name, name);
        if (field.m_Use != nullptr)
            (result.*field.m_Use).m_Image = findImage(name);
    }
    for (const ColorField& field : kColors) {
        const Color& color = material.*field.m_Field;
        NoteFloats(result.m_Notes, field.m_Name, std::array{color.red, color.green, color.blue, color.alpha});
    }
    NoteFloats(result.m_Notes, "Glossiness", std::array{material.m_Glossiness});
    return result;
}

bool TakeGltfMaterial(const GltfMaterial& source, const std::vector<GltfImage>& images, MeshMaterial& material) {
    const auto& base = source.m_BaseColor;
    const auto& emissive = source.m_Emissive;
    // Metals reflect their own colour, everything else about 4 % of white light.
    const auto specular = [&](double channel) { return ToFloat(0.04 + (channel - 0.04) * source.m_Metallic); };
    material.m_Diffuse = {ToFloat(base[0]), ToFloat(base[1]), ToFloat(base[2]), ToFloat(base[3])};
    material.m_Ambient = material.m_Diffuse;
    material.m_Specular = {specular(base[0]), specular(base[1]), specular(base[2]), 1.0f};
    material.m_Emissive = {ToFloat(emissive[0]), ToFloat(emissive[1]), ToFloat(emissive[2]), 1.0f};
    material.m_Glossiness = GlossinessOf(source.m_Roughness);

    const GltfNotes& notes = source.m_Notes;
    TakeColor(notes, "Diffuse", material.m_Diffuse, IsStillDiffuse, source);
    TakeColor(notes, "Emissive", material.m_Emissive, IsStillEmissive, source);
    TakeColor(notes, "Ambient", material.m_Ambient, IsAlwaysMeant, source);
    TakeColor(notes, "Specular", material.m_Specular, IsAlwaysMeant, source);
    float glossiness[1];
    if (FindFloats(notes, "Glossiness", glossiness) && RoughnessOf(glossiness[0]) == ToFloat(source.m_Roughness))
        material.m_Glossiness = glossiness[0];
    bool areWhole = true;
    for (const TextureField& field : kTextures)
        areWhole = TakeTextureName(field, source, images, material.*field.m_Field) && areWhole;
    return areWhole;
}

void MakePlainMaterial(MeshMaterial& material) {
    material.m_Diffuse = kWhite;
    material.m_Ambient = kWhite;
    material.m_Specular = {0.0f, 0.0f, 0.0f, 1.0f};
    material.m_Emissive = {0.0f, 0.0f, 0.0f, 1.0f};
}

} // namespace Corvid

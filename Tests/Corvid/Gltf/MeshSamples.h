#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>

#include "Engine/Render/Mesh/MeshData.h"

namespace Corvid {

// Makes meshes up, of numbers that real files have and of any bits at all.
class MeshMaker {
public:
    enum class Numbers { Sound, AnyBits };

    MeshMaker(unsigned seed, Numbers numbers) : m_Random(seed), m_Numbers(numbers) {}

    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_Random); }

    float Float() {
        if (m_Numbers == Numbers::Sound)
            return std::uniform_real_distribution<float>(-100.0f, 100.0f)(m_Random);
        static constexpr std::uint32_t kOdd[] = {0x00000000, 0x80000000, 0x00000001, 0x807FFFFF,
                                                 0x7F7FFFFF, 0x7F800000, 0xFF800000, 0x7FC00000,
                                                 0xFFC12345, 0x7F800001, 0x3F800000, 0x33000000};
        const int choice = Below(16);
        return std::bit_cast<float>(choice < 12 ? kOdd[choice] : static_cast<std::uint32_t>(m_Random()));
    }

    Vector3 Vector() { return {Float(), Float(), Float()}; }

    Vector3 Direction() {
        if (m_Numbers == Numbers::AnyBits)
            return Vector();
        const Vector3 vector = Vector();
        return vector * (1.0f / Distance(vector, Vector3{}));
    }

    Color AnyColor() {
        const auto channel = [&] {
            return m_Numbers == Numbers::Sound ? static_cast<float>(Below(256)) / 255.0f : Float();
        };
        return {channel(), channel(), channel(), channel()};
    }

    void Name(MeshName& name) {
        static constexpr const char16_t* kNames[] = {u"", u"Hull.dds", u"Textures\\TeamLogo.tga",
                                                     u"<b>&amp;\"\u00e9\U0001F680", u"x\u0001\u007f\uffff"};
        std::u16string text = kNames[Below(5)];
        if (m_Numbers == Numbers::AnyBits && Below(3) == 0)
            text += static_cast<char16_t>(0xD800 + Below(0x800)); // half a pair
        if (m_Numbers == Numbers::AnyBits && Below(8) == 0)
            text.resize(255, u'y');
        name = std::u16string_view(text);
    }

    void Fill(MeshData& mesh, int vertices, int triangles, int materials, int points) {
        mesh.m_MaxDiffuseMipLevel = static_cast<std::int32_t>(m_Random());
        mesh.m_HasValidTangents = Below(2) == 0;
        mesh.m_BoundingRadius = Float();
        mesh.m_MaxBoundingExtents = Vector();
        mesh.m_MinBoundingExtents = Vector();
        mesh.m_Vertices.SetSize(vertices);
        for (MeshVertex& vertex : mesh.m_Vertices)
            vertex = {Vector(), Direction(), Direction(), Float(), Float(), Float(), Float()};
        mesh.m_Triangles.SetSize(triangles);
        std::int32_t material = 0;
        for (MeshTriangle& triangle : mesh.m_Triangles) {
            material = Below(3) == 0 ? Index(materials) : material;
            triangle.m_iVertex0 = Index(vertices);
            triangle.m_iVertex1 = Index(vertices);
            triangle.m_iVertex2 = Index(vertices);
            triangle.m_iMaterial = material;
        }
        mesh.m_Materials.SetSize(materials);
        for (MeshMaterial& each : mesh.m_Materials) {
            for (MeshName MeshMaterial::*name :
                 {&MeshMaterial::m_DiffuseTextureFileName, &MeshMaterial::m_SelfIlluminationTextureFileName,
                  &MeshMaterial::m_NormalTextureFileName, &MeshMaterial::m_DisplacementTextureFileName,
                  &MeshMaterial::m_TeamColorTextureFileName})
                Name(each.*name);
            each.m_Ambient = AnyColor();
            each.m_Diffuse = AnyColor();
            each.m_Specular = AnyColor();
            each.m_Emissive = AnyColor();
            each.m_Glossiness = Float();
        }
        mesh.m_Points.SetSize(points);
        for (MeshPoint& point : mesh.m_Points) {
            Name(point.m_DataString);
            point.m_Position = Vector();
            point.m_Orientation = Below(2) == 0 ? Matrix33::Identity() : Matrix33(Vector(), Vector(), Vector());
        }
    }

private:
    std::int32_t Index(int count) {
        if (m_Numbers == Numbers::AnyBits && Below(6) == 0)
            return Below(2) == 0 ? static_cast<std::int32_t>(m_Random()) : count;
        return count == 0 ? 0 : Below(count);
    }

    std::mt19937 m_Random;
    Numbers m_Numbers;
};

// What a record holds but for its derived lists, as bytes: equal ones are the same record.
inline std::string BytesOf(const MeshData& mesh) {
    std::string bytes;
    const auto add = [&](const auto& value) { bytes.append(reinterpret_cast<const char*>(&value), sizeof value); };
    const auto addName = [&](const MeshName& name) {
        for (const char16_t unit : name.GetView())
            add(unit);
        add(u'\0');
    };
    add(mesh.m_MaxDiffuseMipLevel);
    add(mesh.m_HasValidTangents);
    add(mesh.m_BoundingRadius);
    add(mesh.m_MaxBoundingExtents);
    add(mesh.m_MinBoundingExtents);
    add(mesh.m_Materials.GetSize());
    for (const MeshMaterial& material : mesh.m_Materials) {
        addName(material.m_DiffuseTextureFileName);
        addName(material.m_SelfIlluminationTextureFileName);
        addName(material.m_NormalTextureFileName);
        addName(material.m_DisplacementTextureFileName);
        addName(material.m_TeamColorTextureFileName);
        add(material.m_Ambient);
        add(material.m_Diffuse);
        add(material.m_Specular);
        add(material.m_Emissive);
        add(material.m_Glossiness);
    }
    add(mesh.m_Points.GetSize());
    for (const MeshPoint& point : mesh.m_Points) {
        addName(point.m_DataString);
        add(point.m_Position);
        add(point.m_Orientation);
    }
    add(mesh.m_Vertices.GetSize());
    for (const MeshVertex& vertex : mesh.m_Vertices)
        add(vertex);
    add(mesh.m_Triangles.GetSize());
    for (const MeshTriangle& triangle : mesh.m_Triangles) {
        add(triangle.m_iVertex0);
        add(triangle.m_iVertex1);
        add(triangle.m_iVertex2);
        add(triangle.m_iMaterial);
    }
    return bytes;
}

} // namespace Corvid

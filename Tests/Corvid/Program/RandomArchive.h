#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <string>

#include "Engine/Archive/LabelText.h"
#include "Engine/Archive/NullArchive.h"
#include "Engine/Math/Color.h"
#include "Engine/Math/Matrix.h"
#include "Engine/Math/Vector.h"
#include "Engine/Render/Particle/AffectorType.h"
#include "Engine/Render/Particle/EmitterType.h"
#include "Engine/Window/BrushContent.h"
#include "GS/Entity/EntityTypeTable.h"

namespace Corvid {

// Hands out random values to any object that loads itself: every float but the payloads of NaN, colours of 8 bits a
// channel, strings that text can hold, few elements.
class RandomArchive final : public NullArchive {
public:
    explicit RandomArchive(std::uint32_t seed) : m_Random(seed) {}

    void ReadColor(Label, Color& value) override { value = UnpackColor(Bits()); }
    void ReadIntRect(Label, IntRect& value) override {
        for (std::int32_t* const number : {&value.x, &value.y, &value.width, &value.height})
            *number = static_cast<std::int32_t>(Bits());
    }
    void ReadIntPair(Label label, IntPair& value) override { ReadIntPair(label, value.first, value.second); }
    void ReadIntPair(Label, std::int32_t& first, std::int32_t& second) override {
        first = static_cast<std::int32_t>(Bits());
        second = static_cast<std::int32_t>(Bits());
    }
    void ReadVector4(Label, Vector4& value) override { ReadAll(&value.x, 4); }
    void ReadVector3(Label, Vector3& value) override { ReadAll(&value.x, 3); }
    void ReadMatrix44(Label, Matrix44& value) override { ReadRows(value); }
    void ReadMatrix33(Label, Matrix33& value) override { ReadRows(value); }
    void ReadInt64(Label, std::int64_t& value) override { value = std::int64_t{Bits()} << 31 ^ Bits(); }
    void ReadBool(Label, bool& value) override { value = Below(2) == 1; }
    void ReadDouble(Label, double& value) override { value = static_cast<double>(Float()); }
    void ReadFloat(Label, float& value) override { value = Float(); }
    void ReadInt(Label label, std::uint32_t& value) override {
        std::int32_t number = 0;
        ReadInt(label, number);
        value = static_cast<std::uint32_t>(number);
    }

    void ReadInt(Label label, std::int32_t& value) override {
        const std::string name{std::string_view(LabelText(label))};
        static const std::set<std::string> kCounts = {"NumMaterials",        "NumPoints",   "NumVertices",
                                                      "NumTriangles",        "NumEmitters", "NumAffectors",
                                                      "numAttachedEmitters", "brushCount"};
        if (name == "numTextures")
            value = 2; // slots
        else if (name == "BillboardAnchor")
            value = static_cast<std::int32_t>(Below(9));
        else if (kCounts.contains(name) || name.starts_with("NumCached"))
            value = static_cast<std::int32_t>(Below(6));
        else
            value = static_cast<std::int32_t>(Bits());
    }

    void ReadString(Label label, char16_t* buffer, int capacity) override {
        const std::string name{std::string_view(LabelText(label))};
        std::u16string text;
        if (name == "EmitterType")
            text = EnumWords<EmitterType>::Words[Below(std::size(EnumWords<EmitterType>::Words))];
        else if (name == "AffectorType")
            text = EnumWords<AffectorType>::Words[Below(std::size(EnumWords<AffectorType>::Words))];
        else if (name == "content")
            text = EnumWords<BrushContent>::Words[Below(4)];
        else if (name == "entityType")
            text = SettledType();
        else if (name == "PipelineEffectID" || name == "textureAnimationSpawnType" || name == "missionType" ||
                 name == "defaultCohesionRange")
            return; // words: they stay as they are
        else
            text = Text(static_cast<std::size_t>(std::min(capacity - 1, 63)));
        buffer[text.copy(buffer, static_cast<std::size_t>(capacity - 1))] = 0;
    }

    void ReadObject(Archivable& object) override { object.Load(*this); }
    void ReadLabeledObject(Label, Archivable& object, void* context) override { object.Load(*this, context); }
    void ReadLabeledObject(Label, Archivable& object) override { object.Load(*this); }

private:
    std::uint32_t Bits() { return static_cast<std::uint32_t>(m_Random()); }
    std::size_t Below(std::size_t end) { return Bits() % end; }

    float Float() {
        // Half of them as files have them, the others any.
        if (Below(2) == 0)
            return static_cast<float>(static_cast<double>(static_cast<std::int32_t>(Bits())) / 1e6);
        const float any = std::bit_cast<float>(Bits());
        return std::isnan(any) ? std::copysign(std::numeric_limits<float>::quiet_NaN(), any) : any;
    }
    void ReadAll(float* values, int count) {
        std::generate(values, values + count, [this] { return Float(); });
    }
    template <class Matrix> void ReadRows(Matrix& matrix) {
        ReadAll(reinterpret_cast<float*>(&matrix), static_cast<int>(sizeof matrix / sizeof(float)));
    }

    std::u16string Text(std::size_t most) {
        constexpr std::u16string_view kUnits = u"abcXYZ 019_.-\\/[]{}#\t\u00E4\u20AC\u4E2D";
        std::u16string text;
        for (std::size_t left = Below(most + 1); left > 0; --left)
            text.push_back(kUnits[Below(kUnits.size())]);
        return text;
    }

    std::u16string SettledType() {
        for (;;) {
            const EntityTypeRow& row = kEntityTypes[Below(std::size(kEntityTypes))];
            if (row.m_IsLayoutSettled && row.m_Create != nullptr)
                return row.m_Word;
        }
    }

    std::mt19937 m_Random;
};

} // namespace Corvid

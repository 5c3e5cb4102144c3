#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "Engine/Archive/Archive.h"
#include "Engine/Archive/OwnedLabel.h"
#include "Engine/Layout/Layout.h"

namespace Corvid {

// Writes a file of random values that a layout allows: every word of a word, every branch of a condition, lists of 0 to
// 3 elements (or the right number), finite floats of all magnitudes, colours that text holds as well.
class RandomValues {
public:
    RandomValues(const Layout& layout, std::uint32_t seed) : m_Layout(layout), m_Random(seed) {}

    void Write(Archive& archive) { Write(archive, 0, m_Layout.GetSize()); }

private:
    class Nested final : public Archivable {
    public:
        Nested(RandomValues& values, LayoutIndex record) : m_Values(values), m_Record(record) {}
        void Load(Archive&) override {}
        void Save(Archive& archive) const override {
            m_Values.Write(archive, m_Record + 1, m_Values.m_Layout[m_Record].m_End);
        }

    private:
        RandomValues& m_Values;
        LayoutIndex m_Record;
    };

    void Write(Archive& archive, LayoutIndex first, LayoutIndex end) {
        for (LayoutIndex index = first; index < end; index = m_Layout[index].m_End)
            WriteNode(archive, index);
    }

    void WriteNode(Archive& archive, LayoutIndex index) {
        const LayoutNode& node = m_Layout[index];
        if (node.m_Kind == LayoutKind::Use)
            return Write(archive, index + 1, node.m_End);
        if (node.m_Kind == LayoutKind::When) {
            if (Holds(node.m_Condition))
                Write(archive, index + 1, node.m_End);
            return;
        }
        const OwnedLabel label(node.m_Label);
        switch (node.m_Kind) {
        case LayoutKind::Bool:
            m_Bools[index] = Below(2) != 0;
            return archive.WriteBool(label, m_Bools[index]);
        case LayoutKind::Int: {
            const ValueRange& range = node.m_Range;
            return archive.WriteInt(label, std::uniform_int_distribution(range.m_Least, range.m_Most)(m_Random));
        }
        case LayoutKind::Int64:
            return archive.WriteInt64(label, static_cast<std::int64_t>(Below(INT64_MAX)) - INT32_MAX);
        case LayoutKind::Float:
            return archive.WriteFloat(label, Float());
        case LayoutKind::Double:
            return archive.WriteDouble(label, static_cast<double>(Float()) / 3);
        case LayoutKind::String: {
            std::u16string text;
            const auto most = static_cast<std::uint64_t>(node.m_Capacity > 0 ? std::min(node.m_Capacity, 20) : 20);
            for (std::uint64_t i = Below(most); i > 0; --i)
                text.push_back(u"aZ 09.\u00E9\u65E5"[Below(8)]);
            return archive.WriteString(label, text.c_str());
        }
        case LayoutKind::Word:
            m_Words[index] = node.m_Words[Below(node.m_Words.size())];
            return archive.WriteString(label, m_Words[index].c_str());
        case LayoutKind::Color:
            return archive.WriteColor(label, UnpackColor(static_cast<std::uint32_t>(m_Random())));
        case LayoutKind::Vector3:
            return archive.WriteVector3(label, {Float(), Float(), Float()});
        case LayoutKind::Vector4:
            return archive.WriteVector4(label, {Float(), Float(), Float(), Float()});
        case LayoutKind::Pair:
            return archive.WriteIntPair(label, IntPair{Int(), Int()});
        case LayoutKind::Rect:
            return archive.WriteIntRect(label, IntRect{Int(), Int(), Int(), Int()});
        case LayoutKind::Matrix33: {
            Matrix33 matrix;
            for (int row = 0; row < 3; ++row)
                matrix.GetRow(row) = {Float(), Float(), Float()};
            return archive.WriteMatrix33(label, matrix);
        }
        case LayoutKind::Matrix44: {
            Matrix44 matrix;
            for (int row = 0; row < 4; ++row)
                matrix.GetRow(row) = {Float(), Float(), Float(), Float()};
            return archive.WriteMatrix44(label, matrix);
        }
        case LayoutKind::Count: {
            const bool isKnown = node.m_End > index + 1;
            const int count = node.m_SlotCount > 0 ? node.m_SlotCount : isKnown ? static_cast<int>(Below(4)) : 0;
            archive.WriteInt(label, count);
            for (int i = 0; i < count; ++i)
                Write(archive, index + 1, node.m_End);
            return;
        }
        default:
            return archive.WriteLabeledObject(label, Nested(*this, index));
        }
    }

    bool Holds(const LayoutCondition& condition) {
        if (condition.m_Field == kNoLayoutIndex)
            return Below(2) != 0;
        const auto& words = condition.m_Words;
        const bool isSo = words.empty()
                              ? m_Bools[condition.m_Field]
                              : std::find(words.begin(), words.end(), m_Words[condition.m_Field]) != words.end();
        return isSo != condition.m_IsNegated;
    }

    std::uint64_t Below(std::uint64_t end) {
        return std::uniform_int_distribution<std::uint64_t>(0, end - 1)(m_Random);
    }
    std::int32_t Int() { return static_cast<std::int32_t>(m_Random()); }
    float Float() {
        const auto bits = static_cast<std::uint32_t>(m_Random());
        const float any = std::bit_cast<float>(bits);
        if (Below(2) != 0 && any == any && any - any == 0)
            return any;
        return static_cast<float>(static_cast<std::int32_t>(bits)) / 65536;
    }

    const Layout& m_Layout;
    std::mt19937 m_Random;
    std::map<LayoutIndex, bool> m_Bools;
    std::map<LayoutIndex, std::u16string> m_Words;
};

} // namespace Corvid

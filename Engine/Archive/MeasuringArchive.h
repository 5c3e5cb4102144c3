#pragma once

#include "Engine/Archive/ArchiveValues.h"
#include "Engine/Archive/NullArchive.h"

namespace Corvid {

// Takes what is written to it and only adds up the sizes, strings as empty ones: run over an element in its default
// state, it gives the least that an element takes in a file, out of the element's own field list.
class MeasuringArchive final : public NullArchive {
public:
    const ElementSize& GetSize() const { return m_Size; }

    void WriteColor(Label label, const Color&) override { Add(label, 16); }
    void WriteIntRect(Label label, const IntRect&) override { Add(label, 16); }
    void WriteIntPair(Label label, const IntPair&) override { Add(label, 8); }
    void WriteIntPair(Label label, std::int32_t, std::int32_t) override { Add(label, 8); }
    void WriteVector4(Label label, const Vector4&) override { Add(label, 16); }
    void WriteMatrix44(Label label, const Matrix44&) override { Add(label, 64); }
    void WriteMatrix33(Label label, const Matrix33&) override { Add(label, 36); }
    void WriteVector3(Label label, const Vector3&) override { Add(label, 12); }
    void WriteString(Label label, const char16_t*) override { Add(label, 4); }
    void WriteInt64(Label label, std::int64_t) override { Add(label, 8); }
    void WriteBool(Label label, bool) override { Add(label, 1); }
    void WriteDouble(Label label, double) override { Add(label, 8); }
    void WriteFloat(Label label, float) override { Add(label, 4); }
    void WriteInt(Label label, std::int32_t) override { Add(label, 4); }
    void WriteInt(Label label, std::uint32_t) override { Add(label, 4); }
    void WriteObject(const Archivable& object) override { object.Save(*this); }
    void WriteLabeledObject(Label label, const Archivable& object) override;

private:
    void Add(Label label, unsigned binaryBytes);

    ElementSize m_Size;
};

template <class Element> ElementSize SmallestElement(Label label, const Element& element = Element()) {
    MeasuringArchive archive;
    WriteValue(archive, label, element);
    return archive.GetSize();
}

} // namespace Corvid

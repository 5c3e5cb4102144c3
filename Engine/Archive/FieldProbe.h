#pragma once

#include "Engine/Archive/FieldListener.h"
#include "Engine/Archive/NullArchive.h"

namespace Corvid {

// Holds nothing: tells a listener by the operation that reads a value what the value is in a file.
class FieldProbe final : public NullArchive {
public:
    // The facts of the value that is about to be read; the capacity of a string only where it is not what it is read
    // with.
    FieldProbe(FieldListener& listener, const FieldShape& facts) : m_Listener(listener), m_Facts(facts) {}

    void ReadColor(Label label, Color&) override { Tell(label, FieldKind::Color); }
    void ReadIntRect(Label label, IntRect&) override { Tell(label, FieldKind::Rect); }
    void ReadIntPair(Label label, IntPair&) override { Tell(label, FieldKind::Pair); }
    void ReadIntPair(Label label, std::int32_t&, std::int32_t&) override { Tell(label, FieldKind::Pair); }
    void ReadVector4(Label label, Vector4&) override { Tell(label, FieldKind::Vector4); }
    void ReadMatrix44(Label label, Matrix44&) override { Tell(label, FieldKind::Matrix44); }
    void ReadMatrix33(Label label, Matrix33&) override { Tell(label, FieldKind::Matrix33); }
    void ReadVector3(Label label, Vector3&) override { Tell(label, FieldKind::Vector3); }
    void ReadString(Label label, char16_t* buffer, int capacity) override;
    void ReadInt64(Label label, std::int64_t&) override { Tell(label, FieldKind::Int64); }
    void ReadBool(Label label, bool&) override { Tell(label, FieldKind::Bool); }
    void ReadDouble(Label label, double&) override { Tell(label, FieldKind::Double); }
    void ReadFloat(Label label, float&) override { Tell(label, FieldKind::Float); }
    void ReadInt(Label label, std::int32_t&) override { Tell(label, FieldKind::Int); }
    void ReadInt(Label label, std::uint32_t&) override { Tell(label, FieldKind::Int); }
    void ReadObject(Archivable& object) override { object.ListFields(m_Listener); }
    void ReadLabeledObject(Label label, Archivable& object) override;
    void ReadLabeledObject(Label label, Archivable& object, void*) override { ReadLabeledObject(label, object); }

private:
    void Tell(Label label, FieldKind kind);

    FieldListener& m_Listener;
    FieldShape m_Facts;
};

} // namespace Corvid

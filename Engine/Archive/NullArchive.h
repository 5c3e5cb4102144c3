#pragma once

#include "Engine/Archive/Archive.h"

namespace Corvid {

// Has no values and takes none: the base of archives that make use of a few operations only.
class NullArchive : public Archive {
public:
    void ReadColor(Label, Color&) override {}
    void ReadIntRect(Label, IntRect&) override {}
    void ReadIntPair(Label, IntPair&) override {}
    void ReadIntPair(Label, std::int32_t&, std::int32_t&) override {}
    void ReadVector4(Label, Vector4&) override {}
    void ReadMatrix44(Label, Matrix44&) override {}
    void ReadMatrix33(Label, Matrix33&) override {}
    void ReadVector3(Label, Vector3&) override {}
    void ReadString(Label, char16_t*, int) override {}
    void ReadInt64(Label, std::int64_t&) override {}
    void ReadBool(Label, bool&) override {}
    void ReadDouble(Label, double&) override {}
    void ReadFloat(Label, float&) override {}
    void ReadInt(Label, std::int32_t&) override {}
    void ReadInt(Label, std::uint32_t&) override {}
    void ReadObject(Archivable&) override {}
    void ReadLabeledObject(Label, Archivable&, void*) override {}
    void ReadLabeledObject(Label, Archivable&) override {}

    void WriteColor(Label, const Color&) override {}
    void WriteIntRect(Label, const IntRect&) override {}
    void WriteIntPair(Label, const IntPair&) override {}
    void WriteIntPair(Label, std::int32_t, std::int32_t) override {}
    void WriteVector4(Label, const Vector4&) override {}
    void WriteMatrix44(Label, const Matrix44&) override {}
    void WriteMatrix33(Label, const Matrix33&) override {}
    void WriteVector3(Label, const Vector3&) override {}
    void WriteString(Label, const char16_t*) override {}
    void WriteInt64(Label, std::int64_t) override {}
    void WriteBool(Label, bool) override {}
    void WriteDouble(Label, double) override {}
    void WriteFloat(Label, float) override {}
    void WriteInt(Label, std::int32_t) override {}
    void WriteInt(Label, std::uint32_t) override {}
    void WriteObject(const Archivable&) override {}
    void WriteLabeledObject(Label, const Archivable&) override {}

    void SkipEntry(Label, Label, std::span<const Label>) override {}
};

} // namespace Corvid

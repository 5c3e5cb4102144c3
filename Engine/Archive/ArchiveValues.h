#pragma once

#include <concepts>

#include "Engine/Archive/Archive.h"
#include "Engine/String/EnumWords.h"
#include "Engine/String/FixedString.h"

namespace Corvid {

// One adjacent pair per type of value says which operation of an archive carries it. A type above the archives adds its
// pair beside its class.

inline void ReadValue(Archive& archive, Label label, std::int32_t& value) {
    archive.ReadInt(label, value);
}
inline void WriteValue(Archive& archive, Label label, std::int32_t value) {
    archive.WriteInt(label, value);
}

inline void ReadValue(Archive& archive, Label label, std::uint32_t& value) {
    archive.ReadInt(label, value);
}
inline void WriteValue(Archive& archive, Label label, std::uint32_t value) {
    archive.WriteInt(label, value);
}

inline void ReadValue(Archive& archive, Label label, bool& value) {
    archive.ReadBool(label, value);
}
inline void WriteValue(Archive& archive, Label label, bool value) {
    archive.WriteBool(label, value);
}

inline void ReadValue(Archive& archive, Label label, float& value) {
    archive.ReadFloat(label, value);
}
inline void WriteValue(Archive& archive, Label label, float value) {
    archive.WriteFloat(label, value);
}

inline void ReadValue(Archive& archive, Label label, Vector3& value) {
    archive.ReadVector3(label, value);
}
inline void WriteValue(Archive& archive, Label label, const Vector3& value) {
    archive.WriteVector3(label, value);
}

inline void ReadValue(Archive& archive, Label label, Matrix33& value) {
    archive.ReadMatrix33(label, value);
}
inline void WriteValue(Archive& archive, Label label, const Matrix33& value) {
    archive.WriteMatrix33(label, value);
}

inline void ReadValue(Archive& archive, Label label, Color& value) {
    archive.ReadColor(label, value);
}
inline void WriteValue(Archive& archive, Label label, const Color& value) {
    archive.WriteColor(label, value);
}

inline void ReadValue(Archive& archive, Label label, IntRect& value) {
    archive.ReadIntRect(label, value);
}
inline void WriteValue(Archive& archive, Label label, const IntRect& value) {
    archive.WriteIntRect(label, value);
}

template <int Capacity> void ReadValue(Archive& archive, Label label, FixedString<Capacity>& value) {
    archive.ReadString(label, value.GetBuffer().m_Buffer, Capacity);
}
template <int Capacity> void WriteValue(Archive& archive, Label label, const FixedString<Capacity>& value) {
    archive.WriteString(label, value.GetText());
}

// A nested record under its label; not loaded at all when the label is missing.
inline void ReadValue(Archive& archive, Label label, Archivable& value) {
    archive.ReadLabeledObject(label, value);
}
inline void WriteValue(Archive& archive, Label label, const Archivable& value) {
    archive.WriteLabeledObject(label, value);
}

template <std::derived_from<SingleLineArchivable> Line> void ReadValue(Archive& archive, Label label, Line& value) {
    value.Load(archive, label);
}
template <std::derived_from<SingleLineArchivable> Line>
void WriteValue(Archive& archive, Label label, const Line& value) {
    value.Save(archive, label);
}

// Words of enumerations are strings of at most this capacity in UTF-16 units, terminator included.
inline constexpr int kWordCapacity = 256;

// Starts from the word of the present value, so that a missing label keeps it without a second message. A value
// outside the table counts as "Invalid".
void ReadWord(Archive& archive, Label label, const EnumWord* words, int count, int& value);
void WriteWord(Archive& archive, Label label, const EnumWord* words, int count, int value);

template <HasEnumWords Enum> void ReadValue(Archive& archive, Label label, Enum& value) {
    int number = static_cast<int>(value);
    ReadWord(archive, label, EnumWords<Enum>::Words, EnumWordCount<Enum>(), number);
    value = static_cast<Enum>(number);
}
template <HasEnumWords Enum> void WriteValue(Archive& archive, Label label, Enum value) {
    WriteWord(archive, label, EnumWords<Enum>::Words, EnumWordCount<Enum>(), static_cast<int>(value));
}

} // namespace Corvid

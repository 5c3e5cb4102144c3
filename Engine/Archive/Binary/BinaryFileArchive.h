#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "Engine/Archive/FileArchive.h"

namespace Corvid {

// The compact encoding: behind a header of four bytes ("BIN" and a line feed) the raw little-endian values, back to
// back in the order in which the objects save them. Labels are ignored.
//
// A bool takes one byte, an integer or float 4, a string a 32-bit count and so many UTF-16 units without terminator.
// Composites go through the single-value operations, so that a subclass which changes how a float is stored changes
// them all. A short read is reported, once per value, and leaves the value as it was.
class BinaryFileArchive : public FileArchive {
public:
    explicit BinaryFileArchive(std::unique_ptr<File> file);

    // Whether a string so far held what text cannot hold: a quote, a line end, a NUL, half a surrogate pair.
    bool HasStringBeyondText() const { return m_HasStringBeyondText; }

    void ReadColor(Label label, Color& value) override;
    void ReadIntRect(Label label, IntRect& value) override;
    void ReadIntPair(Label label, IntPair& value) override;
    void ReadIntPair(Label label, std::int32_t& first, std::int32_t& second) override;
    void ReadVector4(Label label, Vector4& value) override;
    void ReadMatrix44(Label label, Matrix44& value) override;
    void ReadMatrix33(Label label, Matrix33& value) override;
    void ReadVector3(Label label, Vector3& value) override;
    void ReadString(Label label, char16_t* buffer, int capacity) override;
    void ReadInt64(Label label, std::int64_t& value) override;
    void ReadBool(Label label, bool& value) override;
    void ReadDouble(Label label, double& value) override;
    void ReadFloat(Label label, float& value) override;
    void ReadInt(Label label, std::int32_t& value) override;
    void ReadInt(Label label, std::uint32_t& value) override;
    void ReadObject(Archivable& object) override;
    void ReadLabeledObject(Label label, Archivable& object, void* context) override;
    void ReadLabeledObject(Label label, Archivable& object) override;

    void WriteColor(Label label, const Color& value) override;
    void WriteIntRect(Label label, const IntRect& value) override;
    void WriteIntPair(Label label, const IntPair& value) override;
    void WriteIntPair(Label label, std::int32_t first, std::int32_t second) override;
    void WriteVector4(Label label, const Vector4& value) override;
    void WriteMatrix44(Label label, const Matrix44& value) override;
    void WriteMatrix33(Label label, const Matrix33& value) override;
    void WriteVector3(Label label, const Vector3& value) override;
    void WriteString(Label label, const char16_t* value) override;
    void WriteInt64(Label label, std::int64_t value) override;
    void WriteBool(Label label, bool value) override;
    void WriteDouble(Label label, double value) override;
    void WriteFloat(Label label, float value) override;
    void WriteInt(Label label, std::int32_t value) override;
    void WriteInt(Label label, std::uint32_t value) override;
    void WriteObject(const Archivable& object) override;
    void WriteLabeledObject(Label label, const Archivable& object) override;

    void Stop() override;
    ElementRoom GetRoom(const ElementSize& smallest) const override;
    void SkipEntry(Label contents, Label nextEntry, std::span<const Label> behindList) override; // stops
    bool ReportUnreadInput() override;
    ReportPosition GetPosition() const override; // a byte offset

private:
    // Takes a value from the window. Where it does not stand there as a whole, the window is refilled and `read` called
    // again, or the short read reported: off the way of the reads that succeed, which then call nothing.
    template <class Value> bool IsInWindow() const;
    template <class Value> Value TakeRaw();
    template <class Value>
    void ReadBehindWindow(void (BinaryFileArchive::*read)(Label, Value&), Label label, Value& value);
    bool FetchBehindWindow(std::size_t size);
    template <class Value> void WriteRaw(Value value);
    void ReportShortRead(std::uint64_t wantedCount, std::uint64_t count);
    std::uint32_t ReadUnits(char16_t* buffer, std::uint32_t count);

    bool m_HasStringBeyondText = false;
};

} // namespace Corvid

#include "Engine/Archive/Binary/BinaryFileArchive.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string>
#include <utility>

#include "Engine/String/Unicode.h"

namespace Corvid {

static_assert(std::endian::native == std::endian::little, "values are stored as they stand in memory");

BinaryFileArchive::BinaryFileArchive(std::unique_ptr<File> file)
    : FileArchive(std::move(file), "Engine/Archive/BinaryFileArchive") {}

// Single values ------------------------------------------------------------------------------------------------------

template <class Value> inline bool BinaryFileArchive::IsInWindow() const {
    return GetInput().GetAvailable() >= sizeof(Value);
}

template <class Value> inline Value BinaryFileArchive::TakeRaw() {
    InputStream& input = GetInput();
    Value value;
    std::memcpy(&value, input.GetPosition(), sizeof value);
    input.SetPosition(input.GetPosition() + sizeof value);
    return value;
}

bool BinaryFileArchive::FetchBehindWindow(std::size_t size) {
    if (GetInput().Ensure(size))
        return true;
    m_HasCutValue = m_HasCutValue || GetInput().GetAvailable() > 0;
    GetInput().SetPosition(GetInput().GetEnd());
    if (!IsStopped())
        ReportShortRead(1, 0);
    return false;
}

template <class Value>
[[gnu::noinline]] void BinaryFileArchive::ReadBehindWindow(void (BinaryFileArchive::*read)(Label, Value&), Label label,
                                                           Value& value) {
    if (FetchBehindWindow(sizeof value))
        (this->*read)(label, value);
}

template <class Value> inline void BinaryFileArchive::WriteRaw(Value value) {
    char* const out = GetOutput().GetPosition();
    std::memcpy(out, &value, sizeof value);
    GetOutput().Commit(out + sizeof value);
}

void BinaryFileArchive::ReportShortRead(std::uint64_t wantedCount, std::uint64_t count) {
    ReportMessage(Message::FailedToReadFile, {GetPath(), wantedCount, count});
}

void BinaryFileArchive::ReadInt(Label label, std::int32_t& value) {
    if (!IsInWindow<std::int32_t>()) [[unlikely]]
        return ReadBehindWindow(&BinaryFileArchive::ReadInt, label, value);
    value = TakeRaw<std::int32_t>();
    if (m_IsChecksumEnabled) [[unlikely]]
        m_Checksum.AddInt(static_cast<std::uint32_t>(value));
}

void BinaryFileArchive::WriteInt(Label, std::int32_t value) {
    WriteRaw(value);
}

void BinaryFileArchive::ReadInt(Label label, std::uint32_t& value) {
    if (!IsInWindow<std::uint32_t>()) [[unlikely]]
        return ReadBehindWindow(&BinaryFileArchive::ReadInt, label, value);
    value = TakeRaw<std::uint32_t>();
    if (m_IsChecksumEnabled) [[unlikely]]
        m_Checksum.AddInt(value);
}

void BinaryFileArchive::WriteInt(Label, std::uint32_t value) {
    WriteRaw(value);
}

void BinaryFileArchive::ReadInt64(Label label, std::int64_t& value) {
    if (!IsInWindow<std::int64_t>()) [[unlikely]]
        return ReadBehindWindow(&BinaryFileArchive::ReadInt64, label, value);
    value = TakeRaw<std::int64_t>(); // no part of the checksum
}

void BinaryFileArchive::WriteInt64(Label, std::int64_t value) {
    WriteRaw(value);
}

void BinaryFileArchive::ReadBool(Label label, bool& value) {
    if (!IsInWindow<bool>()) [[unlikely]]
        return ReadBehindWindow(&BinaryFileArchive::ReadBool, label, value);
    value = TakeRaw<std::uint8_t>() != 0;
    if (m_IsChecksumEnabled) [[unlikely]]
        m_Checksum.AddInt(value ? 1 : 0);
}

void BinaryFileArchive::WriteBool(Label, bool value) {
    WriteRaw(static_cast<std::uint8_t>(value ? 1 : 0));
}

void BinaryFileArchive::ReadFloat(Label label, float& value) {
    if (!IsInWindow<float>()) [[unlikely]]
        return ReadBehindWindow(&BinaryFileArchive::ReadFloat, label, value);
    value = std::bit_cast<float>(TakeRaw<std::uint32_t>()); // a float register might quieten a NaN
    if (m_IsChecksumEnabled) [[unlikely]]
        m_Checksum.AddFloat(value);
}

void BinaryFileArchive::WriteFloat(Label, float value) {
    WriteRaw(std::bit_cast<std::uint32_t>(value));
}

void BinaryFileArchive::ReadDouble(Label label, double& value) {
    if (!IsInWindow<double>()) [[unlikely]]
        return ReadBehindWindow(&BinaryFileArchive::ReadDouble, label, value);
    value = TakeRaw<double>();
    if (m_IsChecksumEnabled) [[unlikely]]
        m_Checksum.AddDouble(value);
}

void BinaryFileArchive::WriteDouble(Label, double value) {
    WriteRaw(value);
}

// Composites ---------------------------------------------------------------------------------------------------------

void BinaryFileArchive::ReadIntPair(Label label, std::int32_t& first, std::int32_t& second) {
    ReadInt(label, first);
    ReadInt(label, second);
}

void BinaryFileArchive::WriteIntPair(Label label, std::int32_t first, std::int32_t second) {
    WriteInt(label, first);
    WriteInt(label, second);
}

void BinaryFileArchive::ReadIntPair(Label label, IntPair& value) {
    ReadIntPair(label, value.first, value.second);
}

void BinaryFileArchive::WriteIntPair(Label label, const IntPair& value) {
    WriteIntPair(label, value.first, value.second);
}

void BinaryFileArchive::ReadIntRect(Label label, IntRect& value) {
    ReadIntPair(label, value.x, value.y);
    ReadIntPair(label, value.width, value.height);
}

void BinaryFileArchive::WriteIntRect(Label label, const IntRect& value) {
    WriteIntPair(label, value.x, value.y);
    WriteIntPair(label, value.width, value.height);
}

void BinaryFileArchive::ReadVector3(Label label, Vector3& value) {
    ReadFloat(label, value.x);
    ReadFloat(label, value.y);
    ReadFloat(label, value.z);
}

void BinaryFileArchive::WriteVector3(Label label, const Vector3& value) {
    WriteFloat(label, value.x);
    WriteFloat(label, value.y);
    WriteFloat(label, value.z);
}

void BinaryFileArchive::ReadVector4(Label label, Vector4& value) {
    ReadFloat(label, value.x);
    ReadFloat(label, value.y);
    ReadFloat(label, value.z);
    ReadFloat(label, value.w);
}

void BinaryFileArchive::WriteVector4(Label label, const Vector4& value) {
    WriteFloat(label, value.x);
    WriteFloat(label, value.y);
    WriteFloat(label, value.z);
    WriteFloat(label, value.w);
}

void BinaryFileArchive::ReadColor(Label label, Color& value) {
    ReadFloat(label, value.red);
    ReadFloat(label, value.green);
    ReadFloat(label, value.blue);
    ReadFloat(label, value.alpha);
}

void BinaryFileArchive::WriteColor(Label label, const Color& value) {
    WriteFloat(label, value.red);
    WriteFloat(label, value.green);
    WriteFloat(label, value.blue);
    WriteFloat(label, value.alpha);
}

void BinaryFileArchive::ReadMatrix33(Label label, Matrix33& value) {
    for (int i = 0; i < 3; ++i)
        ReadVector3(label, value.GetRow(i));
}

void BinaryFileArchive::WriteMatrix33(Label label, const Matrix33& value) {
    for (int i = 0; i < 3; ++i)
        WriteVector3(label, value.GetRow(i));
}

void BinaryFileArchive::ReadMatrix44(Label label, Matrix44& value) {
    for (int i = 0; i < 4; ++i)
        ReadVector4(label, value.GetRow(i));
}

void BinaryFileArchive::WriteMatrix44(Label label, const Matrix44& value) {
    for (int i = 0; i < 4; ++i)
        WriteVector4(label, value.GetRow(i));
}

// Strings ------------------------------------------------------------------------------------------------------------

void BinaryFileArchive::ReadString(Label, char16_t* buffer, int capacity) {
    if (capacity < 1 || !FetchBehindWindow(sizeof(std::uint32_t)))
        return;
    const auto length = TakeRaw<std::uint32_t>();
    const auto room = static_cast<std::uint32_t>(capacity - 1);
    Check(length <= room, "numChars < bufferSize");
    const std::uint32_t kept = std::min(length, room);
    std::uint32_t count = ReadUnits(buffer, kept);
    buffer[count] = 0;
    m_HasStringBeyondText = m_HasStringBeyondText || !IsHeldByText({buffer, count});
    if (length > kept) // the next value stands behind all that was claimed
        count += static_cast<std::uint32_t>(GetInput().Skip(2 * std::uint64_t(length - kept)) / 2);
    if (count < length) {
        m_HasCutValue = true;
        ReportShortRead(length, count);
    }
    if (m_IsChecksumEnabled)
        m_Checksum.AddString(buffer);
}

// The units that are there; half a unit at the end of the input is used up.
std::uint32_t BinaryFileArchive::ReadUnits(char16_t* buffer, std::uint32_t count) {
    InputStream& input = GetInput();
    std::uint32_t done = 0;
    while (done < count) {
        constexpr std::uint32_t kBlockUnits = InputStream::kWindowSize / 8;
        const std::uint32_t wanted = std::min(count - done, kBlockUnits);
        input.Ensure(2 * wanted);
        const auto available = static_cast<std::uint32_t>(std::min<std::size_t>(input.GetAvailable() / 2, wanted));
        std::memcpy(buffer + done, input.GetPosition(), 2 * available);
        done += available;
        if (available < wanted) {
            input.SetPosition(input.GetEnd());
            break;
        }
        input.SetPosition(input.GetPosition() + 2 * available);
    }
    return done;
}

void BinaryFileArchive::WriteString(Label, const char16_t* value) {
    const std::size_t length = std::char_traits<char16_t>::length(value);
    WriteRaw(static_cast<std::uint32_t>(length));
    GetOutput().Write(reinterpret_cast<const char*>(value), 2 * length);
}

// Objects ------------------------------------------------------------------------------------------------------------

void BinaryFileArchive::ReadObject(Archivable& object) {
    object.Load(*this);
}

void BinaryFileArchive::WriteObject(const Archivable& object) {
    object.Save(*this);
}

void BinaryFileArchive::ReadLabeledObject(Label, Archivable& object, void* context) {
    object.Load(*this, context);
}

void BinaryFileArchive::ReadLabeledObject(Label, Archivable& object) {
    object.Load(*this);
}

void BinaryFileArchive::WriteLabeledObject(Label, const Archivable& object) {
    object.Save(*this);
}

// The rest of the input ----------------------------------------------------------------------------------------------

ElementRoom BinaryFileArchive::GetRoom(const ElementSize& smallest) const {
    return GetRoomFor(smallest.m_BinaryBytes);
}

void BinaryFileArchive::Stop() {
    FileArchive::Stop();
    GetInput().Seal();
}

void BinaryFileArchive::SkipEntry(Label, Label, std::span<const Label>) {
    Stop();
}

bool BinaryFileArchive::ReportUnreadInput() {
    const std::uint64_t left = GetInput().GetBytesLeft();
    if (left > 0)
        ReportMessage(Message::UnreadBytes, {GetPath(), left, GetInput().GetOffset()});
    return left > 0;
}

ReportPosition BinaryFileArchive::GetPosition() const {
    if (GetFile().GetAccess() == FileAccess::Write)
        return {};
    return {ReportPosition::Kind::Offset, GetInput().GetOffset()};
}

} // namespace Corvid

#include "Engine/File/InputStream.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "Engine/File/SourceFile.h"
#include "Engine/Report/Reporter.h"
#include "Engine/String/Unicode.h"

namespace Corvid {

InputStream::InputStream(SourceFile& source, std::u16string_view path) : m_Source(&source), m_Path(path) {
    m_WindowCapacity = kWindowSize;
    if (source.IsRegular()) // a small file needs a small window; the extra byte lets the first read find its end
        m_WindowCapacity = static_cast<std::size_t>(std::min<std::uint64_t>(source.GetSize() + 1, kWindowSize));
    m_Window = std::make_unique_for_overwrite<char[]>(m_WindowCapacity + kPadding);
    m_Position = m_End = m_Window.get();
    ReadWindow();
}

InputStream::InputStream(std::string bytes) {
    HoldInMemory(std::move(bytes));
}

InputStream::InputStream(const PaddedView& bytes) {
    m_EndOffset = bytes.m_Size;
    SetWindow(bytes.m_Bytes, bytes.m_Bytes + bytes.m_Size);
}

void InputStream::SetWatcher(ByteSink& watcher) {
    m_Watcher = &watcher;
    watcher.WriteBlock(m_Position, GetAvailable());
}

std::uint64_t InputStream::GetOffset() const {
    return m_EndOffset - GetAvailable();
}

std::uint64_t InputStream::GetBytesLeft() const {
    const std::uint64_t size = m_Source != nullptr ? m_Source->GetSize() : 0;
    return GetAvailable() + (size > m_EndOffset ? size - m_EndOffset : 0) + m_SealedBytes;
}

void InputStream::Seal() {
    m_SealedBytes = GetBytesLeft();
    m_EndOffset = GetOffset();
    m_Source = nullptr;
    SetWindow(m_Position, m_Position);
}

std::uint64_t InputStream::GetSize() const {
    return m_Utf16Size != 0 ? m_Utf16Size : GetOffset() + GetBytesLeft();
}

bool InputStream::Refill(std::size_t count) {
    while (GetAvailable() < count && m_Source != nullptr)
        ReadWindow();
    return GetAvailable() >= count;
}

std::uint64_t InputStream::Skip(std::uint64_t count) {
    std::uint64_t done = 0;
    while (done < count && Ensure(1)) {
        const std::uint64_t step = std::min<std::uint64_t>(count - done, GetAvailable());
        m_Position += step;
        done += step;
    }
    return done;
}

// Moves what is left to the window's start and fills up behind it.
void InputStream::ReadWindow() {
    const std::size_t kept = GetAvailable();
    char* const window = m_Window.get();
    std::memmove(window, m_Position, kept);
    const std::size_t wanted = m_WindowCapacity - kept;
    const std::size_t count = m_Source->Read(window + kept, wanted);
    m_EndOffset += count;
    if (m_Watcher != nullptr)
        m_Watcher->WriteBlock(window + kept, count);
    SourceError error = SourceError::None;
    if (count < wanted || wanted == 0) { // nothing wanted: a small file grew beyond its window after it was opened
        error = m_Source->GetError();
        m_Source = nullptr;
    }
    std::memset(window + kept + count, 0, kPadding);
    SetWindow(window, window + kept + count);

    const PositionScope scope(m_Reader);
    if (error == SourceError::Endless)
        ReportMessage(Message::EndlessSource, {m_Path, m_EndOffset});
    else if (error == SourceError::Failed)
        ReportMessage(Message::FailedSource, {m_Path});
}

void InputStream::SetWindow(const char* position, const char* end) {
    m_Position = position;
    m_End = end;
    if (m_Source == nullptr)
        m_LookaheadLimit = end;
    else
        m_LookaheadLimit = GetAvailable() > kLookahead ? end - kLookahead : position;
}

void InputStream::BringIntoMemory() {
    if (m_Source == nullptr)
        return;
    std::string bytes;
    do {
        bytes.append(m_Position, GetAvailable());
        m_Position = m_End;
        ReadWindow();
    } while (m_Source != nullptr);
    bytes.append(m_Position, GetAvailable());
    const std::uint64_t endOffset = m_EndOffset;
    HoldInMemory(std::move(bytes));
    m_EndOffset = endOffset;
}

void InputStream::ConvertFromUtf16() {
    BringIntoMemory();
    m_Utf16Size = m_EndOffset;
    std::string bytes;
    bytes.reserve(GetAvailable());
    const auto unitAt = [](const char* position) {
        return static_cast<char16_t>(static_cast<unsigned char>(position[0]) | static_cast<unsigned char>(position[1])
                                                                                   << 8);
    };
    const char* position = m_Position;
    while (m_End - position >= 2) {
        char16_t units[2] = {unitAt(position), 0};
        position += 2;
        const bool hasTwo = IsHighSurrogate(units[0]) && m_End - position >= 2;
        if (hasTwo)
            units[1] = unitAt(position);
        const char16_t* next = units;
        char encoded[kMaxUtf8Bytes];
        bytes.append(encoded, EncodeUtf8(encoded, DecodeUtf16(next, units + (hasTwo ? 2 : 1))));
        position += (next - units - 1) * 2;
    }
    if (position != m_End) { // half a unit
        char encoded[kMaxUtf8Bytes];
        bytes.append(encoded, EncodeUtf8(encoded, kReplacementCharacter));
    }
    HoldInMemory(std::move(bytes));
}

void InputStream::HoldInMemory(std::string bytes) {
    m_Memory = std::move(bytes);
    m_Window.reset();
    const std::size_t size = m_Memory.size();
    m_Memory.append(kPadding, '\0');
    m_EndOffset = size;
    m_Source = nullptr;
    SetWindow(m_Memory.data(), m_Memory.data() + size);
}

} // namespace Corvid

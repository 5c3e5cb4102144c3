#include "Corvid/Files/ResultFile.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "Corvid/Files/FileBytes.h"
#include "Corvid/Files/SystemError.h"

namespace Corvid {

ResultFile::ResultFile(std::string path, Use use, bool makesFolders, bool isNew)
    : m_Path(std::move(path)),
      m_Use(use),
      m_MakesFolders(makesFolders),
      m_HeldStatus(isNew ? std::nullopt : GetStatusOfName(m_Path)) {
    const bool holdsBytes = m_HeldStatus && m_HeldStatus->m_Type == FileType::File && m_HeldStatus->m_Size > 0;
    if (!holdsBytes || !m_Held.Open(EnginePath(m_Path)))
        Differ();
}

void ResultFile::WriteBlock(const char* bytes, std::size_t count) {
    if (m_State == State::Comparing && IsHeldNext(bytes, count)) {
        m_HeldBytes += count;
        return;
    }
    if (m_State == State::Comparing)
        Differ();
    Write(bytes, count);
}

ResultFile::Fate ResultFile::Finish() {
    if (m_State == State::Comparing && m_HeldBytes == m_Held.GetSize())
        return Fate::Unchanged;
    if (m_State == State::Comparing) // the destination holds more
        Differ();
    if (m_State == State::Writing && m_Destination.Close() != 0)
        Fail(LastSystemError());
    return m_State == State::Failed ? Fate::Failed : Fate::Changed;
}

bool ResultFile::IsHeldNext(const char* bytes, std::size_t count) {
    char window[16 * 1024];
    while (count > 0) {
        const std::size_t wanted = std::min(count, sizeof window);
        if (m_Held.Read(window, wanted) != wanted || std::memcmp(window, bytes, wanted) != 0)
            return false;
        bytes += wanted;
        count -= wanted;
    }
    return true;
}

void ResultFile::Differ() {
    m_State = State::Differing;
    if (m_Use == Use::Write)
        BeginWriting();
}

// With what came before the first difference: these bytes are only in the destination.
void ResultFile::BeginWriting() {
    std::string start(static_cast<std::size_t>(m_HeldBytes), '\0');
    m_Held.Close();
    if (m_HeldBytes > 0) {
        const bool isRead = m_Held.Open(EnginePath(m_Path)) && m_Held.Read(start.data(), start.size()) == start.size();
        m_Held.Close();
        if (!isRead || GetStatusOfName(m_Path) != m_HeldStatus)
            return Fail("another program changes it; please convert it once more");
    }
    const auto seen = m_HeldStatus ? DestinationFile::Seen::Unknown : DestinationFile::Seen::Nothing;
    if (std::string error = OpenDestination(m_Destination, m_Path, m_MakesFolders, seen); !error.empty())
        return Fail(std::move(error));
    m_State = State::Writing;
    Write(start.data(), start.size());
}

void ResultFile::Write(const char* bytes, std::size_t count) {
    if (m_State == State::Writing && m_Destination.Write(bytes, count) != count)
        Fail(LastSystemError());
}

void ResultFile::Fail(std::string error) {
    m_State = State::Failed;
    m_Error = std::move(error);
}

} // namespace Corvid

#include "Engine/File/DestinationFile.h"

#include "Engine/File/DestinationTarget.h"
#include "Engine/File/OpenDestination.h"

namespace Corvid {

DestinationFile::DestinationFile(int patienceMilliseconds) : m_PatienceMilliseconds(patienceMilliseconds) {}
DestinationFile::~DestinationFile() = default;

bool DestinationFile::Open(std::u16string_view path, Seen seen) {
    m_Target.reset();
    m_Target = seen == Seen::Nothing ? OpenNewDestination(path, m_PatienceMilliseconds)
                                     : OpenDestination(path, m_PatienceMilliseconds);
    m_HasFailed = m_Target == nullptr;
    return m_Target != nullptr;
}

std::size_t DestinationFile::Write(const char* bytes, std::size_t count) {
    if (m_HasFailed)
        return 0;
    const std::size_t taken = m_Target->Write(bytes, count);
    m_HasFailed = taken != count;
    return taken;
}

int DestinationFile::Close() {
    const int result = m_HasFailed ? kFailedToClose : m_Target->Close();
    m_Target.reset();
    m_HasFailed = true;
    return result;
}

} // namespace Corvid

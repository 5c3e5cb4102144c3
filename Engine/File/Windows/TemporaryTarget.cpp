#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

#include "Engine/File/Retry.h"
#include "Engine/File/TemporaryName.h"
#include "Engine/File/Windows/DestinationTargets.h"
#include "Engine/File/Windows/Handle.h"
#include "Engine/File/Windows/SystemPath.h"

namespace Corvid {

namespace {

constexpr int kLongestMoveMilliseconds = 2000; // a scanner lets go sooner, and an editor not at all
constexpr DWORD kKeptAttributes =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

// At a kill, the temporary stays behind and the destination stands as it was. A full disk fails a write; the temporary
// then goes. Two runs have a temporary each, and each move is one step.
class TemporaryTarget final : public DestinationTarget {
public:
    TemporaryTarget(Handle file, std::wstring name, std::wstring path, int patienceMilliseconds)
        : m_File(std::move(file)),
          m_Name(std::move(name)),
          m_Path(std::move(path)),
          m_PatienceMilliseconds(patienceMilliseconds) {}

    ~TemporaryTarget() override {
        m_File.Close();
        if (!m_Name.empty() && !DeleteFileW(m_Name.c_str()) &&
            SetFileAttributesW(m_Name.c_str(), FILE_ATTRIBUTE_NORMAL))
            DeleteFileW(m_Name.c_str());
    }

    std::size_t Write(const char* bytes, std::size_t count) override { return WriteFully(m_File.Get(), bytes, count); }

    int Close() override {
        if (const int result = m_File.Close(); result != 0)
            return result;
        if (!MoveOver())
            return CopyInPlace();
        m_Name.clear();
        return 0;
    }

private:
    bool MoveOver() const;
    int CopyInPlace() const; // for a file that others keep open, but share

    Handle m_File;
    std::wstring m_Name; // empty once moved
    std::wstring m_Path;
    int m_PatienceMilliseconds;
};

bool TemporaryTarget::MoveOver() const {
    const DWORD old = GetFileAttributesW(m_Path.c_str());
    if (old != INVALID_FILE_ATTRIBUTES && (old & kKeptAttributes) != 0)
        SetFileAttributesW(m_Name.c_str(), old & kKeptAttributes);
    bool isMoved = false;
    RetryFor(std::min(m_PatienceMilliseconds, kLongestMoveMilliseconds), [&] {
        isMoved = MoveFileExW(m_Name.c_str(), m_Path.c_str(), MOVEFILE_REPLACE_EXISTING);
        const DWORD error = isMoved ? ERROR_SUCCESS : GetLastError();
        return error != ERROR_ACCESS_DENIED && !IsBusy(error);
    });
    return isMoved;
}

int TemporaryTarget::CopyInPlace() const {
    const Handle temporary = OpenHandle(m_Name, GENERIC_READ, OPEN_EXISTING, m_PatienceMilliseconds);
    Handle destination = OpenHandle(m_Path, GENERIC_WRITE, OPEN_EXISTING, m_PatienceMilliseconds);
    if (!temporary.IsOpen() || !destination.IsOpen() || GetFileType(destination.Get()) != FILE_TYPE_DISK)
        return -1;
    const auto target = MakeInPlaceTarget(std::move(destination), m_PatienceMilliseconds);
    char buffer[16384];
    for (;;) {
        DWORD count = 0;
        if (!ReadFile(temporary.Get(), buffer, sizeof buffer, &count, nullptr) || target->Write(buffer, count) != count)
            return -1;
        if (count == 0)
            return target->Close();
    }
}

// The access list of the file at `path`; empty when there is none to keep.
std::string AccessList(const std::wstring& path) {
    DWORD size = 0;
    GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::string descriptor(size, '\0');
    if (size == 0 || !GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor.data(), size, &size))
        descriptor.clear();
    return descriptor;
}

// Names need only differ between runs: creation is exclusive.
std::uint64_t NextNumber(int attempt) {
    LARGE_INTEGER now{};
    QueryPerformanceCounter(&now);
    const auto place = reinterpret_cast<std::uintptr_t>(&now); // random by the system's layout
    return (static_cast<std::uint64_t>(now.QuadPart) ^ place) * 0x9E3779B97F4A7C15 +
           static_cast<std::uint64_t>(attempt);
}

} // namespace

std::unique_ptr<DestinationTarget> MakeTemporaryTarget(const std::wstring& path, int patienceMilliseconds) {
    std::size_t folderLength = path.find_last_of(L"\\/") + 1; // npos + 1 is 0: no folder
    if (folderLength == 0 && path.size() > 1 && path[1] == L':')
        folderLength = 2; // the current folder of a drive
    if (folderLength == path.size())
        return nullptr;
    std::string accessList = AccessList(path);
    SECURITY_ATTRIBUTES security{sizeof security, accessList.data(), FALSE};
    for (int i = 0; i < kMostTemporaryNames; ++i) {
        const TemporaryName name = MakeTemporaryName(GetCurrentProcessId(), NextNumber(i));
        const std::wstring wideName(name.data(), name.data() + std::strlen(name.data()));
        std::wstring temporary = SystemPath(path.substr(0, folderLength) + wideName);
        Handle file = OpenHandle(temporary, GENERIC_WRITE, CREATE_NEW, patienceMilliseconds,
                                 accessList.empty() ? nullptr : &security);
        if (file.IsOpen())
            return std::make_unique<TemporaryTarget>(std::move(file), std::move(temporary), path, patienceMilliseconds);
        if (GetLastError() != ERROR_FILE_EXISTS && GetLastError() != ERROR_ALREADY_EXISTS)
            return nullptr;
    }
    return nullptr;
}

} // namespace Corvid

#include "Corvid/Files/FileTurns.h"

#include <algorithm>
#include <vector>

namespace Corvid {

FileTurns::FileTurns(std::span<const ListedFile> files) {
    std::vector<FileIdentity> identities;
    for (const ListedFile& file : files) {
        if (file.m_IsInShard && file.m_Error.empty())
            identities.push_back(file.m_Identity);
    }
    std::sort(identities.begin(), identities.end());
    for (auto same = identities.begin();; ++same) {
        same = std::adjacent_find(same, identities.end());
        if (same == identities.end())
            break;
        m_Turns.try_emplace(*same);
    }
}

std::unique_lock<std::mutex> FileTurns::Await(const ListedFile& file) {
    const auto turn = m_Turns.find(file.m_Identity);
    return turn != m_Turns.end() ? std::unique_lock(turn->second) : std::unique_lock<std::mutex>();
}

} // namespace Corvid

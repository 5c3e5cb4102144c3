#pragma once

#include <map>
#include <mutex>
#include <span>

#include "Corvid/Files/FileList.h"

namespace Corvid {

// Lets the names of one file take turns: a thread that rewrites a file in place would leave another one, which knows it
// by a link, with half of it.
class FileTurns {
public:
    // For the files of the list that have several names there.
    explicit FileTurns(std::span<const ListedFile> files);

    // Holds nothing for a file of one name.
    std::unique_lock<std::mutex> Await(const ListedFile& file);

private:
    std::map<FileIdentity, std::mutex> m_Turns;
};

} // namespace Corvid

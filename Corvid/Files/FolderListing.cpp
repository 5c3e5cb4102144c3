#include "Corvid/Files/FolderListing.h"

#include <algorithm>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <iterator>
#include <mutex>
#include <new>
#include <thread>
#include <utility>

namespace Corvid {

namespace {

class Listing {
public:
    Listing(const std::string& folder, bool (*wants)(const FolderEntry&), int jobs)
        : m_Folder(folder), m_Wants(wants), m_Jobs(static_cast<std::size_t>(std::max(jobs, 1))) {}
    ~Listing() { EndThreads(); }
    Listing(const Listing&) = delete;
    Listing& operator=(const Listing&) = delete;

    bool Read();
    std::vector<FolderEntry> TakeEntries();

private:
    // What one thread asks about at a time: long against the handing over, short against the whole.
    static constexpr std::size_t kBlockSize = 256;

    struct Block {
        std::vector<FolderEntry> m_Entries;
        bool m_IsDone = false;
    };

    void HandOver(std::vector<FolderEntry> entries);
    void StartThread();
    void WorkThrough();
    Block* TakeNext();
    void Ask(Block& block);
    void TellWhole(); // nothing more will be handed over
    void EndThreads();

    const std::string& m_Folder;
    bool (*const m_Wants)(const FolderEntry&);
    const std::size_t m_Jobs;
    std::deque<Block> m_Blocks; // each stays where it is when others are added
    std::size_t m_NextBlock = 0;
    bool m_IsWhole = false;
    std::mutex m_Mutex;
    std::condition_variable m_HasMore;
    std::vector<std::jthread> m_Threads;
};

bool Listing::Read() {
    std::vector<FolderEntry> entries;
    const bool isRead = ReadFolder(m_Folder, [&](FolderEntry entry) {
        entries.push_back(std::move(entry));
        if (entries.size() == kBlockSize)
            HandOver(std::exchange(entries, {}));
    });
    if (!isRead)
        return false;
    HandOver(std::move(entries));
    TellWhole();
    WorkThrough();
    EndThreads();
    for (Block& block : m_Blocks) {
        if (!block.m_IsDone) // a thread lacked the memory for it
            Ask(block);
    }
    return true;
}

std::vector<FolderEntry> Listing::TakeEntries() {
    std::size_t count = 0;
    for (const Block& block : m_Blocks)
        count += block.m_Entries.size();
    std::vector<FolderEntry> all;
    all.reserve(count);
    for (Block& block : m_Blocks)
        all.insert(all.end(), std::move_iterator(block.m_Entries.begin()), std::move_iterator(block.m_Entries.end()));
    return all;
}

void Listing::HandOver(std::vector<FolderEntry> entries) {
    std::size_t left = 0;
    {
        const std::lock_guard lock(m_Mutex);
        m_Blocks.push_back({std::move(entries)});
        left = m_Blocks.size() - m_NextBlock;
    }
    m_HasMore.notify_one();
    if (left > 1 && m_Threads.size() + 1 < m_Jobs)
        StartThread();
}

void Listing::StartThread() {
    try {
        m_Threads.emplace_back([this] {
            try {
                WorkThrough();
            } catch (const std::bad_alloc&) { // the caller's thread asks again, and may say so
            }
        });
    } catch (const std::exception&) { // the system gives no thread, or no memory for one
    }
}

void Listing::WorkThrough() {
    while (Block* const block = TakeNext())
        Ask(*block);
}

// Waits for more to be read; null: that was all.
Listing::Block* Listing::TakeNext() {
    std::unique_lock lock(m_Mutex);
    m_HasMore.wait(lock, [this] { return m_NextBlock < m_Blocks.size() || m_IsWhole; });
    return m_NextBlock < m_Blocks.size() ? &m_Blocks[m_NextBlock++] : nullptr;
}

void Listing::Ask(Block& block) {
    AskStatuses(block.m_Entries, m_Folder, m_Wants);
    block.m_IsDone = true;
}

void Listing::TellWhole() {
    {
        const std::lock_guard lock(m_Mutex);
        m_IsWhole = true;
    }
    m_HasMore.notify_all();
}

void Listing::EndThreads() {
    TellWhole();
    m_Threads.clear(); // waits for them
}

} // namespace

std::optional<std::vector<FolderEntry>> ListFolder(const std::string& path) {
    std::vector<FolderEntry> entries;
    const bool isRead = ReadFolder(path, [&](FolderEntry entry) { entries.push_back(std::move(entry)); });
    return isRead ? std::optional(std::move(entries)) : std::nullopt;
}

std::optional<std::vector<FolderEntry>> ListFolder(const std::string& path, bool (*wants)(const FolderEntry&),
                                                   int jobs) {
    Listing listing(path, wants, jobs);
    return listing.Read() ? std::optional(listing.TakeEntries()) : std::nullopt;
}

} // namespace Corvid

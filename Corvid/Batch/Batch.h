#pragma once

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <new>
#include <optional>
#include <span>
#include <thread>
#include <utility>
#include <vector>

#include "Corvid/Batch/Interrupt.h"
#include "Corvid/Batch/OwnDescriptors.h"

namespace Corvid {

// The order in which items are begun: as they are, but for the few that are far larger than the rest, so that none of
// these is left over for one thread at the end.
std::vector<std::size_t> OrderOfWork(std::span<const std::uint64_t> sizes);

// How many processors are at hand.
int DefaultJobs();

// Works on many items at once and hands the results on in the order of the items, on the caller's thread. Results that
// wait for an earlier one are bounded in number, so memory is bounded by what is in work.
//
// Small files are done within microseconds, so the threads share next to nothing: each has a lane for its results, and
// the caller's thread collects them from time to time.
//
// A thread that runs out of memory ends, and so gives some back; the caller's does what it leaves. Run() throws
// std::bad_alloc only if that is not enough either.
template <class Result> class Batch {
public:
    using Work = std::function<Result(std::size_t)>;
    using Take = std::function<bool(std::size_t, Result)>; // false: the rest is not wanted

    Batch(std::vector<std::size_t> order, Work work, Take take)
        : m_Order(std::move(order)), m_Work(std::move(work)), m_Take(std::move(take)) {}

    // The number of results that were taken: fewer than there are items after an interruption.
    std::size_t Run(int jobs) {
        if (jobs <= 1 || m_Order.size() <= 1)
            return RunAlone();
        const std::size_t wanted = std::min<std::size_t>(static_cast<std::size_t>(jobs), m_Order.size());
        std::vector<Lane> lanes(wanted);
        m_ThreadCount = wanted;
        std::vector<std::jthread> threads;
        threads.reserve(wanted);
        try {
            for (Lane& lane : lanes)
                threads.emplace_back([this, &lane] {
                    TakeOwnDescriptors();
                    AwaitOthers();
                    WorkThrough(lane);
                });
        } catch (const std::exception&) { // the system gives no more of them, or no memory for one
            SetThreadCount(threads.size());
            if (threads.empty())
                return RunAlone();
        }
        try {
            return HandOn(lanes);
        } catch (...) {
            const std::lock_guard lock(m_Mutex);
            m_IsStopped = true;
            m_HasRoom.notify_all();
            throw;
        }
    }

private:
    using Results = std::map<std::size_t, Result>;

    // What one thread has done and nobody has collected. On cache lines of its own.
    struct alignas(64) Lane {
        std::mutex m_Mutex;
        std::vector<std::pair<std::size_t, Result>> m_Done;
        std::optional<std::size_t> m_LeftItem; // that there was too little memory for
        std::optional<Result> m_LeftResult;    // of that item, if it got so far
    };

    static constexpr std::size_t kMostWaiting = 2048; // results that an earlier one keeps waiting
    static constexpr std::chrono::milliseconds kGathering{2};

    std::size_t RunAlone() {
        std::size_t taken = 0;
        for (std::size_t item = 0; item < m_Order.size() && !IsInterrupted(); ++item, ++taken) {
            if (!m_Take(item, m_Work(item)))
                return taken + 1;
        }
        return taken;
    }

    // Until all threads have their own descriptors: a file that one has open by then would stay open in another's.
    void AwaitOthers() {
        std::unique_lock lock(m_Mutex);
        ++m_ThreadsReady;
        m_AreThreadsReady.notify_all();
        m_AreThreadsReady.wait(lock, [this] { return m_ThreadsReady >= m_ThreadCount; });
    }

    void SetThreadCount(std::size_t count) {
        const std::lock_guard lock(m_Mutex);
        m_ThreadCount = count;
        m_AreThreadsReady.notify_all();
    }

    void WorkThrough(Lane& lane) {
        for (;;) {
            if (m_Waiting >= kMostWaiting)
                AwaitRoom();
            const std::optional<std::size_t> item = TakeNext();
            if (!item || !WorkOn(*item, lane))
                break;
        }
        const std::lock_guard lock(m_Mutex);
        ++m_ThreadsDone;
        m_AreThreadsDone.notify_one();
    }

    std::optional<std::size_t> TakeNext() {
        const std::size_t place = m_IsStopped || IsInterrupted() ? m_Order.size() : m_NextInOrder++;
        return place < m_Order.size() ? std::optional(m_Order[place]) : std::nullopt;
    }

    // False where memory is short.
    bool WorkOn(std::size_t item, Lane& lane) {
        std::optional<Result> result;
        try {
            result.emplace(m_Work(item));
            ++m_Waiting;
            const std::lock_guard lock(lane.m_Mutex);
            lane.m_Done.emplace_back(item, std::move(*result));
            return true;
        } catch (const std::bad_alloc&) {
            m_Waiting += result ? 0 : 1;
            const std::lock_guard lock(lane.m_Mutex);
            lane.m_LeftItem = item;
            lane.m_LeftResult = std::move(result);
            return false;
        }
    }

    void AwaitRoom() {
        std::unique_lock lock(m_Mutex);
        m_HasRoom.wait(lock, [this] { return m_IsStopped || m_Waiting < kMostWaiting || IsNextBehind(); });
    }

    // The item that everything waits for may not be held up itself.
    bool IsNextBehind() const {
        const std::size_t place = m_NextInOrder;
        return place < m_Order.size() && m_Order[place] <= m_NextToTake;
    }

    std::size_t HandOn(std::vector<Lane>& lanes) {
        Results results;
        std::size_t taken = 0;
        bool isLast = false;
        while (!m_IsStopped && !isLast) {
            isLast = AwaitResults();
            Collect(lanes, results);
            if (const std::optional<std::size_t> item = isLast ? TakeNext() : std::nullopt) { // no thread is left
                results.emplace(*item, m_Work(*item));
                ++m_Waiting;
                isLast = false;
            }
            // At the end, what was done behind a gap is handed on, too.
            while (!m_IsStopped && !results.empty() && (isLast || results.begin()->first == m_NextToTake)) {
                auto ready = results.extract(results.begin());
                m_NextToTake = ready.key() + 1;
                --m_Waiting;
                ++taken;
                m_IsStopped = !m_Take(ready.key(), std::move(ready.mapped()));
            }
            const std::lock_guard lock(m_Mutex); // whoever looks for room now does so before or behind this
            m_HasRoom.notify_all();
        }
        return taken;
    }

    // For a moment: to wake up for every small file would cost more than the file. True: all threads are done.
    bool AwaitResults() {
        std::unique_lock lock(m_Mutex);
        return m_AreThreadsDone.wait_for(lock, kGathering, [&] { return m_ThreadsDone == m_ThreadCount; });
    }

    void Collect(std::vector<Lane>& lanes, Results& results) {
        for (Lane& lane : lanes) {
            std::vector<std::pair<std::size_t, Result>> done;
            std::optional<std::size_t> leftItem;
            std::optional<Result> leftResult;
            {
                const std::lock_guard lock(lane.m_Mutex);
                done.swap(lane.m_Done);
                leftItem.swap(lane.m_LeftItem);
                leftResult.swap(lane.m_LeftResult);
            }
            for (auto& [item, result] : done)
                results.emplace(item, std::move(result));
            if (leftItem)
                results.emplace(*leftItem, leftResult ? std::move(*leftResult) : m_Work(*leftItem));
        }
    }

    const std::vector<std::size_t> m_Order;
    const Work m_Work;
    const Take m_Take;
    std::atomic<bool> m_IsStopped = false;
    // What all threads change stands on cache lines of its own, apart from what they only read.
    alignas(64) std::atomic<std::size_t> m_NextInOrder = 0; // the next place in m_Order that nobody has begun
    alignas(64) std::atomic<std::size_t> m_Waiting = 0;     // results that are done and have not been handed on
    alignas(64) std::atomic<std::size_t> m_NextToTake = 0;  // the item whose turn it is to be handed on
    std::mutex m_Mutex;
    std::condition_variable m_HasRoom;
    std::condition_variable m_AreThreadsReady;
    std::condition_variable m_AreThreadsDone;
    std::size_t m_ThreadCount = 0;
    std::size_t m_ThreadsReady = 0;
    std::size_t m_ThreadsDone = 0;
};

} // namespace Corvid

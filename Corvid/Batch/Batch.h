#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <span>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "Corvid/Batch/Interrupt.h"

namespace Corvid {

// The order in which items are begun: as they are, but for the few that are far larger than the rest, so that none of
// these is left over for one thread at the end.
std::vector<std::size_t> OrderOfWork(std::span<const std::uint64_t> sizes);

// How many processors are at hand.
int DefaultJobs();

// Works on many items at once and hands the results on in the order of the items, on the caller's thread. Results that
// wait for an earlier one are bounded in number, so memory is bounded by what is in work.
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
        std::vector<std::jthread> threads;
        try {
            for (std::size_t i = 0; i < std::min<std::size_t>(static_cast<std::size_t>(jobs), m_Order.size()); ++i)
                threads.emplace_back([this] { WorkThrough(); });
        } catch (const std::system_error&) { // the system gives no more of them
            if (threads.empty())
                return RunAlone();
        }
        return HandOn(threads.size());
    }

private:
    using Results = std::map<std::size_t, Result>;

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

    void WorkThrough() {
        std::unique_lock lock(m_Mutex);
        for (;;) {
            m_MayGoOn.wait(lock, [this] { return m_IsStopped || m_Results.size() < kMostWaiting || IsNextBehind(); });
            if (m_IsStopped || IsInterrupted() || m_NextInOrder == m_Order.size())
                break;
            const std::size_t item = m_Order[m_NextInOrder++];
            lock.unlock();
            Result result = m_Work(item);
            lock.lock();
            m_Results.emplace(item, std::move(result));
            if (AreManyReady())
                m_HasResults.notify_one();
        }
        ++m_ThreadsDone;
        m_HasResults.notify_one();
    }

    // The item that everything waits for may not be held up itself.
    bool IsNextBehind() const { return m_NextInOrder < m_Order.size() && m_Order[m_NextInOrder] <= m_NextToTake; }

    // Results are gathered for a moment: to wake up for every small file would cost more than the file.
    std::size_t HandOn(std::size_t threadCount) {
        std::size_t taken = 0;
        bool isLast = false;
        bool isWanted = true;
        std::unique_lock lock(m_Mutex);
        while (isWanted && !isLast) {
            m_HasResults.wait_for(lock, kGathering, [&] { return m_ThreadsDone == threadCount || AreManyReady(); });
            isLast = m_ThreadsDone == threadCount;
            std::vector<typename Results::node_type> ready = ExtractReady(isLast);
            m_MayGoOn.notify_all();
            lock.unlock();
            for (std::size_t i = 0; i < ready.size() && isWanted; ++i, ++taken)
                isWanted = m_Take(ready[i].key(), std::move(ready[i].mapped()));
            lock.lock();
        }
        m_IsStopped = true;
        m_MayGoOn.notify_all();
        return taken;
    }

    bool AreManyReady() const { return m_Results.size() >= kMostWaiting / 2 && m_Results.contains(m_NextToTake); }

    // Those up to the first that is still in work; at the end, what was done behind a gap, too.
    std::vector<typename Results::node_type> ExtractReady(bool isLast) {
        std::vector<typename Results::node_type> ready;
        while (!m_Results.empty() && (isLast || m_Results.begin()->first == m_NextToTake)) {
            ready.push_back(m_Results.extract(m_Results.begin()));
            m_NextToTake = ready.back().key() + 1;
        }
        return ready;
    }

    std::vector<std::size_t> m_Order;
    Work m_Work;
    Take m_Take;
    std::mutex m_Mutex;
    std::condition_variable m_HasResults;
    std::condition_variable m_MayGoOn;
    Results m_Results;
    std::size_t m_NextInOrder = 0;
    std::size_t m_NextToTake = 0;
    std::size_t m_ThreadsDone = 0;
    bool m_IsStopped = false;
};

} // namespace Corvid

#pragma once

#include <algorithm>
#include <array>
#include <atomic>
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
#include <type_traits>
#include <utility>
#include <vector>

#include "Corvid/Batch/Interrupt.h"
#include "Corvid/Batch/WorkThread.h"

namespace Corvid {

// The order in which items are begun.
struct WorkOrder {
    std::vector<std::size_t> m_Items;
    std::size_t m_EarlyCount = 0; // the first of them, which are begun before their turn; the others stand as they are
    std::size_t m_AtOnce = 1;     // how many a thread begins together, kMostAtOnce at the most
};

inline constexpr std::size_t kMostAtOnce = 8;

// As they are, but for the few that are far larger than the rest: begun early, none of these is left over for one
// thread at the end. Where all are tiny, a thread takes several at once.
WorkOrder OrderOfWork(std::span<const std::uint64_t> sizes);

// How many processors are at hand.
int DefaultJobs();

// Works on many items at once and hands the results on in the order of the items. Results that wait for an earlier one
// are bounded in number, so memory is bounded by what is in work.
//
// Small files are done within microseconds, so the threads share next to nothing, and none waits for another: whoever
// has done the item whose turn it is hands it on, and what waited for it. The caller's thread is one of them.
//
// Where one lacks memory all others end, which gives some back, and the caller's does the rest alone. Run() throws
// std::bad_alloc only if that is not enough either.
template <class Result> class Batch {
    static_assert(std::is_nothrow_move_constructible_v<Result>); // what waits asks for no memory

public:
    using Work = std::function<Result(std::size_t)>; // from several threads
    // From one at a time; false: the rest is not wanted. After a std::bad_alloc it may be called again with the result.
    using Take = std::function<bool(std::size_t, Result&)>;

    Batch(WorkOrder order, Work work, Take take)
        : m_Order(std::move(order)), m_Work(std::move(work)), m_Take(std::move(take)) {}

    // The number of results that were taken: fewer than there are items after an interruption.
    std::size_t Run(int jobs) {
        const std::size_t wanted = std::min(static_cast<std::size_t>(std::max(jobs, 1)), m_Order.m_Items.size());
        if (wanted <= 1)
            return RunAlone();
        m_Places = std::vector<Place>(std::min(kMostWaiting, m_Order.m_Items.size()));
        for (std::size_t i = 0; i < m_Order.m_EarlyCount; ++i)
            m_EarlyPlaces.try_emplace(m_Order.m_Items[i]);
        m_LeftItems.reserve(wanted * m_Order.m_AtOnce);
        {
            std::vector<std::jthread> threads;
            try {
                while (threads.size() + 1 < wanted)
                    threads.emplace_back([this] { WorkThrough(); });
            } catch (const std::exception&) { // the system gives no more of them, or no memory for one
            }
            WorkThrough();
        }
        DoWhatIsLeft();
        if (m_Failure)
            std::rethrow_exception(m_Failure);
        return m_TakenCount;
    }

private:
    using Items = std::span<const std::size_t>;

    // Where a result waits for its turn.
    struct alignas(64) Place {
        std::atomic<bool> m_IsFilled = false;
        std::optional<Result> m_Result;
    };

    static constexpr std::size_t kMostWaiting = 2048; // results that an earlier one keeps waiting

    std::size_t RunAlone() {
        std::size_t taken = 0;
        for (std::size_t item = 0; item < m_Order.m_Items.size() && !IsInterrupted(); ++item, ++taken) {
            Result result = m_Work(item);
            if (!m_Take(item, result))
                return taken + 1;
        }
        return taken;
    }

    void WorkThrough() {
        BecomeWorkThread();
        std::array<std::optional<Result>, kMostAtOnce> results;
        for (Items items = BeginNext(); !items.empty(); items = BeginNext()) {
            std::size_t done = 0;
            while (done < items.size() && WorkOn(items[done], results[done]))
                ++done;
            for (std::size_t i = 0; i < done; ++i)
                Deliver(items[i], std::move(*results[i]));
            if (done < items.size()) {
                Leave(items.subspan(done));
                return;
            }
        }
    }

    Items BeginNext() {
        const Items all(m_Order.m_Items);
        if (m_IsStopped || m_IsMemoryShort || IsInterrupted())
            return {};
        const std::size_t next = std::min(m_NextInOrder.fetch_add(m_Order.m_AtOnce), all.size());
        return all.subspan(next, std::min(m_Order.m_AtOnce, all.size() - next));
    }

    // False where memory is short.
    bool WorkOn(std::size_t item, std::optional<Result>& result) {
        result.reset();
        try {
            if (AwaitPlaceFor(item))
                result.emplace(m_Work(item));
        } catch (const std::bad_alloc&) {
            result.reset();
        }
        return result.has_value();
    }

    // Items other than the early ones are begun in order, so what this waits for is in work. False: it is in vain.
    bool AwaitPlaceFor(std::size_t item) {
        const auto hasPlace = [&] { return item < m_NextToTake + m_Places.size() || m_EarlyPlaces.contains(item); };
        if (hasPlace())
            return true;
        ++m_WaitingThreads;
        std::unique_lock lock(m_Mutex);
        m_HasMoved.wait(lock, [&] { return m_IsStopped || m_IsMemoryShort || hasPlace(); });
        --m_WaitingThreads;
        return hasPlace();
    }

    void Leave(Items items) {
        {
            const std::lock_guard lock(m_Mutex);
            m_LeftItems.insert(m_LeftItems.end(), items.begin(), items.end()); // there is room for those of each thread
        }
        m_IsMemoryShort = true;
        WakeWaiting();
    }

    void Deliver(std::size_t item, Result result) {
        const bool isTurn = item == m_NextToTake && !m_IsHandingOn.exchange(true);
        if (isTurn && HandOn(item, result)) {
            MoveOnFrom(item);
        } else {
            Place& place = PlaceOf(item);
            place.m_Result.emplace(std::move(result));
            place.m_IsFilled = true;
        }
        if (isTurn)
            m_IsHandingOn = false;
        // A thread that is handing on looks once more after it has let go, so no result is overlooked.
        while (IsNextFilled() && !m_IsHandingOn.exchange(true)) {
            HandOnFilled();
            m_IsHandingOn = false;
        }
    }

    Place& PlaceOf(std::size_t item) {
        const auto early = m_EarlyPlaces.find(item);
        return early != m_EarlyPlaces.end() ? early->second : m_Places[item % m_Places.size()];
    }

    bool IsNextFilled() {
        const std::size_t next = m_NextToTake;
        return !m_IsStopped && !m_IsMemoryShort && next < m_Order.m_Items.size() && PlaceOf(next).m_IsFilled;
    }

    void HandOnFilled() {
        while (IsNextFilled())
            HandOnFrom(PlaceOf(m_NextToTake), m_NextToTake);
    }

    void HandOnFrom(Place& place, std::size_t item) {
        if (!HandOn(item, *place.m_Result))
            return;
        place.m_Result.reset();
        place.m_IsFilled = false;
        MoveOnFrom(item);
    }

    // False: the result was not taken.
    bool HandOn(std::size_t item, Result& result) {
        if (m_IsStopped)
            return false;
        try {
            if (!m_Take(item, result))
                m_IsStopped = true;
            ++m_TakenCount;
            return true;
        } catch (const std::bad_alloc&) {
            if (m_IsAlone)
                Fail();
            else
                m_IsMemoryShort = true;
        } catch (...) {
            Fail();
        }
        WakeWaiting();
        return false;
    }

    void Fail() {
        m_Failure = std::current_exception();
        m_IsStopped = true;
    }

    void MoveOnFrom(std::size_t item) {
        m_NextToTake = item + 1;
        WakeWaiting();
    }

    void WakeWaiting() {
        if (m_WaitingThreads == 0)
            return;
        const std::lock_guard lock(m_Mutex); // whoever looks for a place now does so before or behind this
        m_HasMoved.notify_all();
    }

    // The threads are gone.
    void DoWhatIsLeft() {
        m_IsAlone = true;
        m_IsMemoryShort = false;
        HandOnFilled();
        std::sort(m_LeftItems.begin(), m_LeftItems.end());
        DoAlone(m_LeftItems);
        for (Items items = BeginNext(); !items.empty(); items = BeginNext())
            DoAlone(items);
        // After an interruption, what was done behind a gap is handed on, too.
        for (auto& [item, place] : m_EarlyPlaces) {
            if (place.m_IsFilled)
                HandOnFrom(place, item);
        }
    }

    void DoAlone(Items items) {
        for (const std::size_t item : items) {
            if (!m_IsStopped)
                Deliver(item, m_Work(item));
        }
    }

    const WorkOrder m_Order;
    const Work m_Work;
    const Take m_Take;
    std::vector<Place> m_Places; // of an item by its number, but of the early ones
    std::map<std::size_t, Place> m_EarlyPlaces;
    std::atomic<bool> m_IsStopped = false;
    std::atomic<bool> m_IsMemoryShort = false;
    bool m_IsAlone = false; // the caller's thread is the last
    std::atomic<std::size_t> m_WaitingThreads = 0;
    std::mutex m_Mutex;
    std::condition_variable m_HasMoved;
    std::vector<std::size_t> m_LeftItems; // begun, and given up for lack of memory
    std::exception_ptr m_Failure;
    // What changes with every item stands together on a cache line, apart from what is only read.
    alignas(64) std::atomic<std::size_t> m_NextInOrder = 0; // of m_Order: nobody has begun it
    std::atomic<std::size_t> m_NextToTake = 0;              // the item whose turn it is to be handed on
    std::atomic<bool> m_IsHandingOn = false;                // a thread is
    std::size_t m_TakenCount = 0;                           // of the thread that is handing on
};

} // namespace Corvid

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <new>
#include <numeric>
#include <thread>
#include <utility>
#include <vector>

#include "Corvid/Batch/Batch.h"
#include "Corvid/Batch/Interrupt.h"
#include "Corvid/Terminal/Progress.h"

namespace Corvid {

namespace {

WorkOrder OrderOf(std::size_t count, std::size_t atOnce = 1) {
    WorkOrder order;
    order.m_AtOnce = atOnce;
    order.m_Items.resize(count);
    std::iota(order.m_Items.begin(), order.m_Items.end(), std::size_t{0});
    return order;
}

// The last one is large.
WorkOrder OrderWithTheLastFirst(std::size_t count) {
    WorkOrder order = OrderOf(count);
    std::rotate(order.m_Items.begin(), order.m_Items.end() - 1, order.m_Items.end());
    order.m_EarlyCount = 1;
    return order;
}

} // namespace

TEST(BatchTest, ResultsComeInOrderAndFewWait) {
    constexpr std::size_t kCount = 20'000;
    std::atomic<std::size_t> begun = 0;
    std::vector<std::size_t> taken;
    std::size_t furthest = 0;
    Batch<std::size_t> batch(
        OrderWithTheLastFirst(kCount),
        [&](std::size_t item) {
            ++begun;
            return item * 3;
        },
        [&](std::size_t item, std::size_t result) {
            EXPECT_EQ(result, item * 3);
            taken.push_back(item);
            furthest = std::max(furthest, begun - item);
            return true;
        });
    EXPECT_EQ(batch.Run(4), kCount);
    EXPECT_EQ(taken, OrderOf(kCount).m_Items);
    EXPECT_LT(furthest, 2100u); // however slow the taker is
}

TEST(BatchTest, StopsWhenTheRestIsNotWanted) {
    for (int round = 0; round < 200; ++round) {
        int taken = 0;
        Batch<int> batch(
            OrderOf(1000, round % 2 == 0 ? 1 : 8), [](std::size_t) { return 0; },
            [&](std::size_t, int) { return ++taken < 10; });
        ASSERT_EQ(batch.Run(1 + round % 4), 10u);
        ASSERT_EQ(taken, 10);
    }
}

TEST(BatchTest, TheCallerDoesWhatThreadsHaveNoMemoryFor) {
    constexpr std::size_t kCount = 3000;
    const std::thread::id caller = std::this_thread::get_id();
    struct Row {
        WorkOrder m_Order;
        std::size_t m_SoundItems; // in threads
    };
    for (const auto& [order, soundItems] :
         {Row{OrderWithTheLastFirst(kCount), 0}, Row{OrderWithTheLastFirst(kCount), 1},
          Row{OrderWithTheLastFirst(kCount), 2500}, // more than may wait
          Row{OrderOf(kCount, 8), 0}, Row{OrderOf(kCount, 8), 2501}}) {
        std::vector<std::size_t> taken;
        Batch<std::size_t> batch(
            order,
            [&, soundItems = soundItems](std::size_t item) {
                if (std::this_thread::get_id() != caller && item >= soundItems)
                    throw std::bad_alloc();
                return item;
            },
            [&](std::size_t item, std::size_t result) {
                taken.push_back(item);
                return item == result;
            });
        EXPECT_EQ(batch.Run(4), kCount);
        EXPECT_TRUE(std::is_sorted(taken.begin(), taken.end())) << soundItems;
    }
}

TEST(BatchTest, TheCallerTakesWhatThreadsHaveNoMemoryToTake) {
    const std::thread::id caller = std::this_thread::get_id();
    for (const std::size_t atOnce : {1u, 8u}) {
        std::vector<std::size_t> taken;
        Batch<std::size_t> batch(
            OrderOf(3000, atOnce),
            [&](std::size_t item) {
                if (std::this_thread::get_id() == caller && item < 100)
                    std::this_thread::yield(); // for the others to get a turn
                return item;
            },
            [&](std::size_t item, std::size_t result) {
                if (std::this_thread::get_id() != caller)
                    throw std::bad_alloc();
                EXPECT_EQ(item, result);
                taken.push_back(item);
                return true;
            });
        EXPECT_EQ(batch.Run(4), 3000u);
        EXPECT_EQ(taken, OrderOf(3000).m_Items);
    }
}

TEST(BatchTest, EndsWhereMemoryIsShortForTheCallerToo) {
    for (const int jobs : {1, 4}) {
        Batch<int> batch(
            OrderOf(10'000), [](std::size_t) { return 0; },
            [](std::size_t item, int) { return item < 5 ? true : throw std::bad_alloc(); });
        EXPECT_THROW(batch.Run(jobs), std::bad_alloc);
    }
}

// With nothing to wait for but each other, all threads meet where results are handed on.
TEST(BatchTest, NoResultIsOverlooked) {
    for (int round = 0; round < 300; ++round) {
        std::size_t taken = 0;
        Batch<std::size_t> batch(
            round % 2 == 0 ? OrderWithTheLastFirst(50) : OrderOf(50, 3), [](std::size_t item) { return item; },
            [&](std::size_t item, std::size_t result) { return item == result && item == taken++; });
        ASSERT_EQ(batch.Run(4), 50u);
    }
}

#ifndef _WIN32
// A process of its own, as being interrupted stays.
TEST(BatchDeathTest, AnInterruptionEndsWithWhatWasDone) {
    const auto run = [] {
        CatchInterrupts();
        std::vector<std::size_t> taken;
        std::atomic<bool> isLastDone = false;
        Batch<std::size_t> batch(
            OrderWithTheLastFirst(100),
            [&](std::size_t item) {
                while (item == 0 && !isLastDone) {
                }
                if (item == 0)
                    std::raise(SIGINT);
                isLastDone = isLastDone || item == 99;
                return item;
            },
            [&](std::size_t item, std::size_t) {
                taken.push_back(item);
                return true;
            });
        const std::size_t count = batch.Run(2);
        const bool isRight = count == taken.size() && count < 100 && std::is_sorted(taken.begin(), taken.end()) &&
                             taken.front() == 0 && taken.back() == 99;
        std::exit(isRight ? 0 : 1);
    };
    EXPECT_EXIT(run(), ::testing::ExitedWithCode(0), "");
}
#endif

TEST(BatchTest, LargeItemsAreBegunFirst) {
    std::vector<std::uint64_t> sizes(200, 1);
    sizes[150] = 500;
    sizes[199] = 1000;
    const WorkOrder order = OrderOfWork(sizes);
    EXPECT_EQ(order.m_EarlyCount, 2u);
    EXPECT_EQ(order.m_AtOnce, 1u);
    EXPECT_EQ(order.m_Items[0], 199u);
    EXPECT_EQ(order.m_Items[1], 150u);
    EXPECT_EQ(order.m_Items[2], 0u);
    EXPECT_EQ(order.m_Items.back(), 198u);
}

TEST(BatchTest, SeveralTinyItemsAreBegunAtOnce) {
    for (const auto& [count, atOnce] : {std::pair(0, 1), {100, 1}, {1023, 1}, {1024, 2}, {100'000, 8}}) {
        const std::vector<std::uint64_t> sizes(static_cast<std::size_t>(count), 3000);
        EXPECT_EQ(OrderOfWork(sizes).m_AtOnce, static_cast<std::size_t>(atOnce)) << count;
    }
    std::vector<std::uint64_t> sizes(100'000, 3000);
    sizes[5] = 0; // a pipe
    EXPECT_EQ(OrderOfWork(sizes).m_AtOnce, 1u);
}

TEST(ProgressTest, LineTellsFilesRateAndTimeLeft) {
    using Seconds = std::chrono::duration<double>;
    EXPECT_EQ(Progress::LineFor(3, 12, 2'500'000, 10'000'000, Seconds(2)), "3 of 12 files, 1.2 MB/s, 0:06 left");
    EXPECT_EQ(Progress::LineFor(0, 12, 0, 10'000, Seconds(1)), "0 of 12 files, 0 B/s");
    EXPECT_EQ(Progress::LineFor(1, 7201, 500, 3'600'500, Seconds(1)), "1 of 7201 files, 500 B/s, 2:00:00 left");
}

} // namespace Corvid

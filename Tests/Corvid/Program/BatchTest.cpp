#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <new>
#include <numeric>
#include <thread>
#include <tuple>

#include "Corvid/Batch/Batch.h"
#include "Corvid/Batch/Parts.h"
#include "Corvid/Terminal/Progress.h"

namespace Corvid {

TEST(BatchTest, ResultsComeInOrderAndFewWait) {
    constexpr std::size_t kCount = 20'000;
    std::vector<std::size_t> order(kCount);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::atomic<std::size_t> begun = 0;
    std::vector<std::size_t> taken;
    std::size_t furthest = 0;
    Batch<std::size_t> batch(
        order,
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
    EXPECT_EQ(taken, order);
    EXPECT_LT(furthest, 4200u); // however slow the taker is
}

TEST(BatchTest, StopsWhenTheRestIsNotWanted) {
    for (const int jobs : {1, 3}) {
        std::vector<std::size_t> order(1000);
        std::iota(order.begin(), order.end(), std::size_t{0});
        int taken = 0;
        Batch<int> batch(
            order, [](std::size_t) { return 0; }, [&](std::size_t, int) { return ++taken < 10; });
        EXPECT_EQ(batch.Run(jobs), 10u);
    }
}

TEST(BatchTest, TheCallerDoesWhatThreadsHaveNoMemoryFor) {
    constexpr std::size_t kCount = 3000;
    const std::thread::id caller = std::this_thread::get_id();
    for (const std::size_t soundItems : {0u, 1u, 2500u}) { // in threads; the last number is more than may wait
        std::vector<std::size_t> order(kCount);
        std::iota(order.begin(), order.end(), std::size_t{0});
        std::rotate(order.begin(), order.end() - 1, order.end()); // a large one comes first
        std::vector<std::size_t> taken;
        Batch<std::size_t> batch(
            order,
            [&](std::size_t item) {
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

TEST(BatchTest, EndsWhereMemoryIsShortForTheCallerToo) {
    for (const int jobs : {1, 4}) {
        std::vector<std::size_t> order(10'000);
        std::iota(order.begin(), order.end(), std::size_t{0});
        Batch<int> batch(
            order, [](std::size_t) { return 0; },
            [](std::size_t item, int) { return item < 5 ? true : throw std::bad_alloc(); });
        EXPECT_THROW(batch.Run(jobs), std::bad_alloc);
    }
}

TEST(BatchTest, LargeItemsAreBegunFirst) {
    std::vector<std::uint64_t> sizes(200, 1);
    sizes[150] = 500;
    sizes[199] = 1000;
    const std::vector<std::size_t> order = OrderOfWork(sizes);
    EXPECT_EQ(order[0], 199u);
    EXPECT_EQ(order[1], 150u);
    EXPECT_EQ(order[2], 0u);
    EXPECT_EQ(order.back(), 198u);
}

TEST(PartsTest, WhatAThreadLacksTheMemoryForIsDoneByTheCaller) {
    const std::thread::id caller = std::this_thread::get_id();
    std::vector<int> visits(1000);
    WorkInParts(visits.size(), 100, 4, [&](std::size_t begin, std::size_t end) {
        if (std::this_thread::get_id() != caller)
            throw std::bad_alloc();
        for (std::size_t place = begin; place < end; ++place)
            ++visits[place];
    });
    EXPECT_TRUE(std::all_of(visits.begin(), visits.end(), [](int visited) { return visited == 1; }));
}

TEST(PartsTest, EveryPlaceIsInOnePart) {
    for (const auto& [count, jobs, mostParts] :
         {std::tuple(0, 4, 1), {499, 4, 1}, {1000, 4, 2}, {5003, 3, 3}, {7, 0, 1}}) {
        std::vector<std::atomic<int>> visits(static_cast<std::size_t>(count));
        std::atomic<int> parts = 0;
        WorkInParts(visits.size(), 500, jobs, [&](std::size_t begin, std::size_t end) {
            ++parts;
            for (std::size_t place = begin; place < end; ++place)
                ++visits[place];
        });
        EXPECT_EQ(parts, mostParts) << count;
        EXPECT_TRUE(std::all_of(visits.begin(), visits.end(), [](int visited) { return visited == 1; })) << count;
    }
}

TEST(ProgressTest, LineTellsFilesRateAndTimeLeft) {
    using Seconds = std::chrono::duration<double>;
    EXPECT_EQ(Progress::LineFor(3, 12, 2'500'000, 10'000'000, Seconds(2)), "3 of 12 files, 1.2 MB/s, 0:06 left");
    EXPECT_EQ(Progress::LineFor(0, 12, 0, 10'000, Seconds(1)), "0 of 12 files, 0 B/s");
    EXPECT_EQ(Progress::LineFor(1, 7201, 500, 3'600'500, Seconds(1)), "1 of 7201 files, 500 B/s, 2:00:00 left");
}

} // namespace Corvid

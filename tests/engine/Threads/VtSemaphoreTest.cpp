#include "Threads/VtSemaphore.h"

#include "engine/Threads/ThreadTestKit.h"

#include <gtest/gtest.h>

#include <vector>

TEST(VtSemaphoreTest, StartsEmptyWhateverTheInitialCountAndKeepsToItsMaximum) {
    VtSemaphore semaphore(5, 3);
    EXPECT_EQ(semaphore.GetCount(), 0);

    EXPECT_TRUE(semaphore.Release(2));
    EXPECT_FALSE(semaphore.Release(2)); // 4 would pass the maximum: nothing added
    EXPECT_EQ(semaphore.GetCount(), 2);
    EXPECT_TRUE(semaphore.Release(1));
    EXPECT_FALSE(semaphore.Release(1));
    EXPECT_FALSE(semaphore.Release(0));
    EXPECT_EQ(semaphore.GetCount(), 3);

    EXPECT_TRUE(semaphore.Wait());
    EXPECT_TRUE(semaphore.Wait());
    EXPECT_EQ(semaphore.GetCount(), 1);

    semaphore.Replace();
    EXPECT_EQ(semaphore.GetCount(), 0);
    EXPECT_TRUE(semaphore.Release(3)); // the maximum survives a replacement
    EXPECT_EQ(semaphore.GetCount(), 3);
}

TEST(VtSemaphoreTest, WaitBlocksUntilEachUnitIsReleasedEvenAcrossAReplacement) {
    VtSemaphore semaphore(0, 10);
    std::atomic<int> taken{0};
    BackgroundCall waiter([&] {
        for (int i = 0; i < 3; ++i) {
            semaphore.Wait();
            taken++;
        }
    });
    EXPECT_FALSE(waiter.ReturnedAfterPause(30));
    EXPECT_EQ(taken.load(), 0);
    semaphore.Release(2);
    EXPECT_TRUE(Eventually([&] { return taken.load() == 2; }));
    // The waiter survives a replacement and takes the next release.
    semaphore.Replace();
    EXPECT_FALSE(waiter.ReturnedAfterPause(30));
    semaphore.Release(1);
    EXPECT_TRUE(waiter.Join());
    EXPECT_EQ(semaphore.GetCount(), 0);
}

TEST(VtSemaphoreTest, WaitAnyPrefersTheFirstAndWakesForEither) {
    VtSemaphore quit(0, 4);
    VtSemaphore work(0, 4);
    work.Release(2);
    quit.Release(1);
    EXPECT_EQ(VtSemaphore::WaitAny(quit, work), 0); // both have units: the first wins
    EXPECT_EQ(VtSemaphore::WaitAny(quit, work), 1);
    EXPECT_EQ(work.GetCount(), 1);
    EXPECT_EQ(VtSemaphore::WaitAny(quit, work), 1);

    // Blocked on both: a unit on either one wakes it.
    for (int which = 0; which < 2; ++which) {
        std::atomic<int> result{-1};
        BackgroundCall waiter([&] { result = VtSemaphore::WaitAny(quit, work); });
        EXPECT_FALSE(waiter.ReturnedAfterPause());
        (which == 0 ? quit : work).Release(1);
        EXPECT_TRUE(waiter.Join());
        EXPECT_EQ(result.load(), which);
    }
    EXPECT_EQ(quit.GetCount() + work.GetCount(), 0);
}

TEST(VtSemaphoreTest, ManyProducersAndConsumersLoseNoUnit) {
    VtSemaphore semaphore(0, 1000000);
    constexpr int kPerThread = 2000;
    std::atomic<int> consumed{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 2; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < kPerThread; ++i) {
                semaphore.Release(1);
            }
        });
        threads.emplace_back([&] {
            for (int i = 0; i < kPerThread; ++i) {
                semaphore.Wait();
                consumed++;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(consumed.load(), 2 * kPerThread);
    EXPECT_EQ(semaphore.GetCount(), 0);
}

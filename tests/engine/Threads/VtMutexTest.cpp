#include "Threads/VtMutex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

TEST(VtMutexTest, IsRecursiveAndExcludesOtherThreads) {
    VtMutex mutex;
    EXPECT_TRUE(mutex.Lock());
    EXPECT_TRUE(mutex.Lock()); // the holder may enter again

    std::atomic<bool> entered{false};
    std::thread other([&] {
        mutex.Lock();
        entered = true;
        mutex.Unlock();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(entered.load());
    mutex.Unlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(entered.load()); // still held once
    mutex.Unlock();
    other.join();
    EXPECT_TRUE(entered.load());
}

#include "Threads/VtMutex.h"

#include "engine/Threads/ThreadTestKit.h"

#include <gtest/gtest.h>

TEST(VtMutexTest, IsRecursiveAndExcludesOtherThreads) {
    VtMutex mutex;
    EXPECT_TRUE(mutex.Lock());
    EXPECT_TRUE(mutex.Lock()); // the holder may enter again

    BackgroundCall other([&] {
        mutex.Lock();
        mutex.Unlock();
    });
    EXPECT_FALSE(other.ReturnedAfterPause());
    mutex.Unlock();
    EXPECT_FALSE(other.ReturnedAfterPause()) << "still held once";
    mutex.Unlock();
    EXPECT_TRUE(other.Join());
}

#include "Platform/VePlatform.h"

#include "Support/HaltCapture.h"

#include <gtest/gtest.h>

TEST(VePlatformSeamsTest, RandomSequenceDependsOnlyOnTheSeed) {
    SeedRand(42);
    std::vector<int> first;
    for (int i = 0; i < 100; ++i) {
        first.push_back(Rand());
    }
    SeedRand(42);
    for (int i = 0; i < 100; ++i) {
        // Drawing from the other streams leaves the race stream where it was.
        Rand(VeRandomStream::Cosmetic);
        Rand(VeRandomStream::Filler);
        EXPECT_EQ(Rand(), first[static_cast<size_t>(i)]);
    }
    SeedRand(43);
    EXPECT_NE(Rand(), first[0]);

    // Values spread over the whole range and over small moduli alike.
    int counts[3] = {0, 0, 0};
    bool high = false;
    for (int i = 0; i < 30000; ++i) {
        const int value = Rand();
        ASSERT_GE(value, 0);
        ASSERT_LE(value, kRandMax);
        high = high || value > 0x40000000;
        counts[value % 3]++;
    }
    EXPECT_TRUE(high);
    for (int count : counts) {
        EXPECT_NEAR(count, 10000, 500);
    }
}

TEST(VePlatformSeamsTest, DrivenTimeSourceMovesEveryClock) {
    int64_t now = 5000;
    SetTimeSource([&now] { return now; });
    now += 250;
    EXPECT_EQ(GetTimeMs(), 5250);
    EXPECT_EQ(GetClockMs(), 5250);
    SleepMs(100000); // returns at once while time is driven
    SetTimeSource(nullptr);
    const int64_t real = GetTimeMs();
    SleepMs(5);
    EXPECT_GE(GetTimeMs() - real, 4);

    SetFixedFrameDelta(1.0f / 60.0f);
    EXPECT_FLOAT_EQ(GetFixedFrameDelta(), 1.0f / 60.0f);
    SetFixedFrameDelta(-1.0f);
    EXPECT_EQ(GetFixedFrameDelta(), 0.0f);
}

TEST(VePlatformSeamsTest, MessageBoxesAndHaltsReachTheHandler) {
    MessageBoxCapture capture;
    VeMessageBox("Note", "Just so you know", VeMessageBox::Information);
    VeMessageBox("Careful", "Something is off", VeMessageBox::Warning);
    ASSERT_EQ(capture.boxes.size(), 2u);
    EXPECT_EQ(capture.boxes[1].kind, VeMessageBox::Warning);
    // Halts reach it too (every EXPECT_HALT of the engine's tests relies on that), and an
    // assertion names its file, line and condition.
    const int line = __LINE__ + 1;
    EXPECT_HALT(VE_ASSERT(1 + 1 == 3), "Assertion failed",
                "Assertion failed in tests/engine/Platform/VePlatformSeamsTest.cpp, line " +
                    std::to_string(line) + ": 1 + 1 == 3");
}

#include "Screen/VeFrameRate.h"

#include <gtest/gtest.h>

TEST(VeFrameRateTest, AveragesTheFramesOfEachHalfSecondWhateverTheClockDoes) {
    VeFrameRate rate;
    rate.Restart(1.0f / 60.0f, 1000);
    EXPECT_EQ(rate.fps, 60);
    int64_t now = 1000;
    for (int frame = 0; frame < 60; ++frame) {
        now += 9;
        rate.Count(1.0f / 60.0f, now);
    }
    EXPECT_EQ(rate.fps, 60);
    EXPECT_EQ(rate.lastTime, 1000 + 56 * 9) << "the 56th frame is the first after 500 ms";
    EXPECT_EQ(rate.frames, 4);

    VeFrameRate mixed;
    mixed.Restart(0.1f, 0);
    mixed.Count(1.0f / 30.0f, 200);
    mixed.Count(1.0f / 60.0f, 500);
    EXPECT_EQ(mixed.fps, 10) << "exactly 500 ms is not yet more than 500";
    mixed.Count(1.0f / 90.0f, 501);
    EXPECT_EQ(mixed.fps, 60) << "(30 + 60 + 90) / 3";
    EXPECT_EQ(mixed.accumulator, 0);

    // A clock going backwards or frames of zero length do not break it.
    rate.Restart(0.0f, 5000);
    EXPECT_GT(rate.fps, 0);
    rate.Count(0.02f, 100);
    EXPECT_EQ(rate.frames, 1) << "a negative difference never counts as elapsed";
    rate.Count(-1.0f, 200);
    EXPECT_EQ(rate.frames, 2);
}

// Recordings: one event per time, the text form, and reading texts that are not quite right.
#include "Gameplay/QmRecording.h"

#include <gtest/gtest.h>

TEST(QmRecordingTest, TextRoundTripKeepsTimeOrderAndTheLaterOfTwoChangesAtOneTime) {
    QmRecording recording;
    recording.Add(1204, QmRecording::JumpReleased);
    recording.Add(0, QmRecording::RightPressed);
    recording.Add(812, QmRecording::JumpPressed);
    EXPECT_EQ(recording.ToText(), "0:2;812:0;1204:3");
    // Two changes in the same millisecond keep only the later.
    recording.Add(812, QmRecording::LeftPressed);
    EXPECT_EQ(recording.ToText(), "0:2;812:1;1204:3");
}

TEST(QmRecordingTest, ReadingSkipsPartsWithoutAColonAndReadsLeadingNumbers) {
    QmRecording recording;
    recording.FromText("0:2;garbage;;812:0x;1204abc:3:9;:");
    EXPECT_EQ(recording.ToText(), "0:0;812:0;1204:3") << "\":\" reads as time 0, type 0";
    recording.FromText("");
    EXPECT_TRUE(recording.Empty());
    recording.FromText("99999999999999999999999999:1");
    EXPECT_EQ(recording.Size(), 1u) << "huge numbers saturate";
}

TEST(QmRecordingTest, StrictParsingRefusesAnythingButTimeColonType) {
    QmRecording recording;
    std::string error;
    EXPECT_TRUE(recording.ParseStrict("0:2;400:0;450:3", error));
    EXPECT_EQ(recording.Size(), 3u);
    EXPECT_TRUE(recording.ParseStrict("", error));
    EXPECT_TRUE(recording.Empty());
    for (const char* bad : {"0:6", "-5:1", "12", "1:2;", "a:1", "1:2:3", "1:2;;3:4", "99999999999999999:1"}) {
        EXPECT_FALSE(recording.ParseStrict(bad, error)) << bad;
    }
}

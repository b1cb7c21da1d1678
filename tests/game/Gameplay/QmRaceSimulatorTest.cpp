// Whole races through the simulator on maps written by hand: the timing of a flat run, deaths,
// timeouts, the ghost reproducing a recorded run, and the tool's command line.
#include "Gameplay/QmRaceSimulator.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Platform/VeLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace {
std::string MapPath(const std::string& name) {
    return std::string(QM_SOURCE_DIR) + "/tests/data/gameplay/" + name;
}

QmSimResult Race(const std::string& map, const std::string& inputs, float dt = 1.0f / 60.0f,
                 float maxSeconds = 30.0f, const QmRecording& ghost = QmRecording(),
                 std::ostream* trace = nullptr) {
    QmCoreEnvironmentManager world;
    std::string error;
    EXPECT_TRUE(QmRaceSimulator::LoadMap(world, MapPath(map), error)) << error;
    QmSimOptions options;
    options.dt = dt;
    options.maxSeconds = maxSeconds;
    options.ghost = ghost;
    options.trace = trace != nullptr;
    EXPECT_TRUE(options.inputs.ParseStrict(inputs, error)) << error;
    return QmRaceSimulator::Run(world, options, trace);
}

bool Played(const QmSimResult& result, const std::string& name) {
    return std::find(result.sounds.begin(), result.sounds.end(), name) != result.sounds.end();
}
} // namespace

TEST(QmRaceSimulatorTest, AFlatRunTakesTheDistanceOverTheSpeed) {
    // The finish cell lies k = 5 cells right of the Start; it counts once the racer overlaps it by
    // the inset (20 of 64 pixels), so the racer covers k x 64 - 44 pixels at 300 px/s.
    for (const float dt : {1.0f / 60.0f, 1.0f / 144.0f, 1.0f / 30.0f}) {
        const QmSimResult large = Race("FlatRun.map", "0:2", dt);
        ASSERT_EQ(large.outcome, QmSimResult::Finished) << dt;
        const double expected = (5.0 * 64.0 - 44.0) / 300.0 * 1000.0;
        EXPECT_NEAR(static_cast<double>(large.timeMs), expected, dt * 1000.0 + 1.0) << dt;
    }
    // The small grid plays at half scale: 10 cells of 32 pixels, inset 10, at 150 px/s.
    const QmSimResult small = Race("FlatRunSmall.map", "0:2");
    ASSERT_EQ(small.outcome, QmSimResult::Finished);
    EXPECT_NEAR(static_cast<double>(small.timeMs), (10.0 * 32.0 - 22.0) / 150.0 * 1000.0, 17.0);
}

// (The countdown's sounds, walls, and cows that kill: the race's and the entities' own tests.)
TEST(QmRaceSimulatorTest, WithoutInputTheRaceStartsAfterTheCountdownAndTimesOut) {
    const QmSimResult result = Race("Walled.map", "", 1.0f / 60.0f, 3.0f);
    EXPECT_EQ(result.outcome, QmSimResult::Timeout);
    EXPECT_GT(result.timeMs, 3000);
    EXPECT_LT(result.timeMs, 3000 + 17);
    EXPECT_TRUE(Played(result, "Start"));
}

TEST(QmRaceSimulatorTest, FireEndsTheRunWhereASolidFlameCellIsOverlapped) {
    const QmSimResult burnt = Race("FireRun.map", "0:2");
    EXPECT_EQ(burnt.outcome, QmSimResult::Dead);
    // The flames begin where the racer overlaps the fire cell by two pixels: x = 4 x 64 - 64 + 2.
    EXPECT_NEAR(static_cast<double>(burnt.timeMs), 194.0 / 300.0 * 1000.0, 17.0);
    EXPECT_TRUE(Played(burnt, "Fire"));
}

TEST(QmRaceSimulatorTest, AGhostReplayingARecordingReachesTheFinishWithinAFrame) {
    for (const float dt : {1.0f / 60.0f, 1.0f / 50.0f}) {
        const QmSimResult run = Race("JumpRun.map", "0:2;300:0;350:3", dt);
        ASSERT_EQ(run.outcome, QmSimResult::Finished) << "the jump clears the block";
        EXPECT_FALSE(run.recording.Empty());
        // Nobody steers the second race; the ghost replays the first one's recording.
        const QmSimResult replay = Race("JumpRun.map", "", dt, 30.0f, run.recording);
        ASSERT_GE(replay.ghostFinishMs, 0) << "the ghost finished";
        EXPECT_NEAR(static_cast<double>(replay.ghostFinishMs), static_cast<double>(run.timeMs),
                    dt * 1000.0 + 1.0);
    }
    // Without the jump the block stops the racer.
    EXPECT_EQ(Race("JumpRun.map", "0:2", 1.0f / 60.0f, 5.0f).outcome, QmSimResult::Timeout);
}

TEST(QmRaceSimulatorTest, TheTraceShowsEveryFrame) {
    std::ostringstream trace;
    const QmSimResult result = Race("FlatRun.map", "0:2", 1.0f / 60.0f, 30.0f, QmRecording(), &trace);
    const std::string text = trace.str();
    EXPECT_EQ(static_cast<int>(std::count(text.begin(), text.end(), '\n')), result.frames);
    EXPECT_EQ(text.substr(0, text.find('\n')),
              "0 x=5.000 y=512.000 verticalSpeed=0.000 flags=active,verticalContact,right");
}

// (--help: the install check runs every program with it.)
TEST(QmRaceSimulatorTest, TheCommandLineIsReadAndEveryRefusalSaysWhy) {
    const auto parse = [](std::vector<const char*> args, QmSimOptions& options, std::string& error) {
        args.insert(args.begin(), "quillmaze-sim");
        bool help = false;
        return QmRaceSimulator::ParseArguments(static_cast<int>(args.size()), args.data(), options, help,
                                               error);
    };
    QmSimOptions options;
    std::string error;
    ASSERT_TRUE(parse({"map.map", "--dt", "0.02", "--inputs", "0:2;100:5", "--max-seconds", "9", "--trace"},
                      options, error));
    EXPECT_EQ(options.mapPath, "map.map");
    EXPECT_FLOAT_EQ(options.dt, 0.02f);
    EXPECT_EQ(options.inputs.Size(), 2u);
    EXPECT_FLOAT_EQ(options.maxSeconds, 9.0f);
    EXPECT_TRUE(options.trace);
    for (const auto& bad : std::vector<std::vector<const char*>>{
             {},
             {"a.map", "b.map"},
             {"a.map", "--dt"},
             {"a.map", "--dt", "0"},
             {"a.map", "--dt", "fast"},
             {"a.map", "--dt", "nan"},
             {"a.map", "--max-seconds", "-1"},
             {"a.map", "--inputs", "0:2;x"},
             {"a.map", "--seed", "-3"},
             {"a.map", "--wings"},
         }) {
        QmSimOptions ignored;
        error.clear();
        EXPECT_FALSE(parse(bad, ignored, error)) << (bad.empty() ? "(none)" : bad.back());
        EXPECT_FALSE(error.empty());
    }
}

TEST(QmRaceSimulatorTest, MapsThatCannotBeRacedAreRefused) {
    QmCoreEnvironmentManager world;
    std::string error;
    EXPECT_FALSE(QmRaceSimulator::LoadMap(world, MapPath("NoSuchMap.map"), error));
    EXPECT_NE(error.find("cannot read"), std::string::npos);
    EXPECT_FALSE(QmRaceSimulator::LoadMap(world, MapPath(""), error));
    EXPECT_NE(error.find("folder"), std::string::npos);
    // A map whose only Start cell lies outside its 10 x 10 playing area.
    EXPECT_FALSE(QmRaceSimulator::LoadMap(world, MapPath("NoStart.map"), error));
    EXPECT_NE(error.find("no Start cell"), std::string::npos);
    ASSERT_TRUE(QmRaceSimulator::LoadMap(world, MapPath("Walled.map"), error));
    EXPECT_EQ(world.mapName, "Walled");
    EXPECT_FLOAT_EQ(world.startY, 8.0f);
}

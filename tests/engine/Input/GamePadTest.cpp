#include "Input/GamePad.h"

#include "engine/Input/FakePadSource.h"

#include "Platform/VeTime.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <tuple>
#include <vector>

using ::testing::_;
using ::testing::ElementsAre;
using ::testing::FloatEq;
using ::testing::FloatNear;

namespace {
class GamePadTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetTimeSource([this] { return now; });
        pad = std::make_unique<GamePad>(std::make_unique<FakePadSource>(&pads));
    }
    void TearDown() override {
        pad.reset();
        SetTimeSource(nullptr);
    }

    void Connect(int index, VeGamePadReading reading = {}) {
        pads.present[index] = true;
        pads.reading[index] = reading;
    }

    // Sticks and triggers in one list: left x and y, right x and y, left and right trigger.
    static std::vector<float> Axes(const GamePad::State& state) {
        return {state.leftX, state.leftY, state.rightX, state.rightY, state.leftTrigger, state.rightTrigger};
    }

    int64_t now = 50000;
    FakePadSource::Pads pads;
    std::unique_ptr<GamePad> pad;
};
} // namespace

TEST_F(GamePadTest, OnlyOneReaderMayExist) {
    EXPECT_EQ(GamePad::Instance(), pad.get());
    EXPECT_THROW(GamePad(std::make_unique<FakePadSource>(&pads)), std::logic_error);
    EXPECT_EQ(GamePad::Instance(), pad.get());
    pad.reset();
    EXPECT_EQ(GamePad::Instance(), nullptr);
    GamePad again(std::make_unique<FakePadSource>(&pads));
    EXPECT_EQ(GamePad::Instance(), &again);
}

TEST_F(GamePadTest, AnAbsentPadIsAskedForAtMostOncePerSecond) {
    // One frame every 16 ms for three seconds.
    for (int frame = 0; frame < 188; ++frame, now += 16) {
        const GamePad::State state = pad->GetState(0, GamePad::IndependentAxes);
        ASSERT_FALSE(state.connected);
    }
    EXPECT_EQ(pads.reads[0], 3);

    // A failed read of pad 0 keeps pad 1 quiet for 250 ms, and pad 1's failure keeps it quiet for
    // a second: the reads of each pad after waiting so long.
    const std::tuple<int, int, int> steps[] = {{1000, 0, 4}, {249, 1, 0}, {1, 1, 1}, {999, 1, 1}, {1, 1, 2}};
    for (const auto& [wait, player, reads] : steps) {
        now += wait;
        pad->GetState(player, GamePad::IndependentAxes);
        EXPECT_EQ(pads.reads[player], reads) << "pad " << player << " after " << wait << " ms";
    }

    // Players outside 0..3 read as all zero without asking anything.
    pad->GetState(4, GamePad::IndependentAxes);
    pad->GetState(-1, GamePad::IndependentAxes);
    EXPECT_EQ(pads.reads[0] + pads.reads[1] + pads.reads[2] + pads.reads[3], 6);
}

TEST_F(GamePadTest, ConnectedPadIsReadEveryTimeAndFound) {
    pad->GetState(0, GamePad::IndependentAxes);
    VeGamePadReading reading;
    reading.packet = 77;
    reading.buttons = GamePad::A | GamePad::Start | GamePad::DpadLeft | GamePad::RightShoulder;
    Connect(0, reading);
    now += 1000; // the absent pad's throttle is the case above
    const GamePad::State state = pad->GetState(0, GamePad::IndependentAxes);
    EXPECT_TRUE(state.connected);
    EXPECT_EQ(state.packet, 77u);
    EXPECT_TRUE(state.a);
    EXPECT_TRUE(state.start);
    EXPECT_TRUE(state.dpadLeft);
    EXPECT_TRUE(state.rightShoulder);
    EXPECT_FALSE(state.b || state.x || state.y || state.back || state.leftShoulder || state.leftStick ||
                 state.rightStick || state.dpadUp || state.dpadDown || state.dpadRight);
    for (int frame = 0; frame < 10; ++frame) {
        pad->GetState(0, GamePad::IndependentAxes);
    }
    EXPECT_EQ(pads.reads[0], 12);

    // Unplugged: all zero again and the throttle is back.
    pads.present[0] = false;
    EXPECT_FALSE(pad->GetState(0, GamePad::IndependentAxes).a);
    pad->GetState(0, GamePad::IndependentAxes);
    EXPECT_EQ(pads.reads[0], 13);
}

TEST_F(GamePadTest, DeadZonesShapeSticksAndTriggers) {
    // The readings below show both signs, the dead zone's positive edge and the scaling past it.
    EXPECT_FLOAT_EQ(GamePad::LinearDeadZone(-7849.0f, 32767.0f, 7849.0f), 0.0f);
    EXPECT_FLOAT_EQ(GamePad::LinearDeadZone(-32768.0f, 32767.0f, 7849.0f), -1.0f);
    EXPECT_FLOAT_EQ(GamePad::LinearDeadZone(40000.0f, 32767.0f, 0.0f), 1.0f);

    VeGamePadReading reading;
    reading.thumbLeftX = 32767;
    reading.thumbLeftY = -20308;
    reading.thumbRightX = 8689;
    reading.thumbRightY = 20728; // (20728 - 8689) / (32767 - 8689) = 0.5
    reading.leftTrigger = 30;
    reading.rightTrigger = 255;
    Connect(0, reading);
    GamePad::State state = pad->GetState(0, GamePad::IndependentAxes);
    EXPECT_THAT(Axes(state), ElementsAre(FloatEq(1.0f), FloatEq(-0.5f), FloatEq(0.0f), FloatEq(0.5f),
                                         FloatEq(0.0f), FloatEq(1.0f)));

    // No dead zone: plain division, triggers included.
    state = pad->GetState(0, GamePad::NoDeadZone);
    EXPECT_FLOAT_EQ(state.leftY, -20308.0f / 32767.0f);
    EXPECT_FLOAT_EQ(state.rightX, 8689.0f / 32767.0f);
    EXPECT_FLOAT_EQ(state.leftTrigger, 30.0f / 255.0f);

    // Circular: a diagonal inside the square dead zone but outside the circle moves a little, in
    // its own direction.
    pads.reading[0].thumbLeftX = 6000;
    pads.reading[0].thumbLeftY = 6000;
    EXPECT_THAT(Axes(pad->GetState(0, GamePad::IndependentAxes)), ElementsAre(0.0f, 0.0f, _, _, _, _));
    // |(6000, 6000)| = 8485: (8485 - 7849) / (32767 - 7849) = 0.0255 along the diagonal.
    EXPECT_THAT(Axes(pad->GetState(0, GamePad::Circular)),
                ElementsAre(FloatNear(0.01806f, 1e-4), FloatNear(0.01806f, 1e-4), _, _, _, _));
    pads.reading[0].thumbLeftX = 5000;
    pads.reading[0].thumbLeftY = -5000;
    EXPECT_THAT(Axes(pad->GetState(0, GamePad::Circular)), ElementsAre(0.0f, 0.0f, _, _, _, _));
    pads.reading[0].thumbLeftX = -32768;
    pads.reading[0].thumbLeftY = -32768;
    state = pad->GetState(0, GamePad::Circular);
    EXPECT_NEAR(state.leftX, -0.7071f, 0.01f);
    EXPECT_GE(state.leftX, -1.0f);
}

TEST_F(GamePadTest, VibrationSendsSixteenBitSpeedsAndFollowsTheThrottle) {
    // Speeds from 0 to 1 become 0 to 65535, wrapping beyond: the pad below gets 880 and 0.25 as 64656
    // and 16383. Absent: false, and the next call within a second does not reach the pad.
    EXPECT_FALSE(pad->SetVibration(0, 880.0f, 880.0f, 0.0f, 0.0f));
    EXPECT_EQ(pads.motorCalls[0], 1);
    pads.present[0] = true;
    now += 500;
    EXPECT_FALSE(pad->SetVibration(0, 880.0f, 880.0f, 0.0f, 0.0f));
    EXPECT_EQ(pads.motorCalls[0], 1);
    now += 500;
    EXPECT_TRUE(pad->SetVibration(0, 880.0f, 0.25f, 1.0f, 1.0f));
    EXPECT_EQ(pads.leftMotor, 64656);
    EXPECT_EQ(pads.rightMotor, 16383);

    // A refusal other than "not connected" keeps the pad connected.
    pads.motorResult = 5;
    EXPECT_FALSE(pad->SetVibration(0, 0.0f, 0.0f, 0.0f, 0.0f));
    EXPECT_TRUE(pad->GetState(0, GamePad::IndependentAxes).connected);
    EXPECT_FALSE(pad->SetVibration(7, 1.0f, 1.0f, 0.0f, 0.0f));
}

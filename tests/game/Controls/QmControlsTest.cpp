#include "Controls/QmControls.h"

#include "engine/Input/FakeInputSource.h"
#include "engine/Input/FakePadSource.h"

#include "Input/VeInput.h"
#include "Platform/VeTime.h"

#include <gtest/gtest.h>

namespace {
class QmControlsTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetTimeSource([this] { return now; });
        input = std::make_unique<VeInput>(nullptr, std::make_unique<FakeInputSource>(&devices));
        pad = std::make_unique<GamePad>(std::make_unique<FakePadSource>(&pads));
        controls = std::make_unique<QmControls>(input.get());
    }
    void TearDown() override { SetTimeSource(nullptr); }

    // Runs one frame as the game does (input update, the action, clear, latch) and returns the
    // action's answer.
    template <typename Action> bool Frame(Action action) {
        input->Update();
        const bool result = action();
        input->ClearPressed();
        controls->UpdateLatch();
        now += 16;
        return result;
    }

    template <typename Action> int CountOver(int frames, Action action) {
        int count = 0;
        for (int frame = 0; frame < frames; ++frame) {
            count += Frame(action) ? 1 : 0;
        }
        return count;
    }

    int64_t now = 10000;
    FakeInputSource::Devices devices;
    FakePadSource::Pads pads;
    std::unique_ptr<VeInput> input;
    std::unique_ptr<GamePad> pad;
    std::unique_ptr<QmControls> controls;
};
} // namespace

TEST_F(QmControlsTest, PadButtonsArePressedForOneFrameWhileKeysRepeat) {
    pads.present[0] = true;
    pads.reading[0].buttons = GamePad::A;
    EXPECT_EQ(CountOver(60, [this] { return controls->Confirm(); }), 1);

    // Released and pressed again: one more.
    pads.reading[0].buttons = 0;
    EXPECT_EQ(CountOver(2, [this] { return controls->Confirm(); }), 0);
    pads.reading[0].buttons = GamePad::A;
    EXPECT_EQ(CountOver(5, [this] { return controls->Confirm(); }), 1);

    // Return held for about one second: the press and its auto-repeats (frames of 16 ms: the
    // first repeat after 304 ms, then every 80 ms).
    pads.reading[0].buttons = 0;
    devices.keys[VeKey::Return] = 1;
    EXPECT_EQ(CountOver(62, [this] { return controls->Confirm(); }), 10);
    devices.keys[VeKey::Return] = 0;
    devices.keys[VeKey::KeypadEnter] = 1;
    EXPECT_EQ(CountOver(1, [this] { return controls->Confirm(); }), 1);
}

TEST_F(QmControlsTest, RaceActionsFollowHeldKeysAndTheStick) {
    pads.present[0] = true;
    devices.keys[VeKey::Left] = 1;
    EXPECT_EQ(CountOver(30, [this] { return controls->Left(); }), 30);
    EXPECT_EQ(CountOver(1, [this] { return controls->Right(); }), 0);
    devices.keys[VeKey::Left] = 0;

    pads.reading[0].thumbLeftX = 32767;
    EXPECT_EQ(CountOver(5, [this] { return controls->Right(); }), 5);
    EXPECT_EQ(CountOver(5, [this] { return controls->Left(); }), 0);
    pads.reading[0].thumbLeftX = 0;
    pads.reading[0].buttons = GamePad::DpadLeft;
    EXPECT_EQ(CountOver(5, [this] { return controls->Left(); }), 5);
    // Inside half a stroke the stick does nothing.
    pads.reading[0].buttons = 0;
    pads.reading[0].thumbLeftX = -20000; // (20000 - 7849) / 24918 = 0.49
    EXPECT_EQ(CountOver(5, [this] { return controls->Left(); }), 0);
    pads.reading[0].thumbLeftX = 0;

    // Jump: stick up or D-pad up as long as held; A once; W, Space and Up as key presses.
    pads.reading[0].thumbLeftY = 30000;
    EXPECT_EQ(CountOver(10, [this] { return controls->Jump(); }), 10);
    pads.reading[0].thumbLeftY = 0;
    pads.reading[0].buttons = GamePad::A;
    EXPECT_EQ(CountOver(10, [this] { return controls->Jump(); }), 1);
    pads.reading[0].buttons = 0;
    devices.keys[VeKey::W] = 1;
    EXPECT_EQ(CountOver(10, [this] { return controls->Jump(); }), 1);
    devices.keys[VeKey::W] = 0;
    devices.keys[VeKey::Space] = 1;
    EXPECT_EQ(CountOver(1, [this] { return controls->Jump(); }), 1);
}

TEST_F(QmControlsTest, MenuDirectionsAndPadEntriesFireOnceAndRumbleDrivesBothMotors) {
    pads.present[0] = true;
    pads.reading[0].thumbLeftY = -32768;
    EXPECT_EQ(CountOver(20, [this] { return controls->MenuDown(); }), 1);
    pads.reading[0].thumbLeftY = 0;
    pads.reading[0].buttons = GamePad::DpadUp;
    EXPECT_EQ(CountOver(20, [this] { return controls->MenuUp(); }), 1);
    pads.reading[0].buttons = GamePad::DpadRight;
    EXPECT_EQ(CountOver(20, [this] { return controls->PadRightPressed(); }), 1);
    pads.reading[0].buttons = GamePad::B;
    EXPECT_EQ(CountOver(20, [this] { return controls->Back(); }), 1);
    pads.reading[0].buttons = GamePad::Y | GamePad::Start;
    EXPECT_EQ(CountOver(20, [this] { return controls->PadYPressed(); }), 1);
    pads.reading[0].buttons = 0;
    CountOver(1, [] { return false; });
    pads.reading[0].buttons = GamePad::Start;
    EXPECT_EQ(CountOver(20, [this] { return controls->PadStartPressed(); }), 1);

    pads.reading[0].buttons = 0;
    devices.keys[VeKey::Escape] = 1;
    EXPECT_EQ(CountOver(1, [this] { return controls->Back(); }), 1);
    devices.keys[VeKey::Escape] = 0;
    devices.keys[VeKey::Down] = 1;
    EXPECT_EQ(CountOver(1, [this] { return controls->MenuDown(); }), 1);
    EXPECT_EQ(CountOver(1, [this] { return controls->MenuUp(); }), 0);

    controls->StartRumble(); // both motors
    EXPECT_EQ(pads.leftMotor, 64656);
    EXPECT_EQ(pads.rightMotor, 64656);
    controls->StopRumble();
    EXPECT_EQ(pads.leftMotor, 0);
    EXPECT_EQ(pads.rightMotor, 0);
}

TEST_F(QmControlsTest, AnyMovementSeesKeysAndEveryPadEntry) {
    pads.present[0] = true;
    EXPECT_FALSE(controls->AnyMovement());
    for (int key : {VeKey::A, VeKey::D, VeKey::W, VeKey::S, VeKey::Left, VeKey::Right, VeKey::Down, VeKey::Up,
                    VeKey::Space}) {
        devices.keys[key] = 1;
        EXPECT_TRUE(Frame([this] { return controls->AnyMovement(); })) << key;
        devices.keys[key] = 0;
    }
    devices.keys[VeKey::Q] = 1;
    EXPECT_FALSE(Frame([this] { return controls->AnyMovement(); }));
    devices.keys[VeKey::Q] = 0;
    for (uint16_t bit : {GamePad::A, GamePad::B, GamePad::X, GamePad::Y, GamePad::Start, GamePad::DpadDown}) {
        pads.reading[0].buttons = bit;
        EXPECT_TRUE(Frame([this] { return controls->AnyMovement(); })) << bit;
    }
    pads.reading[0].buttons = GamePad::Back;
    EXPECT_FALSE(Frame([this] { return controls->AnyMovement(); }));
}

TEST_F(QmControlsTest, WithoutAPadEveryPadActionIsFalse) {
    for (int frame = 0; frame < 100; ++frame) {
        input->Update();
        ASSERT_FALSE(controls->Confirm() || controls->Back() || controls->Jump() || controls->Left() ||
                     controls->Right() || controls->MenuUp() || controls->MenuDown() ||
                     controls->MenuLeft() || controls->MenuRight() || controls->AnyMovement() ||
                     controls->PadStartPressed() || controls->PadXPressed() || controls->PadYPressed() ||
                     controls->PadDownPressed() || controls->PadUpPressed() || controls->PadRightPressed() ||
                     controls->PadLeftPressed());
        controls->UpdateLatch();
        now += 16;
    }
    // 1.6 seconds of frames: pad 0 was asked for twice.
    EXPECT_EQ(pads.reads[0], 2);
    EXPECT_FALSE(QmControls::PadState().connected);

    pad.reset();
    QmControls::RefreshPadState();
    EXPECT_FALSE(QmControls::PadState().connected);
    EXPECT_FALSE(controls->Confirm());
    controls->StartRumble();
}

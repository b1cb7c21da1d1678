#include "Controls/QmControls.h"

#include "engine/Input/FakeInputSource.h"
#include "engine/Input/FakePadSource.h"

#include "Input/VeInput.h"
#include "Platform/VeTime.h"

#include <gtest/gtest.h>

namespace {
using C = QmControls;
using Action = bool (C::*)();

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
    bool Frame(Action action) {
        input->Update();
        const bool result = (controls.get()->*action)();
        input->ClearPressed();
        controls->UpdateLatch();
        now += 16;
        return result;
    }

    int CountOver(int frames, Action action) {
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

TEST_F(QmControlsTest, EachKeyPadEntryAndStickFiresItsActionWhileHeldOnceOrWithRepeats) {
    struct Row {
        const char* what;
        int key;
        uint16_t buttons;
        int16_t stickX;
        int16_t stickY;
        Action action;
        int frames;
        int expected;
    };
    const Row rows[] = {
        {"pad A: once however long it is held", 0, GamePad::A, 0, 0, &C::Confirm, 60, 1},
        {"pad A released and pressed again", 0, GamePad::A, 0, 0, &C::Confirm, 5, 1},
        // Frames of 16 ms: the first repeat after 304 ms, then every 80 ms.
        {"Return held a second: the press and its repeats", VeKey::Return, 0, 0, 0, &C::Confirm, 62, 10},
        {"keypad Enter", VeKey::KeypadEnter, 0, 0, 0, &C::Confirm, 1, 1},
        {"Left key: every frame", VeKey::Left, 0, 0, 0, &C::Left, 30, 30},
        {"Left key is not Right", VeKey::Left, 0, 0, 0, &C::Right, 1, 0},
        {"stick right", 0, 0, 32767, 0, &C::Right, 5, 5},
        {"stick right is not Left", 0, 0, 32767, 0, &C::Left, 5, 0},
        {"D-pad left", 0, GamePad::DpadLeft, 0, 0, &C::Left, 5, 5},
        {"stick inside half a stroke: (20000 - 7849) / 24918 = 0.49", 0, 0, -20000, 0, &C::Left, 5, 0},
        {"stick up: jump while held", 0, 0, 0, 30000, &C::Jump, 10, 10},
        {"pad A: one jump", 0, GamePad::A, 0, 0, &C::Jump, 10, 1},
        {"W: one jump", VeKey::W, 0, 0, 0, &C::Jump, 10, 1},
        {"Space jumps", VeKey::Space, 0, 0, 0, &C::Jump, 1, 1},
        {"stick down: one menu step", 0, 0, 0, -32768, &C::MenuDown, 20, 1},
        {"D-pad up: one menu step", 0, GamePad::DpadUp, 0, 0, &C::MenuUp, 20, 1},
        {"D-pad right", 0, GamePad::DpadRight, 0, 0, &C::PadRightPressed, 20, 1},
        {"pad B", 0, GamePad::B, 0, 0, &C::Back, 20, 1},
        {"pad Y with Start", 0, GamePad::Y | GamePad::Start, 0, 0, &C::PadYPressed, 20, 1},
        {"pad Start", 0, GamePad::Start, 0, 0, &C::PadStartPressed, 20, 1},
        {"Escape", VeKey::Escape, 0, 0, 0, &C::Back, 1, 1},
        {"Down key", VeKey::Down, 0, 0, 0, &C::MenuDown, 1, 1},
        {"Down key is not up", VeKey::Down, 0, 0, 0, &C::MenuUp, 1, 0},
    };
    pads.present[0] = true;
    for (const Row& row : rows) {
        devices.keys[row.key] = row.key != 0 ? 1 : 0;
        pads.reading[0].buttons = row.buttons;
        pads.reading[0].thumbLeftX = row.stickX;
        pads.reading[0].thumbLeftY = row.stickY;
        EXPECT_EQ(CountOver(row.frames, row.action), row.expected) << row.what;
        // Everything let go for a frame before the next row.
        devices.keys[row.key] = 0;
        pads.reading[0] = VeGamePadReading();
        CountOver(1, &C::AnyMovement);
    }

    const auto motors = [this] { return std::vector<int>{pads.leftMotor, pads.rightMotor}; };
    controls->StartRumble(); // both motors
    EXPECT_EQ(motors(), (std::vector<int>{64656, 64656}));
    controls->StopRumble();
    EXPECT_EQ(motors(), (std::vector<int>{0, 0}));
}

TEST_F(QmControlsTest, AnyMovementSeesKeysAndEveryPadEntry) {
    pads.present[0] = true;
    EXPECT_FALSE(controls->AnyMovement());
    for (int key : {VeKey::A, VeKey::D, VeKey::W, VeKey::S, VeKey::Left, VeKey::Right, VeKey::Down, VeKey::Up,
                    VeKey::Space}) {
        devices.keys[key] = 1;
        EXPECT_TRUE(Frame(&C::AnyMovement)) << key;
        devices.keys[key] = 0;
    }
    devices.keys[VeKey::Q] = 1;
    EXPECT_FALSE(Frame(&C::AnyMovement));
    devices.keys[VeKey::Q] = 0;
    for (uint16_t bit : {GamePad::A, GamePad::B, GamePad::X, GamePad::Y, GamePad::Start, GamePad::DpadDown}) {
        pads.reading[0].buttons = bit;
        EXPECT_TRUE(Frame(&C::AnyMovement)) << bit;
    }
    pads.reading[0].buttons = GamePad::Back;
    EXPECT_FALSE(Frame(&C::AnyMovement));
}

// (How often an absent pad is asked for: the engine's pad test.)
TEST_F(QmControlsTest, APadReaderGoneLeavesNoPadStateBehindAndRumblesNothing) {
    pads.present[0] = true;
    pads.reading[0].buttons = GamePad::A;
    EXPECT_TRUE(Frame(&C::AnyMovement));
    pad.reset();
    EXPECT_FALSE(Frame(&C::AnyMovement));
    EXPECT_FALSE(QmControls::PadState().connected);
    controls->StartRumble();
    controls->StopRumble();
    EXPECT_EQ(pads.motorCalls[0], 0);
}

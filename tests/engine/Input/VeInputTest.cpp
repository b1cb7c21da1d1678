#include "Input/VeInput.h"

#include "engine/Input/FakeInputSource.h"

#include "Platform/VeTime.h"

#include <gtest/gtest.h>

#include <string>

namespace {
class VeInputTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetTimeSource([this] { return now; });
        input = std::make_unique<VeInput>(nullptr, std::make_unique<FakeInputSource>(&devices));
    }
    void TearDown() override {
        input.reset();
        SetTimeSource(nullptr);
    }

    // One frame as the main loop runs it: update, read, clear.
    bool FramePressed(int key) {
        input->Update();
        const bool result = input->pressed[key] != 0;
        input->ClearPressed();
        return result;
    }

    // The previous frame's presses cleared, the next frame's input read.
    void NextFrame() {
        input->ClearPressed();
        input->Update();
    }

    // Times at which the key read as pressed while held from start to end, one frame every step.
    std::vector<int64_t> PressTimes(int key, int64_t start, int64_t end, int64_t step) {
        std::vector<int64_t> times;
        devices.keys[key] = 1;
        for (now = start; now <= end; now += step) {
            if (FramePressed(key)) {
                times.push_back(now);
            }
        }
        return times;
    }

    // Of frames at these times, the key held, those at which it read as pressed.
    std::vector<int64_t> PressedAt(int key, std::initializer_list<int64_t> times) {
        std::vector<int64_t> pressed;
        devices.keys[key] = 1;
        for (int64_t at : times) {
            now = at;
            if (FramePressed(key)) {
                pressed.push_back(at);
            }
        }
        return pressed;
    }
    void PlaceMouse(int x, int y) {
        devices.mouseX = x;
        devices.mouseY = y;
    }
    // "x,y", and " moved" when the mouse moved this frame.
    std::string Mouse() const {
        return std::to_string(input->mouseX) + "," + std::to_string(input->mouseY) +
               (input->mouseMoved ? " moved" : "");
    }
    // The mouse entries pressed this frame and those down, e.g. "pressed left, down left right".
    std::string Buttons() const {
        const char* names[kMouseEntryCount] = {"none", "left", "middle", "right", "wheel-down", "wheel-up"};
        std::string pressed = "pressed";
        std::string down = ", down";
        for (int entry = 0; entry < kMouseEntryCount; ++entry) {
            pressed += input->mousePressed[entry] ? std::string(" ") + names[entry] : "";
            down += input->mouseDown[entry] ? std::string(" ") + names[entry] : "";
        }
        return pressed + down;
    }

    int64_t now = 1000;
    FakeInputSource::Devices devices;
    std::unique_ptr<VeInput> input;
};
} // namespace

TEST_F(VeInputTest, HeldKeyRepeatsAfterTheDelayThenAtTheInterval) {
    const std::vector<int64_t> expected = {1000, 1310, 1390, 1470, 1550, 1630, 1710, 1790, 1870, 1950};
    EXPECT_EQ(PressTimes(VeKey::Space, 1000, 2000, 10), expected);
    EXPECT_TRUE(input->held[VeKey::Space]);
    EXPECT_TRUE(input->anyKeyDown);

    // Released: held clears and the next press starts over with the long delay.
    devices.keys[VeKey::Space] = 0;
    now = 2010;
    EXPECT_FALSE(FramePressed(VeKey::Space));
    EXPECT_FALSE(input->held[VeKey::Space]);
    EXPECT_FALSE(input->anyKeyDown);
    EXPECT_EQ(input->stamp[VeKey::Space], 0);
    const std::vector<int64_t> again = {3000, 3301};
    EXPECT_EQ(PressTimes(VeKey::Space, 3000, 3301, 1), again);
}

TEST_F(VeInputTest, RepeatThresholdsAreStrictAndAdjustable) {
    // Exactly the delay is not enough; one millisecond more is.
    EXPECT_EQ(PressedAt(VeKey::A, {1000, 1300, 1301, 1376, 1377}), std::vector<int64_t>({1000, 1301, 1377}));

    input->SetRepeat(500, 30);
    devices.keys[VeKey::A] = 0;
    input->Update();
    EXPECT_EQ(PressTimes(VeKey::A, 2000, 2600, 50), std::vector<int64_t>({2000, 2550, 2600}));
}

TEST_F(VeInputTest, KeyHeldAcrossResetOrWindowActivationIsPressedAgainAndRepeatsNormally) {
    EXPECT_EQ(PressedAt(VeKey::Left, {1000}), std::vector<int64_t>({1000}));
    input->Reset();
    EXPECT_FALSE(input->held[VeKey::Left]);
    EXPECT_EQ(PressedAt(VeKey::Left, {1100, 1400, 1401}), std::vector<int64_t>({1100, 1401}));

    // An activation resets like Reset, and the long delay starts again.
    devices.queue.push_back({VeInputEvent::WindowActivated, now, 0});
    EXPECT_EQ(PressedAt(VeKey::Left, {1450, 1750}), std::vector<int64_t>({1450}));
}

TEST_F(VeInputTest, BlockRepeatsSilencesHeldKeysUntilPressedAgain) {
    devices.keys[VeKey::Right] = 1;
    EXPECT_TRUE(FramePressed(VeKey::Right));
    input->BlockRepeats();
    for (now = 1010; now <= 3000; now += 10) {
        ASSERT_FALSE(FramePressed(VeKey::Right)) << now;
    }
    EXPECT_TRUE(input->held[VeKey::Right]);
    devices.keys[VeKey::Right] = 0;
    input->Update();
    EXPECT_EQ(PressedAt(VeKey::Right, {3100, 3401}), std::vector<int64_t>({3100, 3401}));
}

TEST_F(VeInputTest, InjectedPressesAndTapsBetweenFramesAppearAtTheNextUpdateOnly) {
    input->pendingPressed[VeKey::F8] = 1;
    EXPECT_FALSE(input->pressed[VeKey::F8]);
    EXPECT_TRUE(FramePressed(VeKey::F8));
    EXPECT_FALSE(FramePressed(VeKey::F8));
    EXPECT_FALSE(input->held[VeKey::F8]);

    // Up pressed and let go between two reads of the keyboard: only its event tells.
    devices.queue.push_back({VeInputEvent::KeyPressed, now, VeKey::Up});
    devices.queue.push_back({VeInputEvent::KeyPressed, now, kKeyCount});
    EXPECT_TRUE(FramePressed(VeKey::Up));
    EXPECT_FALSE(input->held[VeKey::Up]);
    EXPECT_FALSE(FramePressed(VeKey::Up));

    // Its event came after the read: the state's rise at the next frame is the same press.
    devices.queue.push_back({VeInputEvent::KeyPressed, now, VeKey::Up});
    EXPECT_TRUE(FramePressed(VeKey::Up));
    devices.keys[VeKey::Up] = 1;
    EXPECT_FALSE(FramePressed(VeKey::Up));
    EXPECT_TRUE(input->held[VeKey::Up]);
    devices.keys[VeKey::Up] = 0;
    EXPECT_FALSE(FramePressed(VeKey::Up));
    devices.keys[VeKey::Up] = 1;
    EXPECT_TRUE(FramePressed(VeKey::Up));
}

TEST_F(VeInputTest, MouseMapsIntoTheLogicalScreenAndMovesOnlyWhenItsPlaceChanges) {
    EXPECT_EQ(Mouse(), "-1,-1");
    input->Update();
    EXPECT_EQ(Mouse(), "-1,-1");

    // A 1280 x 960 window showing the 640 x 640 screen at scale 1.5 with 106.67 logical pixels of
    // bars on each side.
    input->SetViewport(106, 0, 1.5f, 1.5f);
    PlaceMouse(640, 480);
    input->Update();
    EXPECT_EQ(Mouse(), "320,320 moved");
    input->ClearPressed();
    EXPECT_EQ(Mouse(), "320,320");
    input->Update(); // resting where it was: not a move, the keys keep the selection
    EXPECT_EQ(Mouse(), "320,320");

    // Truncation, and the bars giving coordinates outside the screen.
    PlaceMouse(100, 1);
    NextFrame();
    EXPECT_EQ(Mouse(), "-39,0 moved");
    PlaceMouse(0, 700);
    NextFrame();
    EXPECT_EQ(Mouse(), "-39,0");
}

TEST_F(VeInputTest, MouseButtonsArePressedOnceWhileHeldAndWheelStepsForOneFrame) {
    devices.buttons = 1 | 4; // left and right
    input->Update();
    EXPECT_EQ(Buttons(), "pressed left right, down left right");
    NextFrame();
    EXPECT_EQ(Buttons(), "pressed, down left right");
    devices.buttons = 2;
    NextFrame();
    EXPECT_EQ(Buttons(), "pressed middle, down middle");

    // Wheel steps fire for exactly one frame; a step of 0 is none.
    devices.queue.push_back({VeInputEvent::Wheel, now, -1});
    NextFrame();
    EXPECT_EQ(Buttons(), "pressed wheel-down, down middle wheel-down");
    NextFrame();
    EXPECT_EQ(Buttons(), "pressed, down middle");
    devices.queue.push_back({VeInputEvent::Wheel, now, 2});
    devices.queue.push_back({VeInputEvent::Wheel, now, 0});
    NextFrame();
    EXPECT_EQ(Buttons(), "pressed wheel-up, down middle wheel-up");
    NextFrame();
    EXPECT_EQ(Buttons(), "pressed, down middle");
}

TEST_F(VeInputTest, QuitRequestIsKeptAndWindowEventsReachTheListener) {
    std::vector<VeInputEvent::Kind> heard;
    input->pump->listener = [&heard](const VeInputEvent& event) { heard.push_back(event.kind); };
    EXPECT_FALSE(input->QuitRequested());
    devices.queue.push_back({VeInputEvent::MouseLeft, now, 0});
    devices.queue.push_back({VeInputEvent::Quit, now, 0});
    devices.queue.push_back({VeInputEvent::MouseEntered, now, 0});
    input->Update();
    EXPECT_TRUE(input->QuitRequested());
    input->Update();
    EXPECT_TRUE(input->QuitRequested());
    EXPECT_EQ(heard, std::vector<VeInputEvent::Kind>(
                         {VeInputEvent::MouseLeft, VeInputEvent::Quit, VeInputEvent::MouseEntered}));
}

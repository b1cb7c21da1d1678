#include "Input/VeInput.h"

#include "Input/GamePad.h"
#include "engine/Screen/ScreenTestSupport.h"

#include <SDL.h>
#include <gmock/gmock.h>

using ::testing::IsSupersetOf;

// The input state on a real window: the system's event queue, the mouse mapped through the
// screen's letterboxing, and the process's game pad reader.
namespace {
class VeSdlInputTest : public ScreenTestBase {
protected:
    void SetUp() override {
        ScreenTestBase::SetUp();
        OpenScreen(true);
        input = std::make_unique<VeInput>(screen.get());
        screen->input = input.get();
    }
    void TearDown() override {
        input.reset();
        ScreenTestBase::TearDown();
    }

    std::unique_ptr<VeInput> input;
};
} // namespace

TEST_F(VeSdlInputTest, EventsFromTheSystemQueueReachTheState) {
    EXPECT_NE(GamePad::Instance(), nullptr);
    input->Update();
    input->ClearPressed();

    Push(SDL_MOUSEWHEEL, 0, -1);
    // A key's press whose release came before the frame read the keyboard (a pushed event leaves
    // the keyboard's state alone); a held key's repeat is no press.
    for (const auto& [scancode, repeat] : {std::pair{SDL_SCANCODE_UP, 0}, std::pair{SDL_SCANCODE_DOWN, 1}}) {
        SDL_Event key{};
        key.type = SDL_KEYDOWN;
        key.key.keysym.scancode = scancode;
        key.key.repeat = static_cast<Uint8>(repeat);
        ASSERT_EQ(SDL_PushEvent(&key), 1);
    }
    input->Update();
    EXPECT_TRUE(input->mousePressed[kMouseWheelDown]);
    EXPECT_TRUE(input->pressed[VeKey::Up]);
    EXPECT_FALSE(input->pressed[VeKey::Down]);
    EXPECT_FALSE(input->held[VeKey::Up]);
    input->ClearPressed();

    std::vector<VeInputEvent::Kind> heard;
    input->pump->listener = [&heard](const VeInputEvent& event) { heard.push_back(event.kind); };
    Push(SDL_WINDOWEVENT, SDL_WINDOWEVENT_LEAVE);
    Push(SDL_WINDOWEVENT, SDL_WINDOWEVENT_ENTER);
    input->pendingPressed[VeKey::F10] = 1;
    Push(SDL_WINDOWEVENT, SDL_WINDOWEVENT_FOCUS_GAINED);
    Push(SDL_QUIT);
    input->Update();
    EXPECT_TRUE(input->QuitRequested());
    // The activation forgot the injected press.
    EXPECT_FALSE(input->pressed[VeKey::F10]);
    EXPECT_THAT(heard,
                IsSupersetOf({VeInputEvent::MouseLeft, VeInputEvent::WindowActivated, VeInputEvent::Quit}));
}

// Windowed at its own size, one window pixel per logical pixel, the journey's clicks land on the
// page's buttons.
TEST_F(VeSdlInputTest, PointerFollowsTheLetterboxOfTheWindow) {
    // Full screen on a wider display: the screen tells the input where the drawing area went.
    screen->SetFullscreen(true, input.get());
    const VeViewportMapping mapping = screen->GetViewportMapping();
    const int rawX = static_cast<int>((320.0f + static_cast<float>(mapping.x)) * mapping.scaleX);
    const int rawY = static_cast<int>((320.0f + static_cast<float>(mapping.y)) * mapping.scaleY);
    SDL_WarpMouseInWindow(screen->window, rawX, rawY);
    input->Update();
    EXPECT_NEAR(input->mouseX, 320, 1);
    EXPECT_NEAR(input->mouseY, 320, 1);
    screen->SetFullscreen(false, input.get());
}

#include "Input/VeSdlInputSource.h"

#include "Platform/VeTime.h"

#include <SDL.h>
#include <algorithm>
#include <cstring>

static_assert(VeKey::A == int{SDL_SCANCODE_A} && VeKey::Z == int{SDL_SCANCODE_Z});
static_assert(VeKey::Num1 == int{SDL_SCANCODE_1} && VeKey::Num0 == int{SDL_SCANCODE_0});
static_assert(VeKey::Return == int{SDL_SCANCODE_RETURN} && VeKey::Space == int{SDL_SCANCODE_SPACE});
static_assert(VeKey::Slash == int{SDL_SCANCODE_SLASH} && VeKey::F12 == int{SDL_SCANCODE_F12});
static_assert(VeKey::Up == int{SDL_SCANCODE_UP} && VeKey::KeypadPeriod == int{SDL_SCANCODE_KP_PERIOD});
static_assert(VeKey::KeypadEnter == int{SDL_SCANCODE_KP_ENTER} && VeKey::Delete == int{SDL_SCANCODE_DELETE});
static_assert(VeKey::LeftCtrl == int{SDL_SCANCODE_LCTRL} && VeKey::RightGui == int{SDL_SCANCODE_RGUI});
static_assert(kKeyCount == int{SDL_NUM_SCANCODES});

void VeSdlInputSource::ReadKeyboard(uint8_t (&down)[kKeyCount]) {
    std::memset(down, 0, sizeof(down));
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0) {
        return;
    }
    SDL_PumpEvents();
    int count = 0;
    const Uint8* state = SDL_GetKeyboardState(&count);
    if (state != nullptr) {
        std::memcpy(down, state, static_cast<size_t>(std::clamp(count, 0, kKeyCount)));
    }
}

uint32_t VeSdlInputSource::ReadMouse(int& x, int& y) {
    x = 0;
    y = 0;
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0) {
        return 0;
    }
    return SDL_GetMouseState(&x, &y);
}

void VeSdlInputSource::PollEvents(std::vector<VeInputEvent>& events) {
    if (SDL_WasInit(SDL_INIT_VIDEO) == 0) {
        return;
    }
    // SDL stamps events with its own tick count; carry them over to the engine's clock.
    const int64_t nowMs = GetTimeMs();
    const Uint32 ticks = SDL_GetTicks();
    SDL_Event event;
    while (SDL_PollEvent(&event) != 0) {
        VeInputEvent out;
        const Uint32 age = ticks - std::min(ticks, event.common.timestamp);
        out.timeMs = nowMs - static_cast<int64_t>(age);
        switch (event.type) {
        case SDL_MOUSEWHEEL:
            out.kind = VeInputEvent::Wheel;
            out.value = event.wheel.direction == int{SDL_MOUSEWHEEL_FLIPPED} ? -event.wheel.y : event.wheel.y;
            break;
        case SDL_KEYDOWN:
            if (event.key.repeat != 0) {
                continue;
            }
            out.kind = VeInputEvent::KeyPressed;
            out.value = static_cast<int>(event.key.keysym.scancode);
            break;
        case SDL_QUIT:
            out.kind = VeInputEvent::Quit;
            break;
        case SDL_WINDOWEVENT:
            switch (event.window.event) {
            case SDL_WINDOWEVENT_FOCUS_GAINED:
                out.kind = VeInputEvent::WindowActivated;
                break;
            case SDL_WINDOWEVENT_ENTER:
                out.kind = VeInputEvent::MouseEntered;
                break;
            case SDL_WINDOWEVENT_LEAVE:
                out.kind = VeInputEvent::MouseLeft;
                break;
            case SDL_WINDOWEVENT_SIZE_CHANGED:
                out.kind = VeInputEvent::WindowResized;
                break;
            default:
                continue;
            }
            break;
        default:
            continue;
        }
        events.push_back(out);
    }
}

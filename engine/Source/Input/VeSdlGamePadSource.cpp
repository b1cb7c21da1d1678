#include "Input/VeSdlGamePadSource.h"

#include "Input/GamePad.h"
#include "Platform/VeLog.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr uint32_t kFailure = 1;
// SDL's longest rumble; every call renews it.
constexpr Uint32 kRumbleMs = 0xFFFF;

int16_t FlipAxis(Sint16 value) {
    // Controllers report y growing downwards; pads of the classic layout report it upwards.
    return static_cast<int16_t>(std::min(32767, -static_cast<int>(value)));
}

uint8_t TriggerByte(Sint16 value) {
    return static_cast<uint8_t>(std::clamp(static_cast<int>(value), 0, 32767) * 255 / 32767);
}

bool SameReading(const VeGamePadReading& a, const VeGamePadReading& b) {
    return a.buttons == b.buttons && a.leftTrigger == b.leftTrigger && a.rightTrigger == b.rightTrigger &&
           a.thumbLeftX == b.thumbLeftX && a.thumbLeftY == b.thumbLeftY && a.thumbRightX == b.thumbRightX &&
           a.thumbRightY == b.thumbRightY;
}
} // namespace

VeSdlGamePadSource::VeSdlGamePadSource() {
    ready = SDL_InitSubSystem(SDL_INIT_GAMECONTROLLER) == 0;
    if (!ready) {
        Log("Game pads unavailable: %s\n", SDL_GetError());
    }
}

VeSdlGamePadSource::~VeSdlGamePadSource() {
    for (SDL_GameController*& controller : controllers) {
        if (controller != nullptr) {
            SDL_GameControllerClose(controller);
            controller = nullptr;
        }
    }
    if (ready) {
        SDL_QuitSubSystem(SDL_INIT_GAMECONTROLLER);
    }
}

SDL_GameController* VeSdlGamePadSource::Open(int index) {
    SDL_GameController*& slot = controllers[index];
    if (slot != nullptr && SDL_GameControllerGetAttached(slot) == SDL_FALSE) {
        SDL_GameControllerClose(slot);
        slot = nullptr;
    }
    if (slot != nullptr || !ready) {
        return slot;
    }
    SDL_GameControllerUpdate();
    const int count = SDL_NumJoysticks();
    for (int device = 0; device < count; ++device) {
        if (SDL_IsGameController(device) == SDL_FALSE) {
            continue;
        }
        const SDL_JoystickID id = SDL_JoystickGetDeviceInstanceID(device);
        bool taken = false;
        for (SDL_GameController* other : controllers) {
            taken = taken ||
                    (other != nullptr && SDL_JoystickInstanceID(SDL_GameControllerGetJoystick(other)) == id);
        }
        if (!taken) {
            slot = SDL_GameControllerOpen(device);
            last[index] = VeGamePadReading();
            break;
        }
    }
    return slot;
}

uint32_t VeSdlGamePadSource::ReadPad(int index, VeGamePadReading& reading) {
    if (index < 0 || index >= GamePad::kPadCount) {
        return kNotConnected;
    }
    SDL_GameController* controller = Open(index);
    if (controller == nullptr) {
        return kNotConnected;
    }
    struct Mapping {
        SDL_GameControllerButton button;
        uint16_t bit;
    };
    static constexpr Mapping kButtons[] = {
        {SDL_CONTROLLER_BUTTON_A, GamePad::A},
        {SDL_CONTROLLER_BUTTON_B, GamePad::B},
        {SDL_CONTROLLER_BUTTON_X, GamePad::X},
        {SDL_CONTROLLER_BUTTON_Y, GamePad::Y},
        {SDL_CONTROLLER_BUTTON_LEFTSTICK, GamePad::LeftStick},
        {SDL_CONTROLLER_BUTTON_RIGHTSTICK, GamePad::RightStick},
        {SDL_CONTROLLER_BUTTON_LEFTSHOULDER, GamePad::LeftShoulder},
        {SDL_CONTROLLER_BUTTON_RIGHTSHOULDER, GamePad::RightShoulder},
        {SDL_CONTROLLER_BUTTON_BACK, GamePad::Back},
        {SDL_CONTROLLER_BUTTON_START, GamePad::Start},
        {SDL_CONTROLLER_BUTTON_DPAD_UP, GamePad::DpadUp},
        {SDL_CONTROLLER_BUTTON_DPAD_DOWN, GamePad::DpadDown},
        {SDL_CONTROLLER_BUTTON_DPAD_LEFT, GamePad::DpadLeft},
        {SDL_CONTROLLER_BUTTON_DPAD_RIGHT, GamePad::DpadRight},
    };
    VeGamePadReading now;
    for (const Mapping& mapping : kButtons) {
        if (SDL_GameControllerGetButton(controller, mapping.button) != 0) {
            now.buttons = static_cast<uint16_t>(now.buttons | mapping.bit);
        }
    }
    now.leftTrigger = TriggerByte(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_TRIGGERLEFT));
    now.rightTrigger = TriggerByte(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_TRIGGERRIGHT));
    now.thumbLeftX = SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_LEFTX);
    now.thumbLeftY = FlipAxis(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_LEFTY));
    now.thumbRightX = SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_RIGHTX);
    now.thumbRightY = FlipAxis(SDL_GameControllerGetAxis(controller, SDL_CONTROLLER_AXIS_RIGHTY));
    // The packet number moves on whenever anything on the pad changed.
    now.packet = last[index].packet + (SameReading(now, last[index]) ? 0 : 1);
    last[index] = now;
    reading = now;
    return 0;
}

uint32_t VeSdlGamePadSource::SetMotors(int index, uint16_t leftMotor, uint16_t rightMotor) {
    if (index < 0 || index >= GamePad::kPadCount) {
        return kNotConnected;
    }
    SDL_GameController* controller = Open(index);
    if (controller == nullptr) {
        return kNotConnected;
    }
    return SDL_GameControllerRumble(controller, leftMotor, rightMotor, kRumbleMs) == 0 ? 0 : kFailure;
}

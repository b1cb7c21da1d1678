#include "Input/VeInput.h"

#include "Input/GamePad.h"
#include "Input/VeSdlGamePadSource.h"
#include "Input/VeSdlInputSource.h"
#include "Platform/VeTime.h"
#include "Screen/VeScreen.h"

#include <cstring>

namespace {
VeInput* currentInput = nullptr;
} // namespace

VeInput::VeInput(VeScreen* owner) : VeInput(owner, std::make_unique<VeSdlInputSource>()) {
    if (GamePad::Instance() == nullptr) {
        ownedPad = std::make_unique<GamePad>(std::make_unique<VeSdlGamePadSource>());
    }
    if (screen != nullptr) {
        RefreshViewport();
        screen->SetViewportListener([this](const VeViewportMapping& mapping) {
            SetViewport(mapping.x, mapping.y, mapping.scaleX, mapping.scaleY);
        });
        followsScreen = true;
    }
}

VeInput::VeInput(VeScreen* owner, std::unique_ptr<VeInputSource> source)
    : screen(owner), pump(std::make_unique<VeEventPump>(this, std::move(source))) {
    Reset();
    currentInput = this;
}

VeInput::~VeInput() {
    if (followsScreen) {
        screen->SetViewportListener(nullptr);
    }
    if (currentInput == this) {
        currentInput = nullptr;
    }
}

VeInput* VeInput::Current() {
    return currentInput;
}

void VeInput::RefreshViewport() {
    if (screen != nullptr) {
        const VeViewportMapping mapping = screen->GetViewportMapping();
        SetViewport(mapping.x, mapping.y, mapping.scaleX, mapping.scaleY);
    }
}

int VeInput::MapToLogical(int raw, float scale, int offset) {
    return static_cast<int>(static_cast<float>(raw) / scale - static_cast<float>(offset));
}

void VeInput::Update() {
    uint8_t down[kKeyCount];
    pump->Pump(down);
    UpdateKeys(down);

    for (int key = 0; key < kKeyCount; ++key) {
        if (pendingPressed[key] != 0) {
            pressed[key] = 1;
            pendingPressed[key] = 0;
            pressedBeforeDown[key] = held[key] == 0 ? 1 : 0;
        }
    }
    for (int button = 0; button < kMouseEntryCount; ++button) {
        if (mousePendingPressed[button] != 0) {
            mousePressed[button] = 1;
            mousePendingPressed[button] = 0;
        }
    }
    if (mouseMovePending) {
        mouseMoved = true;
        mouseMovePending = false;
    }
}

void VeInput::UpdateKeys(const uint8_t (&down)[kKeyCount]) {
    const int64_t now = GetTimeMs();
    bool any = false;
    for (int key = 0; key < kKeyCount; ++key) {
        if (down[key] != 0) {
            any = true;
            if (held[key] == 0) {
                held[key] = 1;
                stamp[key] = now;
                if (pressedBeforeDown[key] == 0) {
                    pressed[key] = 1;
                }
                repeatBlocked[key] = 0;
            } else if (repeatBlocked[key] == 0 && stamp[key] > 0) {
                const int64_t threshold = repeating[key] != 0 ? repeatInterval : repeatDelay;
                if (now - stamp[key] > threshold) {
                    repeating[key] = 1;
                    pressed[key] = 1;
                    stamp[key] = now;
                }
            }
        } else if (held[key] != 0) {
            held[key] = 0;
            repeating[key] = 0;
            stamp[key] = 0;
        }
        pressedBeforeDown[key] = 0;
    }
    anyKeyDown = any;
}

void VeInput::Reset() {
    std::memset(pressed, 0, sizeof(pressed));
    std::memset(mousePressed, 0, sizeof(mousePressed));
    mouseMoved = false;
    mouseMovePending = false;
    std::memset(held, 0, sizeof(held));
    std::memset(pendingPressed, 0, sizeof(pendingPressed));
    std::memset(pressedBeforeDown, 0, sizeof(pressedBeforeDown));
    std::memset(repeating, 0, sizeof(repeating));
    std::memset(stamp, 0, sizeof(stamp));
    std::memset(mouseDown, 0, sizeof(mouseDown));
    std::memset(mousePendingPressed, 0, sizeof(mousePendingPressed));
    BlockRepeats();
}

void VeInput::BlockRepeats() {
    std::memset(repeatBlocked, 1, sizeof(repeatBlocked));
}

void VeInput::ClearPressed() {
    std::memset(pressed, 0, sizeof(pressed));
    std::memset(mousePressed, 0, sizeof(mousePressed));
    mouseMoved = false;
}

void VeInput::SetRepeat(int delay, int interval) {
    repeatDelay = delay;
    repeatInterval = interval;
}

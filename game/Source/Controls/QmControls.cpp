#include "Controls/QmControls.h"

#include "Input/VeInput.h"
#include "Input/VeKey.h"

namespace {
// The most recent state of pad 0, shared by every reader of the controls.
GamePad::State padState;

constexpr float kStickThreshold = 0.5f;
} // namespace

QmControls::QmControls(VeInput* inputState) : input(inputState) {}

void QmControls::RefreshPadState() {
    GamePad* pad = GamePad::Instance();
    padState = pad != nullptr ? pad->GetState(0, GamePad::IndependentAxes) : GamePad::State();
}

const GamePad::State& QmControls::PadState() {
    return padState;
}

bool QmControls::PadActive(const GamePad::State& state, int entry) {
    switch (entry) {
    case LatchLeft:
        return state.leftX < -kStickThreshold || state.dpadLeft;
    case LatchRight:
        return state.leftX > kStickThreshold || state.dpadRight;
    case LatchUp:
        return state.leftY > kStickThreshold || state.dpadUp;
    case LatchDown:
        return state.leftY < -kStickThreshold || state.dpadDown;
    case LatchA:
        return state.a;
    case LatchB:
        return state.b;
    case LatchX:
        return state.x;
    case LatchY:
        return state.y;
    case LatchStart:
        return state.start;
    default:
        return false;
    }
}

bool QmControls::KeyPressed(int key) const {
    return input != nullptr && input->pressed[key] != 0;
}

bool QmControls::KeyHeld(int key) const {
    return input != nullptr && input->held[key] != 0;
}

bool QmControls::PadPressed(int entry) const {
    return PadActive(padState, entry) && !latch[entry];
}

bool QmControls::Jump() {
    RefreshPadState();
    return KeyPressed(VeKey::Up) || KeyPressed(VeKey::Space) || KeyPressed(VeKey::W) ||
           PadActive(padState, LatchUp) || PadPressed(LatchA);
}

bool QmControls::Left() {
    RefreshPadState();
    return KeyHeld(VeKey::Left) || PadActive(padState, LatchLeft);
}

bool QmControls::Right() {
    RefreshPadState();
    return KeyHeld(VeKey::Right) || PadActive(padState, LatchRight);
}

bool QmControls::Confirm() {
    RefreshPadState();
    return KeyPressed(VeKey::Return) || KeyPressed(VeKey::KeypadEnter) || PadPressed(LatchA);
}

bool QmControls::Back() {
    RefreshPadState();
    return KeyPressed(VeKey::Escape) || PadPressed(LatchB);
}

bool QmControls::MenuUp() {
    RefreshPadState();
    return KeyPressed(VeKey::Up) || PadPressed(LatchUp);
}

bool QmControls::MenuDown() {
    RefreshPadState();
    return KeyPressed(VeKey::Down) || PadPressed(LatchDown);
}

bool QmControls::MenuLeft() {
    RefreshPadState();
    return KeyPressed(VeKey::Left) || PadPressed(LatchLeft);
}

bool QmControls::MenuRight() {
    RefreshPadState();
    return KeyPressed(VeKey::Right) || PadPressed(LatchRight);
}

bool QmControls::AnyMovement() {
    RefreshPadState();
    static constexpr int kKeys[] = {VeKey::A,     VeKey::D,    VeKey::W,  VeKey::S,    VeKey::Left,
                                    VeKey::Right, VeKey::Down, VeKey::Up, VeKey::Space};
    for (int key : kKeys) {
        if (KeyHeld(key)) {
            return true;
        }
    }
    for (int entry = 0; entry < kLatchSize; ++entry) {
        if (PadActive(padState, entry)) {
            return true;
        }
    }
    return false;
}

bool QmControls::PadStartPressed() {
    RefreshPadState();
    return PadPressed(LatchStart);
}

bool QmControls::PadXPressed() {
    RefreshPadState();
    return PadPressed(LatchX);
}

bool QmControls::PadYPressed() {
    RefreshPadState();
    return PadPressed(LatchY);
}

bool QmControls::PadDownPressed() {
    RefreshPadState();
    return PadPressed(LatchDown);
}

bool QmControls::PadUpPressed() {
    RefreshPadState();
    return PadPressed(LatchUp);
}

bool QmControls::PadRightPressed() {
    RefreshPadState();
    return PadPressed(LatchRight);
}

bool QmControls::PadLeftPressed() {
    RefreshPadState();
    return PadPressed(LatchLeft);
}

void QmControls::UpdateLatch() {
    RefreshPadState();
    for (int entry = 0; entry < kLatchSize; ++entry) {
        latch[entry] = PadActive(padState, entry);
    }
}

void QmControls::StartRumble() {
    if (GamePad* pad = GamePad::Instance()) {
        pad->SetVibration(0, kRumbleLevel, kRumbleLevel, 0.0f, 0.0f);
    }
}

void QmControls::StopRumble() {
    if (GamePad* pad = GamePad::Instance()) {
        pad->SetVibration(0, 0.0f, 0.0f, 0.0f, 0.0f);
    }
}

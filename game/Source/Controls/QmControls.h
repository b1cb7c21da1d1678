#pragma once
// The game's actions over the keyboard and game pad 0. Keyboard actions read the input state's
// pressed flags (first press and auto-repeats) or held flags; pad actions read the latest pad
// state, and "pressed" on the pad means active now and clear in the latch, which the frame
// refreshes once with UpdateLatch after the page or race update. Every action refreshes the
// process's pad state first.
#include "Input/GamePad.h"

class VeInput;

class QmControls {
public:
    enum LatchEntry { LatchLeft, LatchRight, LatchUp, LatchDown, LatchA, LatchB, LatchX, LatchY, LatchStart };
    static constexpr int kLatchSize = 9;
    static constexpr float kRumbleLevel = 880.0f;

    explicit QmControls(VeInput* input);

    // Race actions.
    bool Jump();
    bool Left();
    bool Right();
    // Menu actions.
    bool Confirm();
    bool Back();
    bool MenuUp();
    bool MenuDown();
    bool MenuLeft();
    bool MenuRight();
    // Any key or pad input that moves something is active now.
    bool AnyMovement();
    // Pad entries pressed this frame.
    bool PadStartPressed();
    bool PadXPressed();
    bool PadYPressed();
    bool PadDownPressed();
    bool PadUpPressed();
    bool PadRightPressed();
    bool PadLeftPressed();

    void UpdateLatch();
    void StartRumble();
    void StopRumble();

    // Reads pad 0 (independent-axes dead zone) into the process's pad state; all zero without a
    // pad reader.
    static void RefreshPadState();
    static const GamePad::State& PadState();
    // Whether the latch entry is active in the given pad state.
    static bool PadActive(const GamePad::State& state, int entry);

    bool latch[kLatchSize] = {};

private:
    bool KeyPressed(int key) const;
    bool KeyHeld(int key) const;
    bool PadPressed(int entry) const;

    VeInput* input;
};

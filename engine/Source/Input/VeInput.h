#pragma once
// The engine's keyboard and mouse state, one per application. Update runs first in every frame:
// it pumps the system's events, then turns the keys into held flags and pressed flags (a first
// press, then auto-repeats after repeatDelay and every repeatInterval milliseconds on the
// GetTimeMs clock), and moves injected presses, mouse presses and the moved flag into this frame.
// ClearPressed runs after the frame's drawing, so a press is seen by exactly one frame.
// Pages and form elements read the public flags directly, indexed by VeKey numbers and the mouse
// entries of VeKey.h. The pointer is in logical screen coordinates: raw / scale - offset.
#include "Input/VeEventPump.h"
#include "Input/VeKey.h"

#include <cstdint>
#include <memory>

class VeScreen;
class GamePad;

class VeInput {
public:
    // Reads the system's devices and owns the process's game pad reader (when none exists yet);
    // follows the screen's letterboxing when a screen is given.
    explicit VeInput(VeScreen* screen);
    // Reads the given source; no game pad is made (tests, tools).
    VeInput(VeScreen* screen, std::unique_ptr<VeInputSource> source);
    ~VeInput();
    VeInput(const VeInput&) = delete;
    VeInput& operator=(const VeInput&) = delete;

    void Update();
    // Forgets every key and button and blocks repeats; keys still down count as new presses.
    void Reset();
    // No key repeats until it is released and pressed again.
    void BlockRepeats();
    void ClearPressed();
    void SetRepeat(int delay, int interval);
    // Where the 640 x 640 drawing area lies in the window: its origin in logical pixels and
    // window pixels per logical pixel (the screen calls it when the window changes).
    void SetViewport(int newOffsetX, int newOffsetY, float newScaleX, float newScaleY) {
        offsetX = newOffsetX;
        offsetY = newOffsetY;
        scaleX = newScaleX > 0.0f ? newScaleX : 1.0f;
        scaleY = newScaleY > 0.0f ? newScaleY : 1.0f;
    }
    // Reads where the drawing area lies from the screen (after the window changed), if there is one.
    void RefreshViewport();
    // A raw window coordinate in logical pixels, computed in single precision and truncated.
    static int MapToLogical(int raw, float scale, int offset);
    // True when the system or the window's close button asked the program to end.
    bool QuitRequested() const { return pump->quitRequested; }
    // The one input state of the process, or null.
    static VeInput* Current();

    VeScreen* screen;
    int mouseX = -1;
    int mouseY = -1;
    int offsetX = 0;
    int offsetY = 0;
    float scaleX = 1.0f;
    float scaleY = 1.0f;
    std::unique_ptr<VeEventPump> pump;
    bool anyKeyDown = false;
    uint8_t held[kKeyCount] = {};
    uint8_t repeating[kKeyCount] = {};
    uint8_t repeatBlocked[kKeyCount] = {};
    int64_t stamp[kKeyCount] = {};
    uint8_t pressed[kKeyCount] = {};
    uint8_t pendingPressed[kKeyCount] = {};
    uint8_t mouseDown[kMouseEntryCount] = {};
    uint8_t mousePressed[kMouseEntryCount] = {};
    uint8_t mousePendingPressed[kMouseEntryCount] = {};
    bool mouseMoved = false;
    bool mouseMovePending = false;
    int repeatDelay = 300;
    int repeatInterval = 75;

private:
    void UpdateKeys(const uint8_t (&down)[kKeyCount]);

    // A press counted from its event before the keyboard's state showed the key down: the state's
    // rise at the next frame is the same press, not a second one.
    uint8_t pressedBeforeDown[kKeyCount] = {};

    std::unique_ptr<GamePad> ownedPad;
    bool followsScreen = false;
};

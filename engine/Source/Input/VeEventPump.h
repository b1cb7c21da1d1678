#pragma once
// The first step of every input update: reads the keyboard and the mouse from the source, turns
// the raw pointer into logical coordinates and drains the event queue (wheel steps, key presses,
// which count even when too short to be seen down at a frame, the window's activation, the quit
// request). Events the input state has no use for go to the listener, if one is set (the screen's
// pointer-outside flag, window resizes).
#include "Input/VeInputEvent.h"
#include "Input/VeInputSource.h"

#include <functional>
#include <memory>
#include <vector>

class VeInput;

class VeEventPump {
public:
    VeEventPump(VeInput* input, std::unique_ptr<VeInputSource> source);

    // Steps 1 to 5 of the update; the key flags of the source land in down.
    void Pump(uint8_t (&down)[kKeyCount]);

    bool quitRequested = false;
    VeInput* input;
    std::function<void(const VeInputEvent&)> listener;

private:
    std::unique_ptr<VeInputSource> source;
    std::vector<VeInputEvent> events;
    bool pointerSeen = false;
};

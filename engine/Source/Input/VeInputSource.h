#pragma once
// Where the input state gets the devices from: the system (VeSdlInputSource) or, in tests, a
// scripted fake. The event pump reads the keyboard, then the mouse, then drains the events.
#include "Input/VeInputEvent.h"
#include "Input/VeKey.h"

#include <cstdint>
#include <vector>

class VeInputSource {
public:
    virtual ~VeInputSource() = default;

    // Sets down[sc] for every key held now and clears the others.
    virtual void ReadKeyboard(uint8_t (&down)[kKeyCount]) = 0;
    // The pointer in raw window pixels and the button mask (1 left, 2 middle, 4 right).
    virtual uint32_t ReadMouse(int& x, int& y) = 0;
    // Appends every waiting event, oldest first, and empties the queue.
    virtual void PollEvents(std::vector<VeInputEvent>& events) = 0;
};

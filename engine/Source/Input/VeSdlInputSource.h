#pragma once
// The system's keyboard, mouse and event queue through SDL. Reading the keyboard pumps the
// queue first, so the key flags are those of this moment.
#include "Input/VeInputSource.h"

class VeSdlInputSource : public VeInputSource {
public:
    void ReadKeyboard(uint8_t (&down)[kKeyCount]) override;
    uint32_t ReadMouse(int& x, int& y) override;
    void PollEvents(std::vector<VeInputEvent>& events) override;
};

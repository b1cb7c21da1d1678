#pragma once
// The system's game controllers through SDL's controller mapping, presented as classic pads:
// slots 0 to 3 take controllers in the order they are found; a slot whose controller is unplugged
// reads as not connected until another one is found. Vibration runs until changed (SDL's longest
// effect, renewed by every call).
#include "Input/VeGamePadSource.h"

#include <SDL.h>

class VeSdlGamePadSource : public VeGamePadSource {
public:
    VeSdlGamePadSource();
    ~VeSdlGamePadSource() override;
    VeSdlGamePadSource(const VeSdlGamePadSource&) = delete;
    VeSdlGamePadSource& operator=(const VeSdlGamePadSource&) = delete;

    uint32_t ReadPad(int index, VeGamePadReading& reading) override;
    uint32_t SetMotors(int index, uint16_t leftMotor, uint16_t rightMotor) override;

private:
    SDL_GameController* Open(int index);

    bool ready = false;
    SDL_GameController* controllers[4] = {};
    VeGamePadReading last[4];
};

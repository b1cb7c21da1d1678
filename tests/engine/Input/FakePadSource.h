#pragma once
// Test support: game pads whose presence and readings the test sets, counting every request.
#include "Input/VeGamePadSource.h"

#include <vector>

class FakePadSource : public VeGamePadSource {
public:
    struct Pads {
        bool present[4] = {};
        VeGamePadReading reading[4];
        uint32_t motorResult = 0;
        int reads[4] = {};
        int motorCalls[4] = {};
        uint16_t leftMotor = 0;
        uint16_t rightMotor = 0;
    };

    explicit FakePadSource(Pads* pads) : pads(pads) {}

    uint32_t ReadPad(int index, VeGamePadReading& reading) override {
        pads->reads[index]++;
        if (!pads->present[index]) {
            return kNotConnected;
        }
        reading = pads->reading[index];
        return 0;
    }
    uint32_t SetMotors(int index, uint16_t leftMotor, uint16_t rightMotor) override {
        pads->motorCalls[index]++;
        if (!pads->present[index]) {
            return kNotConnected;
        }
        pads->leftMotor = leftMotor;
        pads->rightMotor = rightMotor;
        return pads->motorResult;
    }

private:
    Pads* pads;
};

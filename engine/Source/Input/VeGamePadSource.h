#pragma once
// Where the game pad reader gets its pads from: the system's controllers (VeSdlGamePadSource) or,
// in tests, a fake. Readings use the classic pad layout: a packet number that changes with the
// state, a button bit field (GamePad's bit table), two 8-bit triggers and four signed 16-bit stick
// axes with y positive upwards.
#include <cstdint>

struct VeGamePadReading {
    uint64_t packet = 0;
    uint16_t buttons = 0;
    uint8_t leftTrigger = 0;
    uint8_t rightTrigger = 0;
    int16_t thumbLeftX = 0;
    int16_t thumbLeftY = 0;
    int16_t thumbRightX = 0;
    int16_t thumbRightY = 0;
};

class VeGamePadSource {
public:
    // Result of a pad that is not there.
    static constexpr uint32_t kNotConnected = 1167;

    virtual ~VeGamePadSource() = default;
    // 0 and the reading, kNotConnected, or another error code.
    virtual uint32_t ReadPad(int index, VeGamePadReading& reading) = 0;
    // Sets the two motor speeds (0 to 65535); 0, kNotConnected or another error code.
    virtual uint32_t SetMotors(int index, uint16_t leftMotor, uint16_t rightMotor) = 0;
};

#pragma once
// The game pad reader: pads 0 to 3 of a VeGamePadSource, one reader per process. A pad that is not
// connected reads as all zero; after a failed read the pads are left alone for a while (1000 ms for
// the same pad, 250 ms for any other) because asking for an absent pad is slow on some systems.
// Sticks and triggers come out in -1..1 and 0..1 after the dead zones.
#include "Input/VeGamePadSource.h"

#include <cstdint>
#include <memory>

class GamePad {
public:
    struct State {
        bool connected = false;
        uint64_t packet = 0;
        bool a = false;
        bool b = false;
        bool x = false;
        bool y = false;
        bool leftStick = false;
        bool rightStick = false;
        bool leftShoulder = false;
        bool rightShoulder = false;
        bool back = false;
        bool start = false;
        bool dpadUp = false;
        bool dpadDown = false;
        bool dpadRight = false;
        bool dpadLeft = false;
        float leftX = 0.0f;
        float leftY = 0.0f;
        float rightX = 0.0f;
        float rightY = 0.0f;
        float leftTrigger = 0.0f;
        float rightTrigger = 0.0f;
    };

    enum DeadZoneMode { IndependentAxes = 0, Circular = 1, NoDeadZone = 2 };

    enum Button : uint16_t {
        DpadUp = 0x0001,
        DpadDown = 0x0002,
        DpadLeft = 0x0004,
        DpadRight = 0x0008,
        Start = 0x0010,
        Back = 0x0020,
        LeftStick = 0x0040,
        RightStick = 0x0080,
        LeftShoulder = 0x0100,
        RightShoulder = 0x0200,
        A = 0x1000,
        B = 0x2000,
        X = 0x4000,
        Y = 0x8000,
    };

    static constexpr int kPadCount = 4;
    static constexpr int64_t kRetrySamePadMs = 1000;
    static constexpr int64_t kRetryOtherPadMs = 250;

    // Throws std::logic_error("GamePad is a singleton") when a reader exists already.
    explicit GamePad(std::unique_ptr<VeGamePadSource> source);
    ~GamePad();
    GamePad(const GamePad&) = delete;
    GamePad& operator=(const GamePad&) = delete;

    // The reader of the process, or null.
    static GamePad* Instance();

    State GetState(int player, int deadZoneMode);
    // The trigger values are accepted and ignored. False when throttled, absent or refused.
    bool SetVibration(int player, float leftMotor, float rightMotor, float leftTrigger, float rightTrigger);

    // v past the dead zone d, scaled over the rest of the range up to m, clamped to -1..1.
    static float LinearDeadZone(float value, float maximum, float deadZone);
    // A motor level as the 16-bit speed sent to the pad: value times 65535, truncated, low 16 bits.
    static uint16_t MotorSpeed(float value);

private:
    struct Slot {
        bool connected = false;
        bool failedBefore = false;
        int64_t lastReadTime = 0;
        float leftMotor = 0.0f;
        float rightMotor = 0.0f;
    };

    bool Throttled(int player) const;
    void MarkAbsent(int player);

    std::unique_ptr<VeGamePadSource> source;
    Slot slots[kPadCount];
};

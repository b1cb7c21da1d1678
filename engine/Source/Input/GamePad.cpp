#include "Input/GamePad.h"

#include "Platform/VeTime.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace {
GamePad* instance = nullptr;

constexpr float kTriggerMax = 255.0f;
constexpr float kTriggerDeadZone = 30.0f;
constexpr float kStickMax = 32767.0f;
constexpr float kLeftStickDeadZone = 7849.0f;
constexpr float kRightStickDeadZone = 8689.0f;

float Clamp1(float value) {
    return std::clamp(value, -1.0f, 1.0f);
}

void ApplyStick(float rawX, float rawY, float deadZone, int mode, float& outX, float& outY) {
    if (mode == GamePad::NoDeadZone) {
        outX = Clamp1(rawX / kStickMax);
        outY = Clamp1(rawY / kStickMax);
    } else if (mode == GamePad::Circular) {
        const float length = std::sqrt(rawX * rawX + rawY * rawY);
        const float result = GamePad::LinearDeadZone(length, kStickMax, deadZone);
        const float scale = result > 0.0f ? result / length : 0.0f;
        outX = Clamp1(rawX * scale);
        outY = Clamp1(rawY * scale);
    } else {
        outX = GamePad::LinearDeadZone(rawX, kStickMax, deadZone);
        outY = GamePad::LinearDeadZone(rawY, kStickMax, deadZone);
    }
}
} // namespace

GamePad::GamePad(std::unique_ptr<VeGamePadSource> padSource) : source(std::move(padSource)) {
    if (instance != nullptr) {
        throw std::logic_error("GamePad is a singleton");
    }
    instance = this;
}

GamePad::~GamePad() {
    if (instance == this) {
        instance = nullptr;
    }
}

GamePad* GamePad::Instance() {
    return instance;
}

float GamePad::LinearDeadZone(float value, float maximum, float deadZone) {
    float result = 0.0f;
    if (value < -deadZone) {
        result = (value + deadZone) / (maximum - deadZone);
    } else if (value > deadZone) {
        result = (value - deadZone) / (maximum - deadZone);
    }
    return Clamp1(result);
}

uint16_t GamePad::MotorSpeed(float value) {
    const double scaled = static_cast<double>(value) * 65535.0;
    // Out-of-range levels wrap like the 16-bit store they end in; non-numbers send nothing.
    if (!(std::fabs(scaled) < 9.0e18)) {
        return 0;
    }
    return static_cast<uint16_t>(static_cast<uint64_t>(static_cast<int64_t>(scaled)) & 0xFFFFu);
}

bool GamePad::Throttled(int player) const {
    if (slots[player].connected) {
        return false;
    }
    const int64_t now = GetTimeMs();
    for (int index = 0; index < kPadCount; ++index) {
        const Slot& slot = slots[index];
        if (slot.connected || !slot.failedBefore) {
            continue;
        }
        const int64_t wait = index == player ? kRetrySamePadMs : kRetryOtherPadMs;
        if (now - slot.lastReadTime < wait) {
            return true;
        }
    }
    return false;
}

void GamePad::MarkAbsent(int player) {
    Slot& slot = slots[player];
    slot.connected = false;
    slot.failedBefore = true;
    slot.lastReadTime = GetTimeMs();
    slot.leftMotor = 0.0f;
    slot.rightMotor = 0.0f;
}

GamePad::State GamePad::GetState(int player, int deadZoneMode) {
    State state;
    if (player < 0 || player >= kPadCount || Throttled(player)) {
        return state;
    }
    VeGamePadReading reading;
    const uint32_t result = source->ReadPad(player, reading);
    if (result == VeGamePadSource::kNotConnected) {
        MarkAbsent(player);
        return state;
    }
    slots[player].connected = true;

    state.connected = true;
    state.packet = reading.packet;
    const uint16_t bits = reading.buttons;
    state.a = (bits & A) != 0;
    state.b = (bits & B) != 0;
    state.x = (bits & X) != 0;
    state.y = (bits & Y) != 0;
    state.leftStick = (bits & LeftStick) != 0;
    state.rightStick = (bits & RightStick) != 0;
    state.leftShoulder = (bits & LeftShoulder) != 0;
    state.rightShoulder = (bits & RightShoulder) != 0;
    state.back = (bits & Back) != 0;
    state.start = (bits & Start) != 0;
    state.dpadUp = (bits & DpadUp) != 0;
    state.dpadDown = (bits & DpadDown) != 0;
    state.dpadRight = (bits & DpadRight) != 0;
    state.dpadLeft = (bits & DpadLeft) != 0;

    const float triggerDeadZone = deadZoneMode == NoDeadZone ? 0.0f : kTriggerDeadZone;
    state.leftTrigger = LinearDeadZone(reading.leftTrigger, kTriggerMax, triggerDeadZone);
    state.rightTrigger = LinearDeadZone(reading.rightTrigger, kTriggerMax, triggerDeadZone);
    ApplyStick(reading.thumbLeftX, reading.thumbLeftY, kLeftStickDeadZone, deadZoneMode, state.leftX,
               state.leftY);
    ApplyStick(reading.thumbRightX, reading.thumbRightY, kRightStickDeadZone, deadZoneMode, state.rightX,
               state.rightY);
    return state;
}

bool GamePad::SetVibration(int player, float leftMotor, float rightMotor, float /*leftTrigger*/,
                           float /*rightTrigger*/) {
    if (player < 0 || player >= kPadCount || Throttled(player)) {
        return false;
    }
    slots[player].leftMotor = leftMotor;
    slots[player].rightMotor = rightMotor;
    const uint32_t result = source->SetMotors(player, MotorSpeed(leftMotor), MotorSpeed(rightMotor));
    if (result == VeGamePadSource::kNotConnected) {
        MarkAbsent(player);
        return false;
    }
    slots[player].connected = true;
    return result == 0;
}

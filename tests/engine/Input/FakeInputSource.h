#pragma once
// Test support: a scripted keyboard, mouse and event queue for VeInput.
#include "Input/VeInputSource.h"

#include <cstring>

class FakeInputSource : public VeInputSource {
public:
    struct Devices {
        uint8_t keys[kKeyCount] = {};
        int mouseX = 0;
        int mouseY = 0;
        uint32_t buttons = 0;
        std::vector<VeInputEvent> queue;
    };

    // The devices stay with the test, which changes them between updates.
    explicit FakeInputSource(Devices* devices) : devices(devices) {}

    void ReadKeyboard(uint8_t (&down)[kKeyCount]) override { std::memcpy(down, devices->keys, sizeof(down)); }
    uint32_t ReadMouse(int& x, int& y) override {
        x = devices->mouseX;
        y = devices->mouseY;
        return devices->buttons;
    }
    void PollEvents(std::vector<VeInputEvent>& events) override {
        events.insert(events.end(), devices->queue.begin(), devices->queue.end());
        devices->queue.clear();
    }

private:
    Devices* devices;
};

#pragma once
// Test support for the form elements: an input state fed by a scripted keyboard and mouse, a
// driven clock, and frames run the way a page runs them (input update, element update, clear).
#include "Form/VeFormElement.h"
#include "Input/VeInput.h"
#include "Platform/VeTime.h"
#include "Screen/VeCursor.h"

#include "engine/Input/FakeInputSource.h"

#include <initializer_list>
#include <memory>

class FormRig {
public:
    FormRig() {
        SetTimeSource([this] { return now; });
        input = std::make_unique<VeInput>(nullptr, std::make_unique<FakeInputSource>(&devices));
        VeCursor::SetMode(VeCursorKind::Arrow);
    }
    ~FormRig() {
        input.reset();
        SetTimeSource(nullptr);
        VeCursor::SetMode(VeCursorKind::Arrow);
    }
    FormRig(const FormRig&) = delete;
    FormRig& operator=(const FormRig&) = delete;

    // One frame: the input reads the devices, the element updates with the mouse-over state the
    // page would work out, and the frame's presses are cleared. Time moves on by step.
    void Frame(VeFormElement& element, int64_t step = 16) {
        input->Update();
        element.Update(*input, element.MouseOver(*input));
        input->ClearPressed();
        now += step;
    }
    // The keys go down for one frame and come up again in the next (also a frame).
    void Tap(VeFormElement& element, std::initializer_list<int> keys) {
        for (int key : keys) {
            devices.keys[key] = 1;
        }
        Frame(element);
        for (int key : keys) {
            devices.keys[key] = 0;
        }
        Frame(element);
    }
    void MoveMouse(int x, int y) {
        devices.mouseX = x;
        devices.mouseY = y;
    }
    // A left click at (x, y): the button goes down for one frame and up in the next.
    void Click(VeFormElement& element, int x, int y) {
        MoveMouse(x, y);
        devices.buttons = 1;
        Frame(element);
        devices.buttons = 0;
        Frame(element);
    }

    int64_t now = 10000;
    FakeInputSource::Devices devices;
    std::unique_ptr<VeInput> input;
};

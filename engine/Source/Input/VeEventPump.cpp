#include "Input/VeEventPump.h"

#include "Input/VeInput.h"

VeEventPump::VeEventPump(VeInput* owner, std::unique_ptr<VeInputSource> inputSource)
    : input(owner), source(std::move(inputSource)) {}

void VeEventPump::Pump(uint8_t (&down)[kKeyCount]) {
    source->ReadKeyboard(down);

    // A coordinate of exactly 0 is what the system reports before the pointer was ever seen in
    // the window; the last position stays. The pointer counts as moved only when its place
    // changes: one resting in the window must not take the selection from the keys.
    int rawX = 0;
    int rawY = 0;
    const uint32_t buttons = source->ReadMouse(rawX, rawY);
    if (rawX != 0 && rawY != 0) {
        const int x = VeInput::MapToLogical(rawX, input->scaleX, input->offsetX);
        const int y = VeInput::MapToLogical(rawY, input->scaleY, input->offsetY);
        if (x != input->mouseX || y != input->mouseY || !pointerSeen) {
            input->mouseMovePending = true;
        }
        input->mouseX = x;
        input->mouseY = y;
        pointerSeen = true;
    }

    for (int button = kMouseLeft; button <= kMouseRight; ++button) {
        const bool isDown = (buttons & (1u << (button - 1))) != 0;
        if (isDown && input->mouseDown[button] == 0) {
            input->mouseDown[button] = 1;
            input->mousePendingPressed[button] = 1;
        } else if (!isDown) {
            input->mouseDown[button] = 0;
        }
    }
    input->mouseDown[kMouseWheelDown] = 0;
    input->mouseDown[kMouseWheelUp] = 0;

    events.clear();
    source->PollEvents(events);
    for (const VeInputEvent& event : events) {
        switch (event.kind) {
        case VeInputEvent::Wheel:
            if (event.value < 0) {
                input->mouseDown[kMouseWheelDown] = 1;
                input->mousePendingPressed[kMouseWheelDown] = 1;
            } else if (event.value > 0) {
                input->mouseDown[kMouseWheelUp] = 1;
                input->mousePendingPressed[kMouseWheelUp] = 1;
            }
            break;
        case VeInputEvent::KeyPressed:
            // A key pressed and let go between two frames is not down when the keyboard is read:
            // its press still counts for the next frame.
            if (event.value >= 0 && event.value < kKeyCount) {
                input->pendingPressed[event.value] = 1;
            }
            break;
        case VeInputEvent::Quit:
            quitRequested = true;
            break;
        case VeInputEvent::WindowActivated:
            input->Reset();
            break;
        case VeInputEvent::WindowResized:
            input->RefreshViewport();
            break;
        default:
            break;
        }
        if (listener) {
            listener(event);
        }
    }
}

#pragma once
// One event from the system's queue, reduced to what the engine uses. timeMs is on the GetTimeMs
// clock, so a recorded stream of events can be replayed against the same timer.
#include <cstdint>

struct VeInputEvent {
    enum Kind {
        Wheel,           // value: the wheel's y step (below 0 towards the user)
        Quit,            // the system or the window's close button asks the program to end
        WindowActivated, // the window gained the keyboard focus
        MouseEntered,    // the pointer came into the window
        MouseLeft,       // the pointer left the window
        WindowResized,   // the window's size or mode changed
        KeyPressed,      // value: the key (VeKey) went down; a held key's repeats are not events
    };

    Kind kind = Quit;
    int64_t timeMs = 0;
    int value = 0;
};

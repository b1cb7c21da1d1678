#pragma once
// The mouse cursor shape. Pages write the mode every frame; the screen applies it. Modes: 0 arrow,
// 1 text I-beam, 2 hand, 3 and 4 hidden while the mouse is inside the window, above 4 the system's
// default cursor. While the mouse is outside the window the arrow is shown and nothing else is
// applied until it comes back (the screen follows SDL's window enter and leave events).
#include <cstdint>

union SDL_Event;

class VeCursor {
public:
    static void SetMode(int32_t mode);
    static int32_t Mode();
    static bool MouseOutside();
    static void SetMouseOutside(bool outside);
    // Applies the current mode (see above).
    static void Apply();
    // Follows the window's enter and leave events; returns nothing the caller must act on.
    static void OnEvent(const SDL_Event& event);
    // Frees the system cursors (before SDL's video subsystem ends).
    static void Release();
};

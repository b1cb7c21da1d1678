#include "Screen/VeCursor.h"

#include <SDL.h>

#include <array>

namespace {

// The process-wide cursor state: the mode the pages ask for and whether the mouse left the window.
int32_t cursorMode = 0;
bool mouseOutside = false;
std::array<SDL_Cursor*, 3> systemCursors{};

SDL_Cursor* SystemCursor(int index) {
    static constexpr std::array<SDL_SystemCursor, 3> kKinds{SDL_SYSTEM_CURSOR_ARROW, SDL_SYSTEM_CURSOR_IBEAM,
                                                            SDL_SYSTEM_CURSOR_HAND};
    if (systemCursors[index] == nullptr) {
        systemCursors[index] = SDL_CreateSystemCursor(kKinds[index]);
    }
    return systemCursors[index];
}

void ShowArrow() {
    SDL_ShowCursor(SDL_ENABLE);
    if (SDL_Cursor* arrow = SystemCursor(0)) {
        SDL_SetCursor(arrow);
    }
}

} // namespace

void VeCursor::SetMode(int32_t mode) {
    cursorMode = mode;
}

int32_t VeCursor::Mode() {
    return cursorMode;
}

bool VeCursor::MouseOutside() {
    return mouseOutside;
}

void VeCursor::SetMouseOutside(bool outside) {
    mouseOutside = outside;
}

void VeCursor::Apply() {
    if (cursorMode >= 0 && cursorMode <= 2) {
        SDL_ShowCursor(SDL_ENABLE);
        if (SDL_Cursor* cursor = SystemCursor(cursorMode)) {
            if (SDL_GetCursor() != cursor) {
                SDL_SetCursor(cursor);
            }
        }
    } else if (cursorMode == 3 || cursorMode == 4) {
        if (!mouseOutside) {
            SDL_ShowCursor(SDL_DISABLE);
            SDL_SetCursor(nullptr);
        }
    } else {
        SDL_ShowCursor(SDL_ENABLE);
        SDL_Cursor* standard = SDL_GetDefaultCursor();
        if (standard != nullptr && SDL_GetCursor() != standard) {
            SDL_SetCursor(standard);
        }
    }
}

void VeCursor::OnEvent(const SDL_Event& event) {
    if (event.type == SDL_MOUSEMOTION) {
        mouseOutside = false;
    } else if (event.type == SDL_WINDOWEVENT) {
        if (event.window.event == SDL_WINDOWEVENT_ENTER) {
            mouseOutside = false;
        } else if (event.window.event == SDL_WINDOWEVENT_LEAVE) {
            mouseOutside = true;
            ShowArrow();
        }
    }
}

void VeCursor::Release() {
    SDL_SetCursor(SDL_GetDefaultCursor());
    for (SDL_Cursor*& cursor : systemCursors) {
        if (cursor != nullptr) {
            SDL_FreeCursor(cursor);
            cursor = nullptr;
        }
    }
}

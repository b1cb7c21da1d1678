#include "Platform/VeMessageBox.h"

#include "Platform/VeAppIdentity.h"

#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>
#include <string_view>

namespace {
std::mutex& HandlerMutex() {
    static std::mutex mutex;
    return mutex;
}
VeMessageBoxHandler& Handler() {
    static VeMessageBoxHandler handler;
    return handler;
}

void ShowSystemBox(const std::string& title, const std::string& text, int kind) {
    if (DialogsEnabled()) {
        Uint32 flags = SDL_MESSAGEBOX_INFORMATION;
        if (kind == VeMessageBox::Warning) {
            flags = SDL_MESSAGEBOX_WARNING;
        } else if (kind == VeMessageBox::Error) {
            flags = SDL_MESSAGEBOX_ERROR;
        }
        if (SDL_ShowSimpleMessageBox(flags, title.c_str(), text.c_str(), nullptr) == 0) {
            return;
        }
    }
    std::fprintf(stderr, "%s\n%s\n", title.c_str(), text.c_str());
    std::fflush(stderr);
}
} // namespace

bool DialogsEnabled() {
    const char* noDialogs = std::getenv(VE_APP_ENV "_NO_DIALOGS");
    if (noDialogs != nullptr && std::string(noDialogs) == "1") {
        return false;
    }
    const char* display = std::getenv("DISPLAY");
    const char* wayland = std::getenv("WAYLAND_DISPLAY");
    return (display != nullptr && *display != '\0') || (wayland != nullptr && *wayland != '\0');
}

VeMessageBox::VeMessageBox(const std::string& title, const std::string& text, int kind)
    : title(title), text(text), kind(kind) {
    VeMessageBoxHandler handler;
    {
        std::lock_guard<std::mutex> lock(HandlerMutex());
        handler = Handler();
    }
    if (handler) {
        handler(title, text, kind);
    } else {
        ShowSystemBox(title, text, kind);
    }
    if (kind == Error) {
        std::fflush(stdout);
        std::exit(0);
    }
}

void Halt(const std::string& title, const std::string& text) {
    VeMessageBox box(title, text, VeMessageBox::Error);
    std::exit(0); // not reached: a kind-2 box ends the process or its handler unwinds
}

void VeAssertFailed(const char* expression, const char* file, int line) {
    // The compiler names the file absolutely, or relative to the build folder when a compiler cache
    // rewrote the paths; either way the message names it from the tree's root.
    std::string source = file;
#ifdef VE_SOURCE_ROOT
    if (source.starts_with(VE_SOURCE_ROOT)) {
        source.erase(0, std::string_view(VE_SOURCE_ROOT).size());
    }
#endif
    while (source.starts_with("../")) {
        source.erase(0, 3);
    }
    const std::string text =
        "Assertion failed in " + source + ", line " + std::to_string(line) + ": " + expression;
    std::fprintf(stderr, "%s\n", text.c_str());
    VeMessageBox box("Assertion failed", text, VeMessageBox::Error);
    std::abort();
}

VeMessageBoxHandler SetMessageBoxHandler(VeMessageBoxHandler handler) {
    std::lock_guard<std::mutex> lock(HandlerMutex());
    VeMessageBoxHandler previous = std::move(Handler());
    Handler() = std::move(handler);
    return previous;
}

#pragma once
// Message boxes and halts. Constructing a VeMessageBox shows it at once (kind 0 information,
// 1 warning, 2 halt). After a kind-2 box the process ends with exit code 0; nothing is shut down.
// Every box passes through one handler that tests replace: a test handler may throw to unwind
// instead of ending the process. With no display, or with <APP>_NO_DIALOGS=1 (the application's
// variable prefix, see VeAppIdentity.h), the title and text go to standard error instead of a
// dialog.
#include <functional>
#include <string>

class VeMessageBox {
public:
    enum Kind { Information = 0, Warning = 1, Error = 2 };
    VeMessageBox(const std::string& title, const std::string& text, int kind);

    std::string title;
    std::string text;
    int kind;
};

// A kind-2 box; the title begins "Halt: " and the text "App halted when " by convention of the
// callers, which pass both whole.
[[noreturn]] void Halt(const std::string& title, const std::string& text);

// A failed programming assertion, naming the source file (relative to the source tree) and the line
// where it failed; goes through the handler as a kind-2 box
// titled "Assertion failed". The default arguments name the caller.
[[noreturn]] void VeAssertFailed(const char* expression, const char* file = __builtin_FILE(),
                                 int line = __builtin_LINE());
#define VE_ASSERT(condition)                                                                                 \
    do {                                                                                                     \
        if (!(condition)) {                                                                                  \
            VeAssertFailed(#condition, __FILE__, __LINE__);                                                  \
        }                                                                                                    \
    } while (0)

// The handler sees every box before it is shown. Returning from it for kind 0 or 1 continues;
// for kind 2 the process then ends. nullptr restores the system dialog. Returns the previous one.
using VeMessageBoxHandler = std::function<void(const std::string& title, const std::string& text, int kind)>;
VeMessageBoxHandler SetMessageBoxHandler(VeMessageBoxHandler handler);

// Whether boxes are shown as dialogs (false when scripted or when there is no display).
bool DialogsEnabled();

#pragma once
// Test support: catches message boxes and halts instead of showing them or ending the process.
// A kind-2 box (a halt) throws HaltIntercepted, so the code under test unwinds to the test.
#include "Platform/VeMessageBox.h"

#include <string>
#include <vector>

struct HaltIntercepted {
    std::string title;
    std::string text;
};

struct CapturedBox {
    std::string title;
    std::string text;
    int kind;
};

class MessageBoxCapture {
public:
    MessageBoxCapture() {
        previous = SetMessageBoxHandler([this](const std::string& title, const std::string& text, int kind) {
            boxes.push_back({title, text, kind});
            if (kind == VeMessageBox::Error) {
                throw HaltIntercepted{title, text};
            }
        });
    }
    ~MessageBoxCapture() { SetMessageBoxHandler(previous); }
    MessageBoxCapture(const MessageBoxCapture&) = delete;
    MessageBoxCapture& operator=(const MessageBoxCapture&) = delete;

    std::vector<CapturedBox> boxes;

private:
    VeMessageBoxHandler previous;
};

// Runs the statement and expects it to halt with exactly this title and text.
#define EXPECT_HALT(statement, expectedTitle, expectedText)                                                  \
    do {                                                                                                     \
        MessageBoxCapture capture_;                                                                          \
        bool halted_ = false;                                                                                \
        try {                                                                                                \
            statement;                                                                                       \
        } catch (const HaltIntercepted& halt_) {                                                             \
            halted_ = true;                                                                                  \
            EXPECT_EQ(halt_.title, std::string(expectedTitle));                                              \
            EXPECT_EQ(halt_.text, std::string(expectedText));                                                \
        }                                                                                                    \
        EXPECT_TRUE(halted_) << "expected a halt: " << expectedTitle;                                        \
    } while (0)

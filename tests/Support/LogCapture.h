#pragma once
// Test support: collects every logged text for the object's lifetime instead of printing it, and
// puts the earlier sink back afterwards.
#include "Platform/VeLog.h"

#include <string>
#include <vector>

class LogCapture {
public:
    LogCapture()
        : previous(SetLogSink([this](const std::string& text) {
              all += text;
              lines.push_back(text);
          })) {}
    ~LogCapture() { SetLogSink(previous); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    // Everything logged, joined, and each logged text on its own.
    std::string all;
    std::vector<std::string> lines;

private:
    VeLogSink previous;
};

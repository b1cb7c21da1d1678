#pragma once
// Console logging: printf-style lines on standard output, no levels, prefixes or timestamps.
// Every message carries its own "\n". Tests can redirect the lines through SetLogSink.
#include <functional>
#include <string>

void Log(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Replaces where log text goes (nullptr restores standard output); returns the previous sink.
using VeLogSink = std::function<void(const std::string& text)>;
VeLogSink SetLogSink(VeLogSink sink);

#include "Platform/VeLog.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <vector>

namespace {
std::mutex& SinkMutex() {
    static std::mutex mutex;
    return mutex;
}
VeLogSink& Sink() {
    static VeLogSink sink;
    return sink;
}
} // namespace

void Log(const char* format, ...) {
    va_list args;
    va_start(args, format);
    va_list copy;
    va_copy(copy, args);
    const int length = std::vsnprintf(nullptr, 0, format, copy);
    va_end(copy);
    std::vector<char> text(length > 0 ? static_cast<size_t>(length) + 1 : 1, '\0');
    if (length > 0) {
        std::vsnprintf(text.data(), text.size(), format, args);
    }
    va_end(args);
    std::lock_guard<std::mutex> lock(SinkMutex());
    if (Sink()) {
        Sink()(std::string(text.data()));
    } else {
        std::fputs(text.data(), stdout);
        std::fflush(stdout);
    }
}

VeLogSink SetLogSink(VeLogSink sink) {
    std::lock_guard<std::mutex> lock(SinkMutex());
    VeLogSink previous = std::move(Sink());
    Sink() = std::move(sink);
    return previous;
}

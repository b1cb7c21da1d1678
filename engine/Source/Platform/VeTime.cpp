#include "Platform/VeTime.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

namespace {
int64_t RealMs() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

struct TimeState {
    std::mutex mutex;
    VeTimeSource source;
    std::atomic<bool> replaced{false};
    int64_t startMs = RealMs();
    std::atomic<float> fixedDelta{0.0f};
};

TimeState& State() {
    static TimeState state;
    return state;
}

thread_local VeTimeSource threadSource;
} // namespace

int64_t GetTimeMs() {
    if (threadSource) {
        return threadSource();
    }
    TimeState& state = State();
    if (state.replaced.load(std::memory_order_acquire)) {
        std::lock_guard<std::mutex> lock(state.mutex);
        if (state.source) {
            return state.source();
        }
    }
    return RealMs();
}

uint32_t GetTicks() {
    return static_cast<uint32_t>(GetClockMs());
}

int64_t GetClockMs() {
    if (threadSource) {
        return threadSource();
    }
    TimeState& state = State();
    if (state.replaced.load(std::memory_order_acquire)) {
        return GetTimeMs();
    }
    return RealMs() - state.startMs;
}

void SleepMs(uint32_t milliseconds) {
    if (State().replaced.load(std::memory_order_acquire)) {
        return;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

void SetTimeSource(VeTimeSource source) {
    TimeState& state = State();
    std::lock_guard<std::mutex> lock(state.mutex);
    state.replaced.store(static_cast<bool>(source), std::memory_order_release);
    state.source = std::move(source);
}

void SetThreadTimeSource(VeTimeSource source) {
    threadSource = std::move(source);
}

void SetFixedFrameDelta(float seconds) {
    State().fixedDelta.store(seconds > 0.0f ? seconds : 0.0f);
}

float GetFixedFrameDelta() {
    return State().fixedDelta.load();
}

#pragma once
// Test helpers for threaded code: polling with a generous deadline (so that a broken wake-up fails
// the test instead of hanging it), and a call run on a thread of its own whose return the test
// watches (GatedJob.h adds a job that counts its runs and may wait at a gate).
#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

inline void Pause(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

template <typename Condition> bool Eventually(Condition condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        Pause(1);
    }
    return true;
}

class BackgroundCall {
public:
    explicit BackgroundCall(std::function<void()> call)
        : thread([this, call = std::move(call)] {
              call();
              returned = true;
          }) {}
    ~BackgroundCall() { Join(); }
    BackgroundCall(const BackgroundCall&) = delete;
    BackgroundCall& operator=(const BackgroundCall&) = delete;

    // Whether the call has come back once a short while has passed.
    bool ReturnedAfterPause(int milliseconds = 20) {
        Pause(milliseconds);
        return returned.load();
    }
    // Waits for the call to come back (true then).
    bool Join() {
        if (thread.joinable()) {
            thread.join();
        }
        return returned.load();
    }

private:
    std::atomic<bool> returned{false};
    std::thread thread;
};

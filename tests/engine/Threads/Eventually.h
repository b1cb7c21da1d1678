#pragma once
// Test helper for threaded code: polls until a condition holds, with a generous deadline so that a
// broken wake-up fails the test instead of hanging it.
#include <chrono>
#include <thread>

template <typename Condition> bool Eventually(Condition condition, int seconds = 10) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

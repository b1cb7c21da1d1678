#pragma once
// A recursive lock: the thread that holds it may take it again, and must leave it as often as it
// entered. The locked flag is informational only (nobody waits on it).
#include <atomic>
#include <mutex>

class VtMutex {
public:
    VtMutex() = default;
    virtual ~VtMutex() = default;
    VtMutex(const VtMutex&) = delete;
    VtMutex& operator=(const VtMutex&) = delete;

    bool Lock();
    bool Unlock();

private:
    std::atomic<bool> locked{false};
    std::recursive_mutex section;
};

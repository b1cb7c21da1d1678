#pragma once
// A counting semaphore with a maximum. Every semaphore starts at count 0, whatever initial count
// it is constructed with. Release adds units and fails, leaving the count alone, when the count
// would pass the maximum. Waits have no time limit. Replace empties the semaphore as if it had
// been made anew; threads already waiting keep waiting for the next Release.
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <vector>

class VtSemaphore {
public:
    VtSemaphore(int32_t initialCount, int32_t maximum);
    virtual ~VtSemaphore();
    VtSemaphore(const VtSemaphore&) = delete;
    VtSemaphore& operator=(const VtSemaphore&) = delete;

    // Blocks until a unit is available and takes it.
    bool Wait();
    bool Release(int32_t count = 1);
    void Replace();

    int32_t GetCount() const;

    // Blocks until either semaphore has a unit and takes one; when both have units the first wins.
    // Returns 0 when the unit came from the first, 1 from the second.
    static int WaitAny(VtSemaphore& first, VtSemaphore& second);

private:
    struct Listener;
    void Notify();

    mutable std::mutex mutex;
    std::condition_variable available;
    int32_t count = 0;
    const int32_t maximum;
    std::vector<Listener*> listeners; // threads inside WaitAny, woken on every Release
};

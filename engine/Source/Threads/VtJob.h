#pragma once
// A unit of background work run by a worker of the pool. Its state moves New -> Queued ->
// Running -> Done, and a Done job may be queued again. Each time the job reaches Done its
// completion semaphore gets one unit, which one Wait takes; moving to any other state discards a
// completion nobody has waited for. Owners may poll GetState from any thread without locking.
// The pool never deletes a job: its owner does, once it is Done or was never run.
#include "Threads/VtMutex.h"
#include "Threads/VtSemaphore.h"

#include <atomic>
#include <cstdint>

class VtJob {
public:
    enum State : int32_t { New = 0, Queued = 1, Running = 2, Done = 3 };

    VtJob();
    virtual ~VtJob();
    VtJob(const VtJob&) = delete;
    VtJob& operator=(const VtJob&) = delete;

    virtual void Run() = 0;

    void SetState(int32_t state);
    int32_t GetState() const { return state.load(std::memory_order_acquire); }
    // Takes the unit that reaching Done released; blocks until the job is done (again).
    void Wait();

    static constexpr int32_t kDoneMaximum = 99999999;

private:
    std::atomic<int32_t> state{New};
    VtSemaphore* done;
    VtMutex* lock;
    std::atomic<bool> destroying{false};
};

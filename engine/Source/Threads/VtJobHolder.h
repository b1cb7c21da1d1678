#pragma once
// One piece of background work at a time on a worker thread of the holder's own (made at the
// first Start), for work no frame may wait for: a transfer, a search.
//
// Contract: Start hands the work over and is refused while a job is held. The work is given a
// cancel flag to check as it goes. Take is true once, when the held work has returned: the job is
// let go, and what the work wrote may be read from then on. Stop raises the cancel flag, waits for
// the work to return and lets the job go (at once when none is held). Destroying stops. The owner
// declares the holder after the members its work writes, so that it stops before they go.
#include <atomic>
#include <functional>
#include <memory>

class VtWorkerPool;

class VtJobHolder {
public:
    using Work = std::function<void(const std::atomic<bool>& cancel)>;

    VtJobHolder();
    ~VtJobHolder();
    VtJobHolder(const VtJobHolder&) = delete;
    VtJobHolder& operator=(const VtJobHolder&) = delete;

    bool Start(Work work);
    // True from Start until Take or Stop let the job go.
    bool Held() const { return held; }
    // True while the held work has not returned yet.
    bool Busy() const;
    bool Take();
    void Stop();

private:
    class Job;

    std::unique_ptr<VtWorkerPool> pool;
    std::unique_ptr<Job> job;
    bool held = false;
};

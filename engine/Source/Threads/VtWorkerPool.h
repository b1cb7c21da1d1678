#pragma once
// A fixed pool of worker threads fed by a first-in-first-out queue of jobs. AddJob queues a job
// and gives the work semaphore one unit; each worker takes one unit per job. Destroying the pool
// tells every worker to quit (quit wins over queued work), waits for the workers, and leaves jobs
// still queued in state Queued, never run. A worker inside a job's Run ends only when that Run
// returns, so owners stop their looping jobs before destroying the pool.
//
// The owner sizes the pool so that the jobs queued but not yet taken never outnumber the threads:
// the work semaphore's maximum is the thread count, and a unit beyond it is lost.
// At most one pool exists at a time; it is reachable through Current().
#include "Threads/VtMutex.h"
#include "Threads/VtSemaphore.h"

#include <cstdint>
#include <list>

class VtJob;
class VtWorker;

class VtWorkerPool {
public:
    explicit VtWorkerPool(int32_t threadCount);
    ~VtWorkerPool();
    VtWorkerPool(const VtWorkerPool&) = delete;
    VtWorkerPool& operator=(const VtWorkerPool&) = delete;

    void AddJob(VtJob* job);

    // Jobs queued and not yet taken by a worker.
    int32_t GetQueuedCount();

    static VtWorkerPool* Current();

private:
    friend class VtWorker;
    // The worker's wait: the next job, or null when the worker is to quit.
    VtJob* TakeJob();

    VtSemaphore* work;
    VtSemaphore* quit;
    const int32_t threadCount;
    std::list<VtJob*> jobs;
    int32_t jobCount = 0;
    std::list<VtWorker*> workers;
    VtMutex* lock;
};

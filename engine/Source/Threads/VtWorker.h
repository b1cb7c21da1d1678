#pragma once
// A worker thread of the pool: it waits for the pool's quit or work semaphore (quit first), runs
// the job at the front of the queue and starts over, until quit is taken.
#include "Threads/VtThread.h"

class VtWorkerPool;

class VtWorker : public VtThread {
public:
    explicit VtWorker(VtWorkerPool& pool) : pool(pool) {}
    ~VtWorker() override;

    void Run() override;

private:
    VtWorkerPool& pool;
};

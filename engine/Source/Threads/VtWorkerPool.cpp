#include "Threads/VtWorkerPool.h"

#include "Threads/VtJob.h"
#include "Threads/VtWorker.h"

#include <atomic>

namespace {
std::atomic<VtWorkerPool*> currentPool{nullptr};
}

VtWorkerPool::VtWorkerPool(int32_t threadCount)
    : work(new VtSemaphore(0, threadCount)), quit(new VtSemaphore(0, threadCount)), threadCount(threadCount),
      lock(new VtMutex()) {
    currentPool.store(this, std::memory_order_release);
    for (int32_t i = 0; i < threadCount; ++i) {
        VtWorker* worker = new VtWorker(*this);
        workers.push_back(worker);
        worker->Start();
    }
}

VtWorkerPool::~VtWorkerPool() {
    quit->Release(threadCount);
    for (VtWorker* worker : workers) {
        delete worker; // waits for its thread
    }
    workers.clear();
    delete lock;
    delete work;
    delete quit;
    jobs.clear();
    VtWorkerPool* self = this;
    currentPool.compare_exchange_strong(self, nullptr, std::memory_order_acq_rel);
}

VtWorkerPool* VtWorkerPool::Current() {
    return currentPool.load(std::memory_order_acquire);
}

void VtWorkerPool::AddJob(VtJob* job) {
    lock->Lock();
    job->SetState(VtJob::Queued);
    jobs.push_back(job);
    ++jobCount;
    lock->Unlock();
    work->Release(1);
}

int32_t VtWorkerPool::GetQueuedCount() {
    lock->Lock();
    const int32_t count = jobCount;
    lock->Unlock();
    return count;
}

VtJob* VtWorkerPool::TakeJob() {
    for (;;) {
        if (VtSemaphore::WaitAny(*quit, *work) == 0) {
            return nullptr;
        }
        lock->Lock();
        VtJob* job = nullptr;
        if (!jobs.empty()) {
            job = jobs.front();
            jobs.pop_front();
            --jobCount;
        }
        lock->Unlock();
        if (job != nullptr) {
            return job;
        }
    }
}

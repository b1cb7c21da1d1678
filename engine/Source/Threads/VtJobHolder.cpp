#include "Threads/VtJobHolder.h"

#include "Threads/VtJob.h"
#include "Threads/VtWorkerPool.h"

class VtJobHolder::Job : public VtJob {
public:
    void Run() override { work(cancel); }

    Work work;
    std::atomic<bool> cancel{false};
};

VtJobHolder::VtJobHolder() : job(std::make_unique<Job>()) {}

VtJobHolder::~VtJobHolder() {
    Stop();
}

bool VtJobHolder::Start(Work work) {
    if (held) {
        return false;
    }
    if (!pool) {
        pool = std::make_unique<VtWorkerPool>(1);
    }
    job->work = std::move(work);
    job->cancel.store(false);
    held = true;
    pool->AddJob(job.get());
    return true;
}

bool VtJobHolder::Busy() const {
    return held && job->GetState() != VtJob::Done;
}

bool VtJobHolder::Take() {
    if (!held || job->GetState() != VtJob::Done) {
        return false;
    }
    job->Wait();
    held = false;
    job->work = nullptr; // what the work captured goes with it
    return true;
}

void VtJobHolder::Stop() {
    if (!held) {
        return;
    }
    job->cancel.store(true);
    job->Wait();
    held = false;
    job->work = nullptr;
}

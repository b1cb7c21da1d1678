#include "Threads/VtJob.h"

VtJob::VtJob() : done(new VtSemaphore(0, kDoneMaximum)), lock(new VtMutex()) {
    SetState(New);
}

VtJob::~VtJob() {
    destroying.store(true, std::memory_order_release);
    // A worker may still be inside SetState(Done) when the owner sees Done: wait until it has let
    // go of the job before its parts are freed.
    lock->Lock();
    lock->Unlock();
    delete done;
    delete lock;
}

void VtJob::SetState(int32_t newState) {
    lock->Lock();
    state.store(newState, std::memory_order_release);
    if (newState == Done) {
        done->Release(1);
    } else {
        done->Replace();
    }
    lock->Unlock();
}

void VtJob::Wait() {
    done->Wait();
}

#include "Threads/VtWorker.h"

#include "Threads/VtJob.h"
#include "Threads/VtWorkerPool.h"

VtWorker::~VtWorker() {
    WaitForEnd();
}

void VtWorker::Run() {
    while (VtJob* job = pool.TakeJob()) {
        job->SetState(VtJob::Running);
        job->Run();
        job->SetState(VtJob::Done); // the owner may delete the job from here on
    }
}

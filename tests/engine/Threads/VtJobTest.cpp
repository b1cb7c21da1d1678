#include "Threads/VtJob.h"

#include "engine/Threads/GatedJob.h"

#include <gtest/gtest.h>

// A completion nobody waited for is dropped when the job is queued again: see the worker pool's
// requeueing case.
TEST(VtJobTest, EveryDoneReleasesOneWaitAndALaterWaitBlocksUntilDoneAgain) {
    GatedJob job;
    job.SetState(VtJob::Done);
    job.SetState(VtJob::Done);
    job.Wait();
    job.Wait(); // two completions, two waits that return at once

    BackgroundCall waiter([&] { job.Wait(); });
    EXPECT_FALSE(waiter.ReturnedAfterPause());
    job.SetState(VtJob::Queued);
    job.SetState(VtJob::Running);
    EXPECT_FALSE(waiter.ReturnedAfterPause());
    job.SetState(VtJob::Done);
    EXPECT_TRUE(waiter.Join());
}

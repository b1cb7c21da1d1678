#include "Threads/VtJob.h"

#include "engine/Threads/GatedJob.h"

#include <gtest/gtest.h>

// The worker pool queues a job again by moving it to Queued, which is where an unwaited completion
// is dropped.
TEST(VtJobTest, EveryDoneReleasesOneWaitAndAnotherStateDropsACompletionNobodyWaitedFor) {
    GatedJob job;
    job.SetState(VtJob::Done);
    job.SetState(VtJob::Done);
    job.Wait();
    job.Wait(); // two completions, two waits that return at once

    job.SetState(VtJob::Done);
    job.SetState(VtJob::Queued);
    BackgroundCall waiter([&] { job.Wait(); });
    EXPECT_FALSE(waiter.ReturnedAfterPause());
    job.SetState(VtJob::Running);
    EXPECT_FALSE(waiter.ReturnedAfterPause());
    job.SetState(VtJob::Done);
    EXPECT_TRUE(waiter.Join());
}

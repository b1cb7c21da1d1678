#include "Threads/VtJob.h"

#include "engine/Threads/Eventually.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {
class CountingJob : public VtJob {
public:
    void Run() override { runs++; }
    std::atomic<int> runs{0};
};
} // namespace

// A completion nobody waited for is dropped when the job is queued again: see the worker pool's
// requeueing case.
TEST(VtJobTest, EveryDoneReleasesOneWaitAndALaterWaitBlocksUntilDoneAgain) {
    CountingJob job;
    job.SetState(VtJob::Done);
    job.SetState(VtJob::Done);
    job.Wait();
    job.Wait(); // two completions, two waits that return at once

    std::atomic<bool> returned{false};
    std::thread waiter([&] {
        job.Wait();
        returned = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(returned.load());
    job.SetState(VtJob::Queued);
    job.SetState(VtJob::Running);
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(returned.load());
    job.SetState(VtJob::Done);
    waiter.join();
    EXPECT_TRUE(returned.load());
}

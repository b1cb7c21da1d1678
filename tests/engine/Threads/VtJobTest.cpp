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

TEST(VtJobTest, CompletionIsTakenOnceAndDiscardedWhenTheJobMovesOn) {
    CountingJob job;
    EXPECT_EQ(job.GetState(), VtJob::New);

    job.SetState(VtJob::Done);
    job.Wait(); // returns at once the first time

    // A second Wait blocks until the job is queued, run and done again.
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

    // A completion nobody waited for is dropped by queueing or starting the job again.
    for (int32_t next : {VtJob::Queued, VtJob::Running}) {
        job.SetState(VtJob::Done);
        job.SetState(next);
        EXPECT_EQ(job.GetState(), next);
        std::atomic<bool> early{false};
        std::thread late([&] {
            job.Wait();
            early = true;
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_FALSE(early.load());
        job.SetState(VtJob::Done);
        late.join();
    }
}

TEST(VtJobTest, EveryDoneReleasesOneUnit) {
    CountingJob job;
    job.SetState(VtJob::Done);
    job.SetState(VtJob::Done);
    job.Wait();
    job.Wait(); // two completions, two waits
    EXPECT_EQ(job.GetState(), VtJob::Done);
    EXPECT_FALSE(job.IsDestroying());
}

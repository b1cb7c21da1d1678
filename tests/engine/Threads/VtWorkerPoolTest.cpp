#include "Threads/VtWorkerPool.h"
#include "Threads/VtJob.h"

#include "engine/Threads/GatedJob.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

namespace {
// Records the order in which jobs ran.
class OrderedJob : public VtJob {
public:
    OrderedJob(int id, std::vector<int>& order, std::mutex& mutex) : id(id), order(order), mutex(mutex) {}
    void Run() override {
        std::lock_guard<std::mutex> lock(mutex);
        order.push_back(id);
    }
    int id;
    std::vector<int>& order;
    std::mutex& mutex;
};

// Occupies workers of a pool with jobs waiting at their shut gates; on leaving, opens the gates
// and waits for the jobs, as a job's owner must before deleting it.
struct BusyWorkers {
    BusyWorkers(VtWorkerPool& pool, int count) {
        for (int i = 0; i < count; ++i) {
            jobs.push_back(std::make_unique<GatedJob>(false));
            pool.AddJob(jobs.back().get());
        }
    }
    ~BusyWorkers() {
        OpenAll();
        for (auto& job : jobs) {
            if (job->GetState() != VtJob::Done) {
                job->Wait();
            }
        }
    }
    void OpenAll() {
        for (auto& job : jobs) {
            job->open = true;
        }
    }
    // Jobs that started and have not yet passed their gate.
    int Waiting() const {
        int count = 0;
        for (const auto& job : jobs) {
            count += job->started.load() - job->runs.load();
        }
        return count;
    }
    std::vector<std::unique_ptr<GatedJob>> jobs;
};
} // namespace

TEST(VtWorkerPoolTest, NLoopingJobsRunTogetherAndFurtherJobsWaitForAFreeWorkerFirstInFirstOut) {
    constexpr int kThreads = 3;
    std::vector<int> order;
    std::mutex mutex;
    std::vector<std::unique_ptr<OrderedJob>> queued;
    VtWorkerPool pool(kThreads);
    BusyWorkers busy(pool, kThreads);
    ASSERT_TRUE(Eventually([&] { return busy.Waiting() == kThreads; }));
    for (int i = 0; i < kThreads; ++i) {
        queued.push_back(std::make_unique<OrderedJob>(i, order, mutex));
        pool.AddJob(queued.back().get());
    }
    Pause(30);
    EXPECT_EQ(queued[0]->GetState(), VtJob::Queued);
    EXPECT_EQ(pool.GetQueuedCount(), kThreads);

    busy.jobs[1]->open = true; // one free worker takes the queue in order
    busy.jobs[1]->Wait();
    for (auto& job : queued) {
        job->Wait();
    }
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(pool.GetQueuedCount(), 0);
    EXPECT_EQ(busy.Waiting(), kThreads - 1);
}

TEST(VtWorkerPoolTest, EveryAddedJobRunsExactlyOnce) {
    constexpr int kThreads = 4;
    VtWorkerPool pool(kThreads);
    std::vector<GatedJob> jobs(kThreads);
    for (int round = 0; round < 100; ++round) {
        for (auto& job : jobs) {
            pool.AddJob(&job);
        }
        for (auto& job : jobs) {
            job.Wait();
        }
    }
    for (auto& job : jobs) {
        EXPECT_EQ(job.runs.load(), 100);
        EXPECT_EQ(job.GetState(), VtJob::Done);
    }
    EXPECT_EQ(pool.GetQueuedCount(), 0);
}

TEST(VtWorkerPoolTest, QuitWinsOverQueuedWork) {
    constexpr int kThreads = 2;
    auto pool = std::make_unique<VtWorkerPool>(kThreads);
    BusyWorkers busy(*pool, kThreads);
    ASSERT_TRUE(Eventually([&] { return busy.Waiting() == kThreads; }));
    GatedJob first;
    GatedJob second;
    pool->AddJob(&first);
    pool->AddJob(&second);

    // The pool's destruction asks every worker to quit, then waits for them; the workers see quit
    // and the queued work together once their gated jobs end.
    BackgroundCall destroyer([&] { pool.reset(); });
    Pause(50);
    busy.OpenAll();
    EXPECT_TRUE(destroyer.Join());

    EXPECT_EQ(first.started.load() + second.started.load(), 0);
    EXPECT_EQ(first.GetState(), VtJob::Queued);
    EXPECT_EQ(second.GetState(), VtJob::Queued);
}

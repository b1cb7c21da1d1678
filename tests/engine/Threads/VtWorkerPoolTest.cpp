#include "Threads/VtWorkerPool.h"
#include "Threads/VtJob.h"

#include "engine/Threads/Eventually.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
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

// A long-running job in the style of a connection loop: polls until its stop flag is set.
class LoopingJob : public VtJob {
public:
    explicit LoopingJob(std::atomic<int>& active) : active(active) {}
    void Run() override {
        active++;
        runs++;
        while (!stopRequested.load()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        active--;
    }
    std::atomic<bool> stopRequested{false};
    std::atomic<int>& active;
    std::atomic<int> runs{0};
};

class CountingJob : public VtJob {
public:
    void Run() override { runs++; }
    std::atomic<int> runs{0};
};

// Occupies every worker of a pool with a looping job; on leaving, stops its jobs and waits for
// them, as a job's owner must before deleting it.
struct BusyWorkers {
    ~BusyWorkers() {
        StopAll();
        for (auto& job : jobs) {
            if (job->GetState() != VtJob::Done) {
                job->Wait();
            }
        }
    }
    BusyWorkers(VtWorkerPool& pool, int count) {
        for (int i = 0; i < count; ++i) {
            jobs.push_back(std::make_unique<LoopingJob>(active));
            pool.AddJob(jobs.back().get());
        }
    }
    void Stop(size_t index) { jobs[index]->stopRequested = true; }
    void StopAll() {
        for (auto& job : jobs) {
            job->stopRequested = true;
        }
    }
    std::atomic<int> active{0};
    std::vector<std::unique_ptr<LoopingJob>> jobs;
};
} // namespace

TEST(VtWorkerPoolTest, NLoopingJobsRunTogetherAndFurtherJobsWaitForAFreeWorkerFirstInFirstOut) {
    constexpr int kThreads = 3;
    std::vector<int> order;
    std::mutex mutex;
    std::vector<std::unique_ptr<OrderedJob>> queued;
    VtWorkerPool pool(kThreads);
    EXPECT_EQ(VtWorkerPool::Current(), &pool);
    BusyWorkers busy(pool, kThreads);
    ASSERT_TRUE(Eventually([&] { return busy.active.load() == kThreads; }));
    for (int i = 0; i < kThreads; ++i) {
        queued.push_back(std::make_unique<OrderedJob>(i, order, mutex));
        pool.AddJob(queued.back().get());
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(queued[0]->GetState(), VtJob::Queued);
    EXPECT_EQ(pool.GetQueuedCount(), kThreads);

    busy.Stop(1); // one free worker takes the queue in order
    busy.jobs[1]->Wait();
    for (auto& job : queued) {
        job->Wait();
    }
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(pool.GetQueuedCount(), 0);
    EXPECT_EQ(busy.active.load(), kThreads - 1);
}

TEST(VtWorkerPoolTest, EveryAddedJobRunsExactlyOnce) {
    constexpr int kThreads = 4;
    VtWorkerPool pool(kThreads);
    std::vector<std::unique_ptr<CountingJob>> jobs;
    for (int i = 0; i < kThreads; ++i) {
        jobs.push_back(std::make_unique<CountingJob>());
    }
    for (int round = 0; round < 100; ++round) {
        for (auto& job : jobs) {
            pool.AddJob(job.get());
        }
        for (auto& job : jobs) {
            job->Wait();
        }
    }
    for (auto& job : jobs) {
        EXPECT_EQ(job->runs.load(), 100);
        EXPECT_EQ(job->GetState(), VtJob::Done);
    }
    EXPECT_EQ(pool.GetQueuedCount(), 0);
}

TEST(VtWorkerPoolTest, QuitWinsOverQueuedWork) {
    constexpr int kThreads = 2;
    auto pool = std::make_unique<VtWorkerPool>(kThreads);
    BusyWorkers busy(*pool, kThreads);
    ASSERT_TRUE(Eventually([&] { return busy.active.load() == kThreads; }));
    CountingJob first;
    CountingJob second;
    pool->AddJob(&first);
    pool->AddJob(&second);

    // The pool's destruction asks every worker to quit, then waits for them; the workers see quit
    // and the queued work together once their looping jobs end.
    std::thread destroyer([&] { pool.reset(); });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    busy.StopAll();
    destroyer.join();

    EXPECT_EQ(VtWorkerPool::Current(), nullptr);
    EXPECT_EQ(first.runs.load(), 0);
    EXPECT_EQ(second.runs.load(), 0);
    EXPECT_EQ(first.GetState(), VtJob::Queued);
    EXPECT_EQ(second.GetState(), VtJob::Queued);
}

TEST(VtWorkerPoolTest, RequeueingDiscardsTheEarlierCompletion) {
    class GatedJob : public VtJob {
    public:
        void Run() override {
            while (!open.load()) {
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
            runs++;
        }
        std::atomic<bool> open{true};
        std::atomic<int> runs{0};
    };
    VtWorkerPool pool(1);
    GatedJob job;
    pool.AddJob(&job);
    ASSERT_TRUE(Eventually([&] { return job.GetState() == VtJob::Done; }));

    // Nobody waited for the first run. Queued again, its Wait must belong to the second run.
    job.open = false;
    pool.AddJob(&job);
    std::atomic<bool> returned{false};
    std::thread waiter([&] {
        job.Wait();
        returned = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_FALSE(returned.load());
    EXPECT_EQ(job.runs.load(), 1);
    job.open = true;
    waiter.join();
    EXPECT_EQ(job.runs.load(), 2);
}

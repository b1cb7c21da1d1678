// Costs of the threading primitives: a lock round trip, a semaphore hand-over between two
// threads, and a job's round trip through the worker pool (queue, run, completion, wait).
#include "Threads/VtJob.h"
#include "Threads/VtMutex.h"
#include "Threads/VtSemaphore.h"
#include "Threads/VtWorkerPool.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <thread>

namespace {
class EmptyJob : public VtJob {
public:
    void Run() override {}
};
} // namespace

static void BM_MutexLockUnlock(benchmark::State& state) {
    VtMutex mutex;
    for (auto _ : state) {
        mutex.Lock();
        mutex.Unlock();
    }
}
BENCHMARK(BM_MutexLockUnlock);

static void BM_SemaphorePingPong(benchmark::State& state) {
    VtSemaphore ping(0, 1);
    VtSemaphore pong(0, 1);
    std::atomic<bool> stop{false};
    std::thread partner([&] {
        for (;;) {
            ping.Wait();
            if (stop.load()) {
                return;
            }
            pong.Release(1);
        }
    });
    for (auto _ : state) {
        ping.Release(1);
        pong.Wait();
    }
    stop = true;
    ping.Release(1);
    partner.join();
}
BENCHMARK(BM_SemaphorePingPong)->UseRealTime();

static void BM_JobRoundTrip(benchmark::State& state) {
    VtWorkerPool pool(2);
    EmptyJob job;
    for (auto _ : state) {
        pool.AddJob(&job);
        job.Wait();
    }
}
BENCHMARK(BM_JobRoundTrip)->UseRealTime();

#pragma once
// Test support for the worker pool and its jobs.
#include "Threads/VtJob.h"

#include "engine/Threads/ThreadTestKit.h"

#include <atomic>

// Counts the runs that began and those that ended; while the gate is shut a run waits at it, the
// way a connection loop polls its stop flag.
class GatedJob : public VtJob {
public:
    explicit GatedJob(bool open = true) : open(open) {}
    void Run() override {
        started++;
        while (!open.load()) {
            Pause(1);
        }
        runs++;
    }
    std::atomic<bool> open;
    std::atomic<int> started{0};
    std::atomic<int> runs{0};
};

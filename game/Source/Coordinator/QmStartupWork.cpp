#include "Coordinator/QmStartupWork.h"

#include <utility>

void QmStartupWork::Add(std::function<void()> step) {
    steps.push_back(std::move(step));
}

void QmStartupWork::AddBackground(std::function<void()> read, std::function<void()> finish) {
    reads.push_back({std::move(read), std::move(finish)});
    StartRead();
}

void QmStartupWork::StartRead() {
    if (reads.empty() || worker.Held()) {
        return;
    }
    std::function<void()> read = std::move(reads.front().read);
    worker.Start([read = std::move(read)](const std::atomic<bool>& /*cancel*/) { read(); });
}

void QmStartupWork::FinishRead(bool wait) {
    if (!worker.Held()) {
        return;
    }
    if (wait) {
        worker.Stop(); // the reads never look at the cancel flag: this waits for the read to return
    } else if (!worker.Take()) {
        return;
    }
    // Taken out first: the finish may itself ask for the rest (RunAll) without running twice.
    const std::function<void()> finish = std::move(reads.front().finish);
    reads.pop_front();
    if (finish) {
        finish();
    }
    StartRead(); // after the finish: one that halts leaves no read running
}

void QmStartupWork::RunNext() {
    if (next >= steps.size()) {
        // Only reads are left: the steps took long enough for them to be (nearly) done, and the
        // start-up ends a known number of frames after the first.
        RunAll();
        return;
    }
    FinishRead(false);
    // Taken out first: a step may itself ask for the rest (RunAll) without running twice.
    const std::function<void()> step = std::move(steps[next]);
    ++next;
    if (step) {
        step();
    }
    if (next >= steps.size()) {
        steps.clear();
        next = 0;
    }
}

void QmStartupWork::RunAll() {
    while (next < steps.size()) {
        RunNext();
    }
    while (!reads.empty()) {
        StartRead();
        FinishRead(true);
    }
}

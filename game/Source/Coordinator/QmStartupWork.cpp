#include "Coordinator/QmStartupWork.h"

#include <utility>

void QmStartupWork::Add(std::function<void()> step) {
    steps.push_back(std::move(step));
}

void QmStartupWork::RunNext() {
    if (!Pending()) {
        return;
    }
    // Taken out first: a step may itself ask for the rest (RunAll) without running twice.
    const std::function<void()> step = std::move(steps[next]);
    ++next;
    if (step) {
        step();
    }
    if (!Pending()) {
        steps.clear();
        next = 0;
    }
}

void QmStartupWork::RunAll() {
    while (Pending()) {
        RunNext();
    }
}

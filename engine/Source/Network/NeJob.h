#pragma once
// A background job of the connection layer: it loops in Run until its stop flag is set.
#include "Threads/VtJob.h"

#include <atomic>

class NeJob : public VtJob {
public:
    void RequestStop() { stop.store(true); }
    bool IsStopRequested() const { return stop.load(); }
    const std::atomic<bool>* GetStopFlag() const { return &stop; }

private:
    std::atomic<bool> stop{false};
};

#include "Threads/VtThread.h"

#include <system_error>

VtThread::~VtThread() {
    WaitForEnd();
}

bool VtThread::Start() {
    if (running.load(std::memory_order_acquire)) {
        return false;
    }
    WaitForEnd(); // an earlier run has ended but was never waited for
    // Marked running before the thread exists, so that a second Start right away creates nothing.
    running.store(true, std::memory_order_release);
    try {
        handle = std::thread(&VtThread::Body, this);
    } catch (const std::system_error&) {
        running.store(false, std::memory_order_release);
        return false;
    }
    return true;
}

void VtThread::Body() {
    running.store(true, std::memory_order_release);
    Run();
    running.store(false, std::memory_order_release);
}

bool VtThread::Join() {
    if (!running.load(std::memory_order_acquire)) {
        return false;
    }
    WaitForEnd();
    return true;
}

void VtThread::WaitForEnd() {
    if (handle.joinable() && handle.get_id() != std::this_thread::get_id()) {
        handle.join();
    }
}

#pragma once
// A joinable thread whose body is the virtual Run. Start creates the thread unless it is already
// running; Join waits for a running thread to end. A subclass whose Run uses its own members calls
// WaitForEnd in its destructor, so that the thread never outlives the object it runs on; the base
// destructor waits in any case.
#include <atomic>
#include <thread>

class VtThread {
public:
    VtThread() = default;
    virtual ~VtThread();
    VtThread(const VtThread&) = delete;
    VtThread& operator=(const VtThread&) = delete;

    virtual void Run() = 0;

    // False when the thread is running already (nothing is created then).
    bool Start();
    // True when the thread was running and has now ended; false at once when it was not running.
    bool Join();

protected:
    void WaitForEnd();

private:
    void Body();

    std::thread handle;
    std::atomic<bool> running{false};
};

#include "Threads/VtSemaphore.h"

#include <algorithm>

struct VtSemaphore::Listener {
    std::mutex mutex;
    std::condition_variable wake;
    bool signalled = false;
};

VtSemaphore::VtSemaphore(int32_t /*initialCount*/, int32_t maximum) : maximum(maximum) {}

VtSemaphore::~VtSemaphore() = default;

bool VtSemaphore::Wait() {
    std::unique_lock<std::mutex> lock(mutex);
    available.wait(lock, [this] { return count > 0; });
    --count;
    return true;
}

bool VtSemaphore::Release(int32_t units) {
    std::lock_guard<std::mutex> lock(mutex);
    if (units <= 0 || count > maximum - units) {
        return false;
    }
    count += units;
    if (units == 1) {
        available.notify_one();
    } else {
        available.notify_all();
    }
    Notify();
    return true;
}

void VtSemaphore::Notify() {
    for (Listener* listener : listeners) {
        std::lock_guard<std::mutex> lock(listener->mutex);
        listener->signalled = true;
        listener->wake.notify_one();
    }
}

void VtSemaphore::Replace() {
    std::lock_guard<std::mutex> lock(mutex);
    count = 0;
}

int32_t VtSemaphore::GetCount() const {
    std::lock_guard<std::mutex> lock(mutex);
    return count;
}

int VtSemaphore::WaitAny(VtSemaphore& first, VtSemaphore& second) {
    if (&first == &second) {
        first.Wait();
        return 0;
    }
    Listener listener;
    bool registered = false;
    int taken = -1;
    while (taken < 0) {
        {
            std::lock_guard<std::mutex> lock(listener.mutex);
            listener.signalled = false;
        }
        {
            std::scoped_lock both(first.mutex, second.mutex);
            if (first.count > 0) {
                --first.count;
                taken = 0;
            } else if (second.count > 0) {
                --second.count;
                taken = 1;
            } else if (!registered) {
                first.listeners.push_back(&listener);
                second.listeners.push_back(&listener);
                registered = true;
            }
            if (taken >= 0 && registered) {
                for (VtSemaphore* semaphore : {&first, &second}) {
                    auto& list = semaphore->listeners;
                    list.erase(std::remove(list.begin(), list.end(), &listener), list.end());
                }
            }
        }
        if (taken < 0) {
            std::unique_lock<std::mutex> lock(listener.mutex);
            listener.wake.wait(lock, [&listener] { return listener.signalled; });
        }
    }
    return taken;
}

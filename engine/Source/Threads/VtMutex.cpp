#include "Threads/VtMutex.h"

bool VtMutex::Lock() {
    locked.store(true, std::memory_order_relaxed);
    section.lock();
    return true;
}

bool VtMutex::Unlock() {
    locked.store(false, std::memory_order_relaxed);
    section.unlock();
    return true;
}

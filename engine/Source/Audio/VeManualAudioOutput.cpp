#include "Audio/VeManualAudioOutput.h"

#include "Platform/VeLog.h"

#include <cstring>

bool VeManualAudioOutput::Open(VeAudioOutputClient* owner) {
    if (!available) {
        Log("No sound device could be opened: the game runs without sound.\n");
        return false;
    }
    client = owner;
    open = true;
    return true;
}

bool VeManualAudioOutput::Prepare(int index, const int16_t* samples, int bytes) {
    if (index < 0 || index >= kBufferCount || samples == nullptr || bytes != kBufferBytes) {
        return false;
    }
    lock.Lock();
    slots[static_cast<size_t>(index)] = samples;
    lock.Unlock();
    return true;
}

bool VeManualAudioOutput::Write(int index) {
    if (index < 0 || index >= kBufferCount) {
        return false;
    }
    lock.Lock();
    const bool ok = open && slots[static_cast<size_t>(index)] != nullptr && queueLength < kBufferCount;
    if (ok) {
        queue[static_cast<size_t>((queueHead + queueLength) % kBufferCount)] = index;
        ++queueLength;
    }
    lock.Unlock();
    return ok;
}

bool VeManualAudioOutput::Unprepare(int index) {
    if (index < 0 || index >= kBufferCount) {
        return false;
    }
    lock.Lock();
    slots[static_cast<size_t>(index)] = nullptr;
    lock.Unlock();
    return true;
}

bool VeManualAudioOutput::PlayNext(int16_t* frames) {
    lock.Lock();
    if (queueLength == 0) {
        lock.Unlock();
        return false;
    }
    const int16_t* samples = slots[static_cast<size_t>(queue[static_cast<size_t>(queueHead)])];
    if (frames != nullptr) {
        std::memcpy(frames, samples, kBufferBytes);
    }
    queueHead = (queueHead + 1) % kBufferCount;
    --queueLength;
    lock.Unlock();
    client->BufferDone();
    return true;
}

int VeManualAudioOutput::QueuedBuffers() {
    lock.Lock();
    const int length = queueLength;
    lock.Unlock();
    return length;
}

void VeManualAudioOutput::Stopping() {
    while (PlayNext()) {
    }
}

bool VeManualAudioOutput::Close() {
    lock.Lock();
    open = false;
    queueLength = 0;
    lock.Unlock();
    return true;
}

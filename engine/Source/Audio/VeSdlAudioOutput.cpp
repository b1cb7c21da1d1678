#include "Audio/VeSdlAudioOutput.h"

#include "Platform/VeLog.h"

#include <SDL.h>

#include <algorithm>
#include <cstring>

VeSdlAudioOutput::~VeSdlAudioOutput() {
    Close();
}

bool VeSdlAudioOutput::OpenDevice() {
    SDL_AudioSpec wanted;
    SDL_zero(wanted);
    wanted.freq = kSampleRate;
    wanted.format = AUDIO_S16SYS;
    wanted.channels = kChannels;
    wanted.samples = kFramesPerBuffer;
    wanted.callback = &VeSdlAudioOutput::Callback;
    wanted.userdata = this;
    SDL_AudioSpec obtained;
    // No changes allowed: SDL converts to whatever the hardware wants behind the callback.
    device = SDL_OpenAudioDevice(nullptr, 0, &wanted, &obtained, 0);
    if (device == 0) {
        return false;
    }
    const char* name = SDL_GetCurrentAudioDriver();
    driver = name != nullptr ? name : "";
    return true;
}

bool VeSdlAudioOutput::Open(VeAudioOutputClient* owner) {
    client = owner;
    subsystemStarted = SDL_InitSubSystem(SDL_INIT_AUDIO) == 0;
    if (subsystemStarted && OpenDevice()) {
        return true;
    }
    const std::string reason = SDL_GetError();
    // The dummy driver needs no hardware; it takes the place of the one that failed.
    if (SDL_AudioInit("dummy") == 0) {
        driverStarted = !subsystemStarted;
        if (OpenDevice()) {
            Log("No sound device could be opened (%s): the game runs without sound.\n", reason.c_str());
            return true;
        }
    }
    Log("No sound device could be opened (%s, %s): the game runs without sound.\n", reason.c_str(),
        SDL_GetError());
    QuitAudio();
    return false;
}

void VeSdlAudioOutput::Resume() {
    if (device != 0) {
        SDL_PauseAudioDevice(device, 0);
    }
}

bool VeSdlAudioOutput::Prepare(int index, const int16_t* samples, int bytes) {
    if (index < 0 || index >= kBufferCount || samples == nullptr || bytes <= 0) {
        return false;
    }
    lock.Lock();
    Slot& slot = slots[static_cast<size_t>(index)];
    slot.data = reinterpret_cast<const uint8_t*>(samples);
    slot.bytes = bytes;
    slot.prepared = true;
    lock.Unlock();
    return true;
}

bool VeSdlAudioOutput::Write(int index) {
    if (index < 0 || index >= kBufferCount) {
        return false;
    }
    lock.Lock();
    Slot& slot = slots[static_cast<size_t>(index)];
    const bool ok = device != 0 && slot.prepared && !slot.queued && queueLength < kBufferCount;
    if (ok) {
        slot.queued = true;
        queue[static_cast<size_t>((queueHead + queueLength) % kBufferCount)] = index;
        ++queueLength;
    }
    lock.Unlock();
    return ok;
}

bool VeSdlAudioOutput::Unprepare(int index) {
    if (index < 0 || index >= kBufferCount) {
        return false;
    }
    lock.Lock();
    Slot& slot = slots[static_cast<size_t>(index)];
    // A buffer still waiting to be played cannot be released.
    const bool ok = !slot.queued;
    if (ok) {
        slot = Slot();
    }
    lock.Unlock();
    return ok;
}

bool VeSdlAudioOutput::Close() {
    if (device != 0) {
        SDL_CloseAudioDevice(device);
        device = 0;
    }
    QuitAudio();
    lock.Lock();
    slots.fill(Slot());
    queueHead = 0;
    queueLength = 0;
    readOffset = 0;
    lock.Unlock();
    return true;
}

void VeSdlAudioOutput::QuitAudio() {
    if (driverStarted) {
        SDL_AudioQuit();
        driverStarted = false;
    }
    if (subsystemStarted) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        subsystemStarted = false;
    }
}

void VeSdlAudioOutput::Callback(void* self, uint8_t* stream, int length) {
    static_cast<VeSdlAudioOutput*>(self)->Fill(stream, length);
}

void VeSdlAudioOutput::Fill(uint8_t* stream, int length) {
    while (length > 0) {
        lock.Lock();
        if (queueLength == 0) {
            lock.Unlock();
            std::memset(stream, 0, static_cast<size_t>(length));
            return;
        }
        Slot& slot = slots[static_cast<size_t>(queue[static_cast<size_t>(queueHead)])];
        const int take = std::min(length, slot.bytes - readOffset);
        std::memcpy(stream, slot.data + readOffset, static_cast<size_t>(take));
        stream += take;
        length -= take;
        readOffset += take;
        const bool finished = readOffset >= slot.bytes;
        if (finished) {
            slot.queued = false;
            queueHead = (queueHead + 1) % kBufferCount;
            --queueLength;
            readOffset = 0;
        }
        lock.Unlock();
        // The client refills and queues the buffer again from here, outside the lock.
        if (finished) {
            client->BufferDone();
        }
    }
}

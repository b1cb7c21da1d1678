#include "Audio/VeAudioManager.h"

#include "Audio/VeSdlAudioOutput.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"
#include "Platform/VeTime.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {
constexpr double kOutputRate = VeAudioOutput::kSampleRate;

// How far into the sound (in source frames) an output position lies.
double SourceFrames(const VeWaveSound& sound, double position) {
    return position * (static_cast<double>(sound.sampleRate) / kOutputRate);
}

int16_t ClampSample(int32_t value) {
    return static_cast<int16_t>(std::clamp(value, -32768, 32767));
}

// Rounds the way the mixer always has: add one half, then drop the fraction (towards zero).
int32_t Scale(int32_t sample, float gain) {
    return static_cast<int32_t>(static_cast<float>(sample) * gain + 0.5f);
}
} // namespace

VeAudioManager::VeAudioManager(const std::string& errorSuffix, bool debug)
    : VeAudioManager(errorSuffix, debug, std::make_unique<VeSdlAudioOutput>()) {}

VeAudioManager::VeAudioManager(const std::string& errorSuffix, bool debug,
                               std::unique_ptr<VeAudioOutput> output)
    : output(std::move(output)), debug(debug), errorSuffix(errorSuffix) {
    Start();
}

VeAudioManager::~VeAudioManager() {
    Shutdown();
}

void VeAudioManager::Start() {
    masterVolume = 1.0f;
    listenerPosition = {0.0f, 0.0f, 0.0f};
    listenerForward = {0.0f, 0.0f, 1.0f};
    listenerUp = {0.0f, -1.0f, 0.0f};
    lastGain = 1.0f;
    currentBuffer = 0;
    for (std::vector<int16_t>& buffer : buffers) {
        buffer.assign(kBufferSamples, 0);
    }
    scratch.assign(kBufferSamples, 0);
    channels.reserve(64);
    deviceOpen = output->Open(this);
    if (!deviceOpen) {
        return;
    }
    for (int index = 0; index < VeAudioOutput::kBufferCount; ++index) {
        QueueBuffer(index);
    }
    output->Resume();
}

void VeAudioManager::SetErrorSuffix(const std::string& suffix) {
    lock.Lock();
    errorSuffix = suffix;
    lock.Unlock();
}

void VeAudioManager::QueueBuffer(int index) {
    const int slot = index < 0 ? currentBuffer : index;
    const std::vector<int16_t>& buffer = buffers[static_cast<size_t>(slot)];
    const bool prepared = output->Prepare(slot, buffer.data(), VeAudioOutput::kBufferBytes);
    const bool written = prepared && output->Write(slot);
    if (!written) {
        lock.Lock();
        const std::string suffix = errorSuffix;
        lock.Unlock();
        Halt("Error: Failed to start Audio Manager",
             prepared ? "An error occured while writing buffer " + std::to_string(slot) + " to sound card." +
                            suffix
                      : "An error occured while preparing waveOut header." + suffix);
    }
}

void VeAudioManager::BufferDone() {
    if (stopping.load(std::memory_order_acquire)) {
        doneSignal.Release(1);
        return;
    }
    Refill();
}

void VeAudioManager::Refill() {
    QueueBuffer(-1);
    int16_t* buffer = buffers[static_cast<size_t>(currentBuffer)].data();
    std::memset(buffer, 0, kBufferSamples * sizeof(int16_t));

    lock.Lock();
    const int64_t now = GetTimeMs();
    size_t kept = 0;
    for (size_t i = 0; i < channels.size(); ++i) {
        VeAudioChannel& channel = channels[i];
        bool ended = channel.stopRequested;
        if (!ended) {
            if (!channel.paused && now >= channel.startTime) {
                channel.position = Mix(buffer, channel);
            }
            const VeWaveSound& sound = *channel.sound;
            const auto frames = static_cast<double>(sound.Frames());
            if (SourceFrames(sound, channel.position) >= frames) {
                if (channel.loop && frames > 0.0) {
                    // Keep the phase so that the loop runs on without a seam.
                    channel.position = std::fmod(channel.position, frames * kOutputRate / sound.sampleRate);
                } else {
                    ended = true;
                }
            }
        }
        if (!ended) {
            if (kept != i) {
                channels[kept] = channel;
            }
            ++kept;
        }
    }
    channels.resize(kept);
    lock.Unlock();
    currentBuffer = (currentBuffer + 1) % VeAudioOutput::kBufferCount;
}

double VeAudioManager::Mix(int16_t* buffer, VeAudioChannel& channel) {
    const VeWaveSound& sound = *channel.sound;
    const int64_t frames = sound.Frames();
    if (frames <= 0) {
        return channel.position;
    }
    const double ratio = static_cast<double>(sound.sampleRate) / kOutputRate;
    const int16_t* source = sound.samples.data();

    float leftGain = 1.0f;
    float rightGain = 1.0f;
    if (channel.positional) {
        const float dx = channel.source.x - listenerPosition.x;
        const float dy = channel.source.y - listenerPosition.y;
        const float dz = channel.source.z - listenerPosition.z;
        const VeAudioVector& f = listenerForward;
        const VeAudioVector& u = listenerUp;
        const float rx = f.y * u.z - f.z * u.y;
        const float ry = f.z * u.x - f.x * u.z;
        const float rz = f.x * u.y - f.y * u.x;
        const float lengths = std::sqrt(rx * rx + ry * ry + rz * rz) * std::sqrt(dx * dx + dy * dy + dz * dz);
        // A source on the listener itself has no side: it plays in the middle.
        const float c = lengths > 0.0f ? (rx * dx + ry * dy + rz * dz) / lengths : 0.0f;
        const float pan = c * 0.5f;
        leftGain = 0.5f - pan;
        rightGain = 0.5f + pan;
    }
    const float scale = masterVolume * channel.volume;
    leftGain *= scale;
    rightGain *= scale;

    // Gather this channel's samples for the buffer: nearest frame, or the average of the frames
    // skipped over when sped up.
    const double speed = channel.speed;
    const int64_t averaged = speed > 1.0 ? static_cast<int64_t>(speed) : 1;
    const double position = channel.position;
    double t = 0.0;
    int count = 0;
    for (; count < VeAudioOutput::kFramesPerBuffer; ++count, t += speed) {
        int64_t frame = static_cast<int64_t>((t + position) * ratio);
        if (frame >= frames) {
            if (!channel.loop) {
                break;
            }
            frame %= frames;
        }
        int32_t left = 0;
        int32_t right = 0;
        if (speed > 0.0) {
            const int64_t take = std::min(averaged, frames - frame);
            const int16_t* at = source + 2 * frame;
            if (take == 1) {
                left = at[0];
                right = at[1];
            } else {
                for (int64_t k = 0; k < take; ++k) {
                    left += at[2 * k];
                    right += at[2 * k + 1];
                }
                left /= static_cast<int32_t>(take);
                right /= static_cast<int32_t>(take);
            }
            if (channel.positional) {
                left = right = (left + right) / 2;
            }
        }
        scratch[static_cast<size_t>(2 * count)] = Scale(left, leftGain);
        scratch[static_cast<size_t>(2 * count + 1)] = Scale(right, rightGain);
    }

    // The limiter: the divisor that keeps the sum within range, falling back slowly after a peak.
    const int samples = 2 * count;
    int32_t loudest = 32767;
    for (int i = 0; i < samples; ++i) {
        loudest = std::max(loudest, std::abs(scratch[static_cast<size_t>(i)] + buffer[i]));
    }
    float peak = static_cast<float>(loudest) / 32767.0f;
    if (peak < lastGain) {
        peak = std::max(peak, lastGain - 0.01f);
    }
    const float divisor = std::max(1.0f, peak);
    if (divisor == 1.0f) {
        for (int i = 0; i < samples; ++i) {
            buffer[i] = ClampSample(scratch[static_cast<size_t>(i)] + buffer[i]);
        }
    } else {
        for (int i = 0; i < samples; ++i) {
            const float mixed = static_cast<float>(scratch[static_cast<size_t>(i)] + buffer[i]) / divisor;
            buffer[i] = ClampSample(static_cast<int32_t>(mixed));
        }
    }
    lastGain = divisor;
    return std::floor(position + t);
}

void VeAudioManager::LoadWave(const std::string& name, const std::string& path, float volume) {
    VeWaveSound::Failure failure;
    std::unique_ptr<VeWaveSound> sound = ReadWave(path, volume, failure);
    if (!sound) {
        Halt(failure.title, failure.text);
    }
    AddSound(name, std::move(sound));
}

std::unique_ptr<VeWaveSound> VeAudioManager::ReadWave(const std::string& path, float volume,
                                                      VeWaveSound::Failure& failure) {
    lock.Lock();
    const std::string suffix = errorSuffix;
    lock.Unlock();
    return VeWaveSound::Read(path, volume, suffix, debug, failure);
}

void VeAudioManager::AddSound(const std::string& name, std::unique_ptr<VeWaveSound> sound) {
    lock.Lock();
    auto found = sounds.find(name);
    if (found != sounds.end()) {
        const VeWaveSound* old = found->second.get();
        std::erase_if(channels, [old](const VeAudioChannel& channel) { return channel.sound == old; });
        found->second = std::move(sound);
    } else {
        sounds.emplace(name, std::move(sound));
    }
    lock.Unlock();
}

bool VeAudioManager::IsLoaded(const std::string& name) const {
    return sounds.find(name) != sounds.end();
}

int32_t VeAudioManager::NextHandle() {
    lastHandle = lastHandle == INT32_MAX ? 1 : lastHandle + 1;
    return lastHandle;
}

VeAudioHandle VeAudioManager::Play(const std::string& name, bool loop, bool positional, float x, float y,
                                   float z, int repeatCount, float repeatGate, int intervalMs, int index,
                                   float speed) {
    auto found = sounds.find(name);
    if (found == sounds.end()) {
        Halt("Error: Audio file not loaded", "Failed to play audio: '" + name + "'. The file was not loaded");
    }
    const VeWaveSound& sound = *found->second;
    lock.Lock();
    const std::string suffix = errorSuffix;
    lock.Unlock();
    if (sound.Frames() <= 0) {
        Halt("Error: Audio Manager failed to mix buffers", "The input buffer is empty." + suffix);
    }
    if (!deviceOpen) {
        return VeAudioHandle();
    }
    const float volume = std::clamp(sound.volume, 0.0f, 1.0f);

    VeAudioChannel channel;
    channel.sound = &sound;
    channel.name = &found->first;
    channel.volume = volume;
    channel.loop = loop;
    channel.positional = positional;
    channel.source = {x, y, z};
    channel.speed = std::max(speed, 0.0f);
    lock.Lock();
    channel.startTime = GetTimeMs() + static_cast<int64_t>(index) * intervalMs;
    channel.handle = NextHandle();
    channels.push_back(channel);
    lock.Unlock();

    if (repeatCount > 0 && index + 1 < repeatCount && repeatGate * volume != 0.0f) {
        Play(name, loop, positional, x, y, z, repeatCount, repeatGate, intervalMs, index + 1, speed);
    }
    return VeAudioHandle(channel.handle);
}

VeAudioHandle VeAudioManager::PlayExclusive(const std::string& name, bool loop, bool positional, float x,
                                            float y, float z, int repeatCount, float repeatGate,
                                            int intervalMs, int index, float speed) {
    StopByName(name);
    return Play(name, loop, positional, x, y, z, repeatCount, repeatGate, intervalMs, index, speed);
}

VeAudioHandle VeAudioManager::PlayAt(const std::string& name, float x, float y, float z) {
    StopByName(name);
    return Play(name, false, true, x, y, z);
}

VeAudioChannel* VeAudioManager::FindChannel(const VeAudioHandle& handle) {
    if (handle.IsEmpty()) {
        return nullptr;
    }
    for (VeAudioChannel& channel : channels) {
        if (channel.handle == handle.Id()) {
            return channel.stopRequested ? nullptr : &channel;
        }
    }
    return nullptr;
}

bool VeAudioManager::Stop(VeAudioHandle& handle) {
    lock.Lock();
    VeAudioChannel* channel = FindChannel(handle);
    if (channel != nullptr) {
        channel->stopRequested = true;
    }
    lock.Unlock();
    handle.Clear();
    return channel != nullptr;
}

int VeAudioManager::StopByName(const std::string& name) {
    int stopped = 0;
    lock.Lock();
    for (VeAudioChannel& channel : channels) {
        if (*channel.name == name) {
            channel.stopRequested = true;
            ++stopped;
        }
    }
    lock.Unlock();
    return stopped;
}

void VeAudioManager::StopAll() {
    lock.Lock();
    for (VeAudioChannel& channel : channels) {
        channel.stopRequested = true;
    }
    lock.Unlock();
}

bool VeAudioManager::SetPaused(const VeAudioHandle& handle, bool paused) {
    lock.Lock();
    VeAudioChannel* channel = FindChannel(handle);
    if (channel != nullptr) {
        channel->paused = paused;
    }
    lock.Unlock();
    return channel != nullptr;
}

bool VeAudioManager::SetSpeed(const VeAudioHandle& handle, float speed) {
    lock.Lock();
    VeAudioChannel* channel = FindChannel(handle);
    if (channel != nullptr) {
        channel->speed = std::max(speed, 0.0f);
    }
    lock.Unlock();
    return channel != nullptr;
}

bool VeAudioManager::IsPlaying(const VeAudioHandle& handle) {
    lock.Lock();
    const bool playing = FindChannel(handle) != nullptr;
    lock.Unlock();
    return playing;
}

int VeAudioManager::ChannelCount() {
    lock.Lock();
    const int count = static_cast<int>(std::count_if(
        channels.begin(), channels.end(), [](const VeAudioChannel& c) { return !c.stopRequested; }));
    lock.Unlock();
    return count;
}

void VeAudioManager::SetListenerPosition(float x, float y, float z) {
    lock.Lock();
    listenerPosition = {x, y, z};
    lock.Unlock();
}

void VeAudioManager::SetListenerForward(float x, float y, float z) {
    lock.Lock();
    listenerForward = {x, y, z};
    lock.Unlock();
}

void VeAudioManager::SetListenerUp(float x, float y, float z) {
    lock.Lock();
    listenerUp = {x, y, z};
    lock.Unlock();
}

float VeAudioManager::LastGain() {
    lock.Lock();
    const float gain = lastGain;
    lock.Unlock();
    return gain;
}

void VeAudioManager::Shutdown() {
    if (shutDown) {
        return;
    }
    shutDown = true;
    if (deviceOpen) {
        stopping.store(true, std::memory_order_release);
        output->Stopping();
        for (int i = 0; i < VeAudioOutput::kBufferCount; ++i) {
            doneSignal.Wait();
        }
        for (int i = 0; i < VeAudioOutput::kBufferCount; ++i) {
            if (!output->Unprepare(i)) {
                Halt("Error: Unable to shutdown Audio Manager",
                     "An error occured while unpreparing the waveOut header." + errorSuffix);
            }
        }
        if (!output->Close()) {
            Halt("Error: Unable to shutdown Audio Manager",
                 "An error occured while closing the waveout device." + errorSuffix);
        }
        deviceOpen = false;
    }
    lock.Lock();
    channels.clear();
    lock.Unlock();
}

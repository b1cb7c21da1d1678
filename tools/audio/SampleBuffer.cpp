#include "SampleBuffer.h"

#include <algorithm>
#include <cmath>

SampleBuffer::SampleBuffer(size_t length) : samples(length, 0.0f) {}

SampleBuffer SampleBuffer::OfSeconds(double seconds) {
    return SampleBuffer(static_cast<size_t>(std::lround(seconds * kSampleRate)));
}

void SampleBuffer::EnsureLength(size_t length) {
    if (samples.size() < length) {
        samples.resize(length, 0.0f);
    }
}

void SampleBuffer::Mix(const SampleBuffer& other, size_t offset, float gain) {
    EnsureLength(offset + other.Length());
    for (size_t i = 0; i < other.Length(); ++i) {
        samples[offset + i] += other.samples[i] * gain;
    }
}

void SampleBuffer::Scale(float gain) {
    for (float& s : samples) {
        s *= gain;
    }
}

float SampleBuffer::Peak() const {
    float peak = 0.0f;
    for (float s : samples) {
        peak = std::max(peak, std::fabs(s));
    }
    return peak;
}

float SampleBuffer::Rms() const {
    if (samples.empty()) {
        return 0.0f;
    }
    double sum = 0.0;
    for (float s : samples) {
        sum += static_cast<double>(s) * s;
    }
    return static_cast<float>(std::sqrt(sum / static_cast<double>(samples.size())));
}

void SampleBuffer::NormalizeTo(float peak) {
    float current = Peak();
    if (current > 0.0f) {
        Scale(peak / current);
    }
}

void SampleBuffer::FadeEdges(double inSeconds, double outSeconds) {
    size_t n = samples.size();
    size_t in = std::min(n, static_cast<size_t>(inSeconds * kSampleRate));
    size_t out = std::min(n, static_cast<size_t>(outSeconds * kSampleRate));
    for (size_t i = 0; i < in; ++i) {
        samples[i] *= static_cast<float>(i) / static_cast<float>(in);
    }
    for (size_t i = 0; i < out; ++i) {
        samples[n - 1 - i] *= static_cast<float>(i) / static_cast<float>(out);
    }
}

void SampleBuffer::FoldLoop(size_t loopLength) {
    EnsureLength(loopLength);
    for (size_t i = loopLength; i < samples.size(); ++i) {
        samples[i % loopLength] += samples[i];
    }
    samples.resize(loopLength);
}

void SampleBuffer::Echo(double delaySeconds, float feedback, float wet) {
    size_t delay = static_cast<size_t>(std::lround(delaySeconds * kSampleRate));
    if (delay == 0) {
        return;
    }
    std::vector<float> line(samples.size(), 0.0f);
    for (size_t i = delay; i < samples.size(); ++i) {
        line[i] = samples[i - delay] + line[i - delay] * feedback;
    }
    for (size_t i = 0; i < samples.size(); ++i) {
        samples[i] += line[i] * wet;
    }
}

void SampleBuffer::RemoveDc() {
    if (samples.empty()) {
        return;
    }
    double sum = 0.0;
    for (float s : samples) {
        sum += s;
    }
    float mean = static_cast<float>(sum / static_cast<double>(samples.size()));
    for (float& s : samples) {
        s -= mean;
    }
}

void SampleBuffer::TrimTail(float fraction) {
    float threshold = Peak() * fraction;
    size_t end = samples.size();
    while (end > 0 && std::fabs(samples[end - 1]) <= threshold) {
        --end;
    }
    samples.resize(std::min(samples.size(), end + static_cast<size_t>(0.002 * kSampleRate)));
}

void SampleBuffer::BlockDc(double cutoffHz) {
    const double r = std::exp(-2.0 * 3.141592653589793 * cutoffHz / kSampleRate);
    double lastIn = 0.0;
    double lastOut = 0.0;
    for (float& s : samples) {
        double out = s - lastIn + r * lastOut;
        lastIn = s;
        lastOut = out;
        s = static_cast<float>(out);
    }
}

float SampleBuffer::LoudestRms(double windowSeconds) const {
    const size_t window =
        std::min(samples.size(), static_cast<size_t>(std::lround(windowSeconds * kSampleRate)));
    if (window == 0) {
        return 0.0f;
    }
    const size_t step = std::max<size_t>(1, window / 10);
    double best = 0.0;
    for (size_t from = 0; from + window <= samples.size(); from += step) {
        double sum = 0.0;
        for (size_t i = from; i < from + window; ++i) {
            sum += static_cast<double>(samples[i]) * samples[i];
        }
        best = std::max(best, sum / static_cast<double>(window));
    }
    return static_cast<float>(std::sqrt(best));
}

void SampleBuffer::SoftClip(float ceiling) {
    // Linear up to the knee, then a tanh curve that approaches the ceiling without reaching it.
    const float knee = ceiling * 0.7f;
    const float room = ceiling - knee;
    for (float& s : samples) {
        float magnitude = std::fabs(s);
        if (magnitude > knee) {
            float shaped = knee + room * std::tanh((magnitude - knee) / room);
            s = std::copysign(shaped, s);
        }
    }
}

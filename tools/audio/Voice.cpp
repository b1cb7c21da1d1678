#include "Voice.h"

#include "NoiseSource.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

// The band-limiting correction for a step in a square wave (polynomial BLEP).
double PolyBlep(double t, double dt) {
    if (t < dt) {
        t /= dt;
        return t + t - t * t - 1.0;
    }
    if (t > 1.0 - dt) {
        t = (t - 1.0) / dt;
        return t * t + t + t + 1.0;
    }
    return 0.0;
}

} // namespace

Voice::Voice(Waveform wave, double frequency) : wave(wave), pitch{{0.0, frequency}} {}

Voice& Voice::Glide(double toFrequency, double seconds) {
    pitch = {{0.0, pitch.front().value}, {seconds, toFrequency}};
    return *this;
}

Voice& Voice::PitchCurve(std::vector<Breakpoint> points) {
    pitch = std::move(points);
    return *this;
}

Voice& Voice::Duty(double value) {
    duty = value;
    return *this;
}

Voice& Voice::Vibrato(double rateHz, double semitones, double delaySeconds) {
    vibratoRate = rateHz;
    vibratoDepth = semitones;
    vibratoDelay = delaySeconds;
    return *this;
}

Voice& Voice::Envelope(double a, double d, double s, double h, double r) {
    attack = a;
    decay = d;
    sustain = s;
    hold = h;
    release = r;
    return *this;
}

Voice& Voice::Level(double value) {
    level = value;
    return *this;
}

Voice& Voice::Filter(FilterMode mode, double cutoffHz, double quality) {
    filterMode = mode;
    cutoff = {{0.0, cutoffHz}};
    q = quality;
    return *this;
}

Voice& Voice::CutoffCurve(std::vector<Breakpoint> points) {
    cutoff = std::move(points);
    return *this;
}

Voice& Voice::Seed(uint64_t value) {
    seed = value;
    return *this;
}

double Voice::Length() const {
    return hold + release * 6.0;
}

double Voice::Interpolate(const std::vector<Breakpoint>& points, double t) {
    if (points.empty()) {
        return 0.0;
    }
    if (t <= points.front().time) {
        return points.front().value;
    }
    for (size_t i = 1; i < points.size(); ++i) {
        const Breakpoint& a = points[i - 1];
        const Breakpoint& b = points[i];
        if (t <= b.time) {
            double f = (t - a.time) / std::max(b.time - a.time, 1e-9);
            if (a.value > 0.0 && b.value > 0.0) {
                return a.value * std::pow(b.value / a.value, f);
            }
            return a.value + (b.value - a.value) * f;
        }
    }
    return points.back().value;
}

double Voice::EnvelopeAt(double t) const {
    auto gated = [this](double u) {
        if (u < attack) {
            return u / attack;
        }
        return sustain + (1.0 - sustain) * std::exp(-(u - attack) / std::max(decay, 1e-6));
    };
    if (t < hold) {
        return gated(t);
    }
    return gated(hold) * std::exp(-(t - hold) / std::max(release, 1e-6));
}

SampleBuffer Voice::Render() const {
    SampleBuffer out = SampleBuffer::OfSeconds(Length());
    NoiseSource noise(seed);
    StateVariableFilter filter(filterMode, q);
    double phase = 0.0;
    float held = noise.Next();
    for (size_t i = 0; i < out.Length(); ++i) {
        double t = static_cast<double>(i) / kSampleRate;
        double f = Interpolate(pitch, t);
        if (vibratoDepth > 0.0 && t > vibratoDelay) {
            double ramp = std::min(1.0, (t - vibratoDelay) / 0.15);
            f *= std::pow(2.0, ramp * vibratoDepth / 12.0 *
                                   std::sin(2.0 * std::numbers::pi * vibratoRate * (t - vibratoDelay)));
        }
        double dt = f / kSampleRate;
        double value = 0.0;
        switch (wave) {
        case Waveform::Sine:
            value = std::sin(2.0 * std::numbers::pi * phase);
            break;
        case Waveform::Triangle:
            value = phase < 0.5 ? 4.0 * phase - 1.0 : 3.0 - 4.0 * phase;
            break;
        case Waveform::Square:
            value = phase < duty ? 1.0 : -1.0;
            value += PolyBlep(phase, dt);
            value -= PolyBlep(std::fmod(phase + 1.0 - duty, 1.0), dt);
            // A pulse narrower than half the period averages 2 duty - 1, not 0: centre it, or
            // the envelope turns that offset into a low thump that eats the mix's headroom.
            value -= 2.0 * duty - 1.0;
            break;
        case Waveform::Noise:
            // Sample-and-hold noise: a new random value at every period of the pitch, so the
            // pitch colours the noise (high pitch = hiss, low pitch = rumble).
            value = held;
            break;
        }
        phase += dt;
        if (phase >= 1.0) {
            phase -= std::floor(phase);
            held = noise.Next();
        }
        double c = cutoff.empty() ? 1000.0 : Interpolate(cutoff, t);
        float sample = filter.Process(static_cast<float>(value), c);
        out[i] = static_cast<float>(sample * EnvelopeAt(t) * level);
    }
    out.FadeEdges(0.0, 0.003);
    return out;
}

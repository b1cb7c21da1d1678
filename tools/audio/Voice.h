#pragma once
// One synthesised voice: an oscillator (square, triangle, sine or noise) with a pitch curve,
// vibrato, an attack-decay-sustain-release envelope and an optional filter with a moving
// cutoff. Every sound of the game is a sum of such voices.
#include "SampleBuffer.h"
#include "StateVariableFilter.h"

#include <cstdint>
#include <vector>

enum class Waveform { Square, Triangle, Sine, Noise };

// A value at a time in seconds; between points the value moves exponentially (pitch, cutoff).
struct Breakpoint {
    double time;
    double value;
};

class Voice {
public:
    Voice(Waveform wave, double frequency);

    // Builder-style setters, so a sound reads as one expression.
    Voice& Glide(double toFrequency, double seconds);
    Voice& PitchCurve(std::vector<Breakpoint> points);
    Voice& Duty(double value);
    Voice& Vibrato(double rateHz, double semitones, double delaySeconds = 0.0);
    Voice& Envelope(double attack, double decay, double sustain, double hold, double release);
    Voice& Level(double value);
    Voice& Filter(FilterMode mode, double cutoffHz, double q = 0.707);
    Voice& CutoffCurve(std::vector<Breakpoint> points);
    Voice& Seed(uint64_t value);

    // Seconds until the release has died away.
    double Length() const;
    SampleBuffer Render() const;

private:
    static double Interpolate(const std::vector<Breakpoint>& points, double t);
    double EnvelopeAt(double t) const;

    Waveform wave;
    std::vector<Breakpoint> pitch;
    double duty = 0.5;
    double vibratoRate = 0.0;
    double vibratoDepth = 0.0;
    double vibratoDelay = 0.0;
    double attack = 0.002;
    double decay = 0.1;
    double sustain = 1.0;
    double hold = 0.1;
    double release = 0.03;
    double level = 1.0;
    FilterMode filterMode = FilterMode::None;
    double q = 0.707;
    std::vector<Breakpoint> cutoff;
    uint64_t seed = 1;
};

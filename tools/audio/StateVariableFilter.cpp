#include "StateVariableFilter.h"

#include "SampleBuffer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

StateVariableFilter::StateVariableFilter(FilterMode mode, double q)
    : mode(mode), k(1.0 / std::max(q, 0.05)) {}

float StateVariableFilter::Process(float input, double cutoffHz) {
    if (mode == FilterMode::None) {
        return input;
    }
    if (cutoffHz != lastCutoff) {
        double fc = std::clamp(cutoffHz, 10.0, kSampleRate * 0.45);
        double g = std::tan(std::numbers::pi * fc / kSampleRate);
        a1 = 1.0 / (1.0 + g * (g + k));
        a2 = g * a1;
        a3 = g * a2;
        lastCutoff = cutoffHz;
    }
    double v0 = input;
    double v3 = v0 - ic2;
    double v1 = a1 * ic1 + a2 * v3;
    double v2 = ic2 + a2 * ic1 + a3 * v3;
    ic1 = 2.0 * v1 - ic1;
    ic2 = 2.0 * v2 - ic2;
    switch (mode) {
    case FilterMode::LowPass:
        return static_cast<float>(v2);
    case FilterMode::BandPass:
        return static_cast<float>(v1 * k);
    case FilterMode::HighPass:
        return static_cast<float>(v0 - k * v1 - v2);
    case FilterMode::None:
        break;
    }
    return input;
}

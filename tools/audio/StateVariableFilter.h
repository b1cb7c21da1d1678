#pragma once
// A two-pole state-variable filter (trapezoidal form): stable while its cutoff moves every
// sample, which the sweeps of the effects need.
enum class FilterMode { None, LowPass, HighPass, BandPass };

class StateVariableFilter {
public:
    StateVariableFilter(FilterMode mode, double q);

    // Filters one sample at the given cutoff in Hz.
    float Process(float input, double cutoffHz);

private:
    FilterMode mode;
    double k;
    double ic1 = 0.0;
    double ic2 = 0.0;
    double lastCutoff = -1.0;
    double a1 = 0.0, a2 = 0.0, a3 = 0.0;
};

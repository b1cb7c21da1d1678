#include "Instruments.h"

#include "Pattern.h"

#include <algorithm>

std::vector<Voice> Instruments::Play(Instrument instrument, int midi, double seconds, float velocity,
                                     uint64_t seed) {
    const double f = Pattern::Frequency(midi);
    const double v = velocity;
    switch (instrument) {
    case Instrument::SoftLead:
        return {
            Voice(Waveform::Square, f)
                .Duty(0.25)
                .Vibrato(5.0, 0.18, 0.25)
                .Envelope(0.012, 0.35, 0.55, seconds * 0.92, 0.09)
                .Filter(FilterMode::LowPass, 2200)
                .Level(0.6 * v),
            Voice(Waveform::Triangle, f)
                .Vibrato(5.0, 0.18, 0.25)
                .Envelope(0.012, 0.35, 0.7, seconds * 0.92, 0.09)
                .Level(0.5 * v),
        };
    case Instrument::Pluck:
        return {
            Voice(Waveform::Triangle, f).Envelope(0.003, 0.2, 0.0, seconds, 0.06).Level(v),
            Voice(Waveform::Sine, f * 2.0).Envelope(0.002, 0.08, 0.0, seconds, 0.03).Level(0.25 * v),
        };
    case Instrument::RoundBass:
        return {
            Voice(Waveform::Triangle, f).Envelope(0.006, 0.4, 0.6, seconds * 0.95, 0.05).Level(0.8 * v),
            Voice(Waveform::Sine, f).Envelope(0.006, 0.4, 0.7, seconds * 0.95, 0.05).Level(0.5 * v),
        };
    case Instrument::TenseLead:
        return {
            Voice(Waveform::Square, f)
                .Vibrato(6.0, 0.2, 0.3)
                .Envelope(0.003, 0.12, 0.5, seconds * 0.8, 0.035)
                .Filter(FilterMode::LowPass, 3200)
                .Level(0.7 * v),
            Voice(Waveform::Triangle, f / 2.0)
                .Envelope(0.003, 0.12, 0.5, seconds * 0.8, 0.035)
                .Level(0.35 * v),
        };
    case Instrument::Arpeggio:
        return {Voice(Waveform::Square, f)
                    .Duty(0.125)
                    .Envelope(0.002, 0.05, 0.0, seconds, 0.02)
                    .Filter(FilterMode::LowPass, 4200)
                    .Level(v)};
    case Instrument::DarkPad:
        return {
            Voice(Waveform::Triangle, f).Envelope(0.18, 0.6, 0.7, seconds, 0.25).Level(0.7 * v),
            Voice(Waveform::Square, f)
                .Envelope(0.18, 0.6, 0.7, seconds, 0.25)
                .Filter(FilterMode::LowPass, 650)
                .Level(0.25 * v),
        };
    case Instrument::DriveBass:
        return {
            Voice(Waveform::Square, f)
                .Envelope(0.003, 0.15, 0.55, seconds, 0.02)
                .Filter(FilterMode::LowPass, 1500, 1.2)
                .CutoffCurve({{0.0, 1500}, {0.09, 420}})
                .Level(0.8 * v),
            Voice(Waveform::Sine, f).Envelope(0.003, 0.2, 0.7, seconds, 0.02).Level(0.6 * v),
        };
    case Instrument::Kick:
        return {
            Voice(Waveform::Sine, 150).Glide(46, 0.07).Envelope(0.001, 0.12, 0.0, 0.18, 0.03).Level(v),
            Voice(Waveform::Noise, kSampleRate)
                .Seed(seed)
                .Envelope(0.0005, 0.004, 0.0, 0.008, 0.003)
                .Filter(FilterMode::LowPass, 1500)
                .Level(0.4 * v),
        };
    case Instrument::Snare:
        return {
            Voice(Waveform::Noise, kSampleRate)
                .Seed(seed)
                .Envelope(0.001, 0.09, 0.0, 0.16, 0.03)
                .Filter(FilterMode::BandPass, 1900, 0.7)
                .Level(0.9 * v),
            Voice(Waveform::Triangle, 190)
                .Glide(160, 0.05)
                .Envelope(0.001, 0.05, 0.0, 0.08, 0.02)
                .Level(0.5 * v),
        };
    case Instrument::Rim:
        return {
            Voice(Waveform::Noise, kSampleRate)
                .Seed(seed)
                .Envelope(0.001, 0.035, 0.0, 0.06, 0.015)
                .Filter(FilterMode::BandPass, 2600, 1.2)
                .Level(0.7 * v),
            Voice(Waveform::Sine, 820).Envelope(0.001, 0.018, 0.0, 0.03, 0.01).Level(0.35 * v),
        };
    case Instrument::Hat:
        return {Voice(Waveform::Noise, kSampleRate)
                    .Seed(seed)
                    .Envelope(0.0005, 0.022, 0.0, 0.04, 0.01)
                    .Filter(FilterMode::HighPass, 7000)
                    .Level(v)};
    case Instrument::OpenHat:
        return {Voice(Waveform::Noise, kSampleRate)
                    .Seed(seed)
                    .Envelope(0.001, 0.12, 0.0, std::min(seconds, 0.2), 0.04)
                    .Filter(FilterMode::HighPass, 6500)
                    .Level(v)};
    }
    return {};
}

#pragma once
// A mono signal at 44100 samples per second held as floats in -1..1 while it is being built.
#include <cstddef>
#include <vector>

constexpr int kSampleRate = 44100;

class SampleBuffer {
public:
    SampleBuffer() = default;
    explicit SampleBuffer(size_t length);
    static SampleBuffer OfSeconds(double seconds);

    size_t Length() const { return samples.size(); }
    double Seconds() const { return static_cast<double>(samples.size()) / kSampleRate; }
    float& operator[](size_t i) { return samples[i]; }
    float operator[](size_t i) const { return samples[i]; }
    const std::vector<float>& Samples() const { return samples; }

    // Grows the buffer with silence so that it holds at least length samples.
    void EnsureLength(size_t length);
    // Adds other, scaled by gain, starting at sample offset (the buffer grows as needed).
    void Mix(const SampleBuffer& other, size_t offset, float gain = 1.0f);
    void Scale(float gain);
    float Peak() const;
    float Rms() const;
    // Scales the whole buffer so that its largest magnitude becomes peak.
    void NormalizeTo(float peak);
    // Linear fades at the start and the end, so the sound starts and stops without a click.
    void FadeEdges(double inSeconds, double outSeconds);
    // Folds everything from sample loopLength on back onto the start and cuts the buffer to
    // loopLength: the result plays as the endless repetition of the material would.
    void FoldLoop(size_t loopLength);
    // A feedback echo (delay in seconds, feedback gain per repeat, wet level); linear and
    // time-invariant, so it can be applied before a loop is folded.
    void Echo(double delaySeconds, float feedback, float wet);
    // Cuts the end where the sound has fallen below fraction of its peak for good.
    void TrimTail(float fraction);
    // Removes any constant offset (the mean of the whole buffer).
    void RemoveDc();
    // A one-pole high-pass at cutoffHz: takes out offset and sub-bass drift while keeping silence
    // silent at both ends (RemoveDc would shift the edges off zero).
    void BlockDc(double cutoffHz);
    // The RMS of the loudest stretch of windowSeconds (the whole buffer when it is shorter),
    // searched in steps of a tenth of the window: how loud the sound is while it sounds.
    float LoudestRms(double windowSeconds) const;
    // Rounds peaks above ceiling smoothly towards it (a tanh knee); quieter samples pass unchanged.
    void SoftClip(float ceiling);

private:
    std::vector<float> samples;
};

#include "MusicTrack.h"

#include <cmath>
#include <stdexcept>

namespace {

// Long enough for every note and every echo to die away below the 16-bit noise floor.
constexpr double kTailSeconds = 8.0;

} // namespace

MusicTrack::MusicTrack(double beatsPerMinute, int barCount) : bpm(beatsPerMinute), bars(barCount) {}

void MusicTrack::Add(Bus bus, Instrument instrument, const std::vector<NoteEvent>& events, int transpose) {
    for (NoteEvent note : events) {
        if (note.step < 0 || note.step >= Steps()) {
            throw std::out_of_range("note outside the loop");
        }
        note.midi += transpose;
        notes.push_back({bus, instrument, note});
    }
}

void MusicTrack::AddHits(Instrument instrument, const std::string& grid, int startStep, int repeats) {
    std::vector<NoteEvent> hits;
    int step = startStep;
    for (int r = 0; r < repeats; ++r) {
        for (char c : grid) {
            float velocity = c == 'X' ? 1.0f : c == 'x' ? 0.7f : c == 'o' ? 0.4f : 0.0f;
            if (velocity > 0.0f) {
                hits.push_back({step, 1, 60, velocity});
            }
            ++step;
        }
    }
    Add(Bus::Drums, instrument, hits);
}

void MusicTrack::SetBusGain(Bus bus, float gain) {
    buses[static_cast<int>(bus)].gain = gain;
}

void MusicTrack::SetBusEcho(Bus bus, int delaySteps, float feedback, float wet) {
    BusSettings& settings = buses[static_cast<int>(bus)];
    settings.echoSteps = delaySteps;
    settings.echoFeedback = feedback;
    settings.echoWet = wet;
}

SampleBuffer MusicTrack::Render(float peak) const {
    const size_t loop = static_cast<size_t>(std::lround(Steps() * StepSeconds() * kSampleRate));
    const size_t total = loop + static_cast<size_t>(kTailSeconds * kSampleRate);
    SampleBuffer busBuffers[4] = {SampleBuffer(total), SampleBuffer(total), SampleBuffer(total),
                                  SampleBuffer(total)};
    uint64_t index = 0;
    for (const Placed& placed : notes) {
        ++index;
        size_t start = static_cast<size_t>(std::lround(placed.note.step * StepSeconds() * kSampleRate));
        double seconds = placed.note.length * StepSeconds();
        uint64_t seed = index * 7919 + static_cast<uint64_t>(placed.note.step) * 31 +
                        static_cast<uint64_t>(placed.note.midi);
        for (const Voice& voice :
             Instruments::Play(placed.instrument, placed.note.midi, seconds, placed.note.velocity, seed)) {
            busBuffers[static_cast<int>(placed.bus)].Mix(voice.Render(), start);
        }
    }
    SampleBuffer mix(total);
    for (int b = 0; b < 4; ++b) {
        SampleBuffer& buffer = busBuffers[b];
        const BusSettings& settings = buses[b];
        if (settings.echoSteps > 0) {
            buffer.Echo(settings.echoSteps * StepSeconds(), settings.echoFeedback, settings.echoWet);
        }
        buffer.EnsureLength(total);
        for (size_t i = 0; i < total; ++i) {
            mix[i] += buffer[i] * settings.gain;
        }
    }
    mix.FoldLoop(loop);
    mix.RemoveDc();
    mix.NormalizeTo(peak);
    return mix;
}

#pragma once
// A music loop built from note sequences on four mixing buses (melody, harmony, bass, drums).
// Every note is rendered on its own and the echoes are linear, so the loop is exactly periodic:
// the loop is rendered with a tail long enough for every note and echo to die away, and the tail
// is folded back onto the start, which is what the ear hears when the track repeats. The last
// sample therefore flows into the first.
#include "Instruments.h"
#include "Pattern.h"
#include "SampleBuffer.h"

#include <string>
#include <vector>

enum class Bus { Melody, Harmony, Bass, Drums };

class MusicTrack {
public:
    MusicTrack(double beatsPerMinute, int bars);

    int Steps() const { return bars * 16; }
    // Adds notes (steps counted from the start of the track), shifted by transpose semitones.
    void Add(Bus bus, Instrument instrument, const std::vector<NoteEvent>& notes, int transpose = 0);
    // Adds a drum line written as one character per sixteenth: 'X' accent, 'x' normal,
    // 'o' soft, '.' nothing. The grid repeats from startStep for the given number of times.
    void AddHits(Instrument instrument, const std::string& grid, int startStep, int repeats = 1);
    void SetBusGain(Bus bus, float gain);
    // A feedback echo on one bus, delay in sixteenths.
    void SetBusEcho(Bus bus, int delaySteps, float feedback, float wet);

    // Renders, folds the loop and normalises its peak.
    SampleBuffer Render(float peak) const;

private:
    struct Placed {
        Bus bus;
        Instrument instrument;
        NoteEvent note;
    };
    struct BusSettings {
        float gain = 1.0f;
        int echoSteps = 0;
        float echoFeedback = 0.0f;
        float echoWet = 0.0f;
    };

    double StepSeconds() const { return 15.0 / bpm; }

    double bpm;
    int bars;
    std::vector<Placed> notes;
    BusSettings buses[4];
};

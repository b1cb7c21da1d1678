#pragma once
// Notes written as text, one bar or phrase at a time: "D4/4 F4/2 r/2" is D4 for four
// sixteenths, F4 for two, then two sixteenths of rest. A note name may carry '#' or 'b'
// ("Bb3"), an optional '!' makes it accented, and '~' ties it into the next note's time
// (no new attack). Pitches follow equal temperament with A4 = 440 Hz.
#include <string>
#include <vector>

struct NoteEvent {
    int step;   // start, in sixteenths from the start of the pattern
    int length; // in sixteenths
    int midi;   // MIDI note number (69 = A4)
    float velocity;
};

class Pattern {
public:
    // Parses the text; steps start at startStep. Throws std::invalid_argument on a bad token.
    static std::vector<NoteEvent> Parse(const std::string& text, int startStep = 0);
    // Length of the text in sixteenths.
    static int Steps(const std::string& text);
    // 440 × 2^((midi − 69) / 12).
    static double Frequency(int midi);
    // "C4" = 60, "A4" = 69, "Bb3" = 58.
    static int Midi(const std::string& name);
};

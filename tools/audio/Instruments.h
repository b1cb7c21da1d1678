#pragma once
// The instruments the two music tracks play: each turns one note into the voices that sound it.
#include "Voice.h"

#include <cstdint>
#include <vector>

enum class Instrument {
    SoftLead,  // menu melody: mellow narrow square with a late vibrato
    Pluck,     // menu arpeggio: plucked triangle
    RoundBass, // menu bass: triangle with a sine under it
    TenseLead, // race melody: staccato square
    Arpeggio,  // race sixteenths: thin square blips
    DarkPad,   // race chords: slow triangle swell
    DriveBass, // race bass: filtered square with a plucked filter
    Kick,
    Snare,
    Rim,     // soft snare of the menu track
    Hat,     // closed hi-hat
    OpenHat, // open hi-hat
};

class Instruments {
public:
    // Voices for one note: the MIDI pitch, how long the note is held in seconds, its velocity
    // (0..1) and a seed that makes the note's noise its own.
    static std::vector<Voice> Play(Instrument instrument, int midi, double seconds, float velocity,
                                   uint64_t seed);
};

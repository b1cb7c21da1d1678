#pragma once
// The game's two music loops, composed as note sequences:
// - the menu track ("Audio/Music/MainMenu.wav"): F major, 90 beats a minute, 24 bars (64 s),
//   relaxed: a singing melody over plucked arpeggios, a round bass and soft drums;
// - the race track ("Audio/Music/Suspicious.wav"): D minor, 150 beats a minute, 40 bars
//   (64 s), tense and driving: staccato melody, pulsing eighth-note bass, four-to-the-floor
//   drums and a sixteenth-note arpeggio section.
#include "SampleBuffer.h"

class Songs {
public:
    static SampleBuffer MainMenu();
    static SampleBuffer Suspicious();
};

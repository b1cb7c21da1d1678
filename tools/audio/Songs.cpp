#include "Songs.h"

#include "MusicTrack.h"
#include "Pattern.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace {

struct Chord {
    std::string root;               // bass root, e.g. "F2"
    std::vector<std::string> tones; // chord tones for arpeggios and pads, low to high
};

Chord MakeChord(const std::string& name) {
    if (name == "F")
        return {"F2", {"F3", "A3", "C4", "F4"}};
    if (name == "Dm")
        return {"D2", {"D3", "F3", "A3", "D4"}};
    if (name == "Bb")
        return {"Bb1", {"Bb2", "D3", "F3", "Bb3"}};
    if (name == "C")
        return {"C2", {"C3", "E3", "G3", "C4"}};
    if (name == "Gm")
        return {"G1", {"G2", "Bb2", "D3", "G3"}};
    if (name == "Am")
        return {"A1", {"A2", "C3", "E3", "A3"}};
    if (name == "A")
        return {"A1", {"A2", "C#3", "E3", "A3"}};
    if (name == "Eb")
        return {"Eb2", {"Eb3", "G3", "Bb3", "Eb4"}};
    throw std::invalid_argument("unknown chord " + name);
}

// Joins bars of sixteen sixteenths each into one phrase; a bar of another length is a mistake.
std::string Join(const std::vector<std::string>& bars) {
    std::string text;
    for (const std::string& bar : bars) {
        if (Pattern::Steps(bar) != 16) {
            throw std::invalid_argument("bar is not sixteen steps long: " + bar);
        }
        text += bar + " | ";
    }
    return text;
}

// ---- Menu track -------------------------------------------------------------------------

const std::vector<std::string> kMenuChords = {
    "F",  "Dm", "Bb", "C",  "F",  "Dm", "Gm", "C", // A
    "Bb", "C",  "Am", "Dm", "Gm", "Bb", "C",  "C", // B
    "F",  "Dm", "Bb", "C",  "F",  "Dm", "Gm", "C", // A'
};

const std::vector<std::string> kMenuMelody = {
    // A: the theme
    "C5/4 F5/4 A5/6 G5/2",
    "F5/6 E5/2 D5/8",
    "D5/4 F5/4 Bb5/6 A5/2",
    "G5/12 r/4",
    "A5/4 C6/4 A5/4 F5/4",
    "A5/6 G5/2 F5/4 D5/4",
    "G5/4 Bb5/4 D6/4 C6/2 Bb5/2",
    "A5/2 G5/2 E5/4 C5/8",
    // B: a lower answer that climbs back
    "r/4 D5/4 F5/4 A5/4",
    "G5/8 E5/4 C5/4",
    "r/4 C5/4 E5/4 A5/4",
    "F5/8 D5/8",
    "r/4 Bb4/4 D5/4 G5/4",
    "F5/6 D5/2 Bb4/8",
    "C5/4 D5/4 E5/4 G5/4",
    "C6/8 Bb5/4 G5/4",
    // A': the theme again, higher at its end
    "C5/2 D5/2 F5/4 A5/6 G5/2",
    "F5/6 E5/2 D5/4 A4/4",
    "D5/4 F5/4 Bb5/4 D6/4",
    "C6/6 Bb5/2 G5/8",
    "A5/4 C6/4 F6/4 C6/4",
    "D6/6 C6/2 A5/4 F5/4",
    "G5/4 A5/4 Bb5/4 D6/4",
    "C6/6 G5/2 E5/4 r/4",
};

// ---- Race track -------------------------------------------------------------------------

const std::vector<std::string> kRaceChords = {
    "Dm", "Dm", "Bb", "A",  "Dm", "Dm", "Bb", "A", // A
    "Gm", "A",  "Dm", "Bb", "Gm", "A",  "Dm", "A", // B
    "Dm", "Dm", "Bb", "A",  "Dm", "Dm", "Bb", "A", // A, an octave up
    "Bb", "C",  "Dm", "Dm", "Bb", "C",  "A",  "A", // C: arpeggios
    "Dm", "Dm", "Bb", "A",  "Dm", "Dm", "Bb", "A", // A
};

const std::vector<std::string> kRaceTheme = {
    "D5/2 r/2 D5/2 F5/2 r/2 E5/2 D5/2 r/2",    "A4/2 r/2 A4/2 C5/2 r/2 D5/4 r/2",
    "Bb4/2 r/2 Bb4/2 D5/2 r/2 F5/2 E5/2 D5/2", "C#5/6 E5/2 A5/4 G5/2 E5/2",
    "D5/2 r/2 D5/2 F5/2 r/2 E5/2 D5/2 r/2",    "A4/2 r/2 A4/2 C5/2 r/2 D5/2 E5/2 F5/2",
    "G5/2 r/2 G5/2 F5/2 r/2 E5/2 D5/2 r/2",    "E5/4 G5/4 Bb5/4 C#6/4",
};

const std::vector<std::string> kRaceBridge = {
    "G5/6 Bb5/2 D6/8",       "C#6/6 E6/2 A5/8", "F5/6 A5/2 D6/6 C6/2", "Bb5/8 A5/4 G5/4",
    "G5/6 Bb5/2 D6/6 Eb6/2", "E6/6 C#6/2 A5/8", "D6/4 A5/4 F5/4 D5/4", "E5/4 F5/4 G5/4 C#5/4",
};

const std::vector<std::string> kRaceLongNotes = {
    "F5/16", "G5/16", "A5/12 G5/4", "F5/8 D5/8", "F5/8 Bb5/8", "C6/8 E6/8", "C#6/16", "E6/8 C#6/4 A5/4",
};

} // namespace

SampleBuffer Songs::MainMenu() {
    MusicTrack track(90.0, 24);
    track.Add(Bus::Melody, Instrument::SoftLead, Pattern::Parse(Join(kMenuMelody)));
    for (int bar = 0; bar < 24; ++bar) {
        const int at = bar * 16;
        Chord chord = MakeChord(kMenuChords[bar]);
        // Bass: root held, the fifth as a pickup, the root an octave up, then the fifth.
        int root = Pattern::Midi(chord.root) + 12;
        track.Add(Bus::Bass, Instrument::RoundBass,
                  {{at, 6, root, 0.9f},
                   {at + 6, 2, root + 7, 0.6f},
                   {at + 8, 4, root + 12, 0.7f},
                   {at + 12, 4, root + 7, 0.7f}});
        // Arpeggio in eighths: up through the chord and back down.
        const int order[8] = {0, 1, 2, 3, 2, 1, 2, 1};
        for (int i = 0; i < 8; ++i) {
            int midi = Pattern::Midi(chord.tones[order[i]]) + 12;
            track.Add(Bus::Harmony, Instrument::Pluck, {{at + 2 * i, 2, midi, i % 2 == 0 ? 0.8f : 0.55f}});
        }
    }
    // Drums: a gentle kick on one and three, a rim on two and four, hats on the eighths; the
    // middle section adds a soft shuffle of sixteenth hats.
    track.AddHits(Instrument::Kick, "X.......x.o.....", 0, 24);
    track.AddHits(Instrument::Rim, "....x.......x...", 0, 24);
    track.AddHits(Instrument::Hat, "x.o.x.o.x.o.x.o.", 0, 8);
    track.AddHits(Instrument::Hat, "x.ooxoo.x.ooxoox", 8 * 16, 8);
    track.AddHits(Instrument::Hat, "x.o.x.o.x.o.x.o.", 16 * 16, 7);
    track.AddHits(Instrument::Hat, "x.o.x.o.x.oox.xo", 23 * 16, 1);
    track.SetBusGain(Bus::Melody, 0.55f);
    track.SetBusGain(Bus::Harmony, 0.22f);
    track.SetBusGain(Bus::Bass, 0.5f);
    track.SetBusGain(Bus::Drums, 0.35f);
    track.SetBusEcho(Bus::Melody, 6, 0.3f, 0.3f);
    track.SetBusEcho(Bus::Harmony, 3, 0.25f, 0.25f);
    return track.Render(0.75f);
}

SampleBuffer Songs::Suspicious() {
    MusicTrack track(150.0, 40);
    // Melody by section: theme, bridge, theme an octave up, long notes over arpeggios, theme.
    track.Add(Bus::Melody, Instrument::TenseLead, Pattern::Parse(Join(kRaceTheme), 0));
    track.Add(Bus::Melody, Instrument::TenseLead, Pattern::Parse(Join(kRaceBridge), 8 * 16));
    track.Add(Bus::Melody, Instrument::TenseLead, Pattern::Parse(Join(kRaceTheme), 16 * 16), 12);
    track.Add(Bus::Melody, Instrument::SoftLead, Pattern::Parse(Join(kRaceLongNotes), 24 * 16));
    track.Add(Bus::Melody, Instrument::TenseLead, Pattern::Parse(Join(kRaceTheme), 32 * 16));
    for (int bar = 0; bar < 40; ++bar) {
        const int at = bar * 16;
        Chord chord = MakeChord(kRaceChords[bar]);
        int root = Pattern::Midi(chord.root);
        if (root < Pattern::Midi("C2")) {
            root += 12;
        }
        // Driving eighth-note bass with octave jumps.
        const int offsets[8] = {0, 0, 12, 0, 0, 12, 0, 7};
        for (int i = 0; i < 8; ++i) {
            track.Add(Bus::Bass, Instrument::DriveBass,
                      {{at + 2 * i, 1, root + offsets[i], i % 2 == 0 ? 0.95f : 0.7f}});
        }
        // A dark pad holding the chord for the whole bar.
        for (size_t t = 1; t < chord.tones.size(); ++t) {
            track.Add(Bus::Harmony, Instrument::DarkPad,
                      {{at, 15, Pattern::Midi(chord.tones[t]) + 12, 0.5f}});
        }
        // Section C: sixteenth arpeggios climbing through the chord.
        if (bar >= 24 && bar < 32) {
            const int order[16] = {0, 1, 2, 3, 1, 2, 3, 0, 2, 3, 0, 1, 3, 2, 1, 2};
            for (int i = 0; i < 16; ++i) {
                int midi = Pattern::Midi(chord.tones[order[i]]) + (i >= 8 ? 24 : 12);
                track.Add(Bus::Harmony, Instrument::Arpeggio, {{at + i, 1, midi, i % 4 == 0 ? 0.9f : 0.6f}});
            }
        }
    }
    // Drums: four to the floor, backbeat snare, sixteenth hats; open hats in the bridge; a
    // snare fill closes every eight bars (the last one leads back into the first bar).
    for (int section = 0; section < 5; ++section) {
        int at = section * 8 * 16;
        track.AddHits(Instrument::Kick, "X...x...X...x...", at, 8);
        track.AddHits(Instrument::Snare, "....X.......X...", at, 7);
        track.AddHits(Instrument::Snare, "....X.......XoxX", at + 7 * 16, 1);
        if (section == 1) {
            track.AddHits(Instrument::Hat, "xox.xox.xox.xox.", at, 8);
            track.AddHits(Instrument::OpenHat, "...o...o...o...o", at, 8);
        } else {
            track.AddHits(Instrument::Hat, "xoxoxoxoxoxoxoxo", at, 8);
        }
    }
    track.SetBusGain(Bus::Melody, 0.45f);
    track.SetBusGain(Bus::Harmony, 0.2f);
    track.SetBusGain(Bus::Bass, 0.45f);
    track.SetBusGain(Bus::Drums, 0.5f);
    track.SetBusEcho(Bus::Melody, 3, 0.25f, 0.2f);
    return track.Render(0.45f);
}

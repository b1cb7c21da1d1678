#include "EffectBank.h"

#include "NoiseSource.h"
#include "Pattern.h"
#include "Voice.h"

#include <cmath>

namespace {

double N(const char* name) {
    return Pattern::Frequency(Pattern::Midi(name));
}

size_t At(double seconds) {
    return static_cast<size_t>(std::lround(seconds * kSampleRate));
}

void Add(SampleBuffer& out, const Voice& voice, double atSeconds, float gain = 1.0f) {
    out.Mix(voice.Render(), At(atSeconds), gain);
}

// A plain beep or blip: a voice with a short attack, held for hold seconds.
Voice Tone(Waveform wave, double frequency, double hold, double release = 0.02) {
    return Voice(wave, frequency).Envelope(0.002, 0.08, 0.7, hold, release);
}

// White noise (a new value every sample).
Voice Noise(uint64_t seed) {
    return Voice(Waveform::Noise, kSampleRate).Seed(seed);
}

SampleBuffer Done(SampleBuffer sound, float peak) {
    sound.TrimTail(0.001f);
    sound.NormalizeTo(peak);
    sound.FadeEdges(0.001, 0.004);
    return sound;
}

// Peaks that suit the load volumes: effects played at 1.0 stay below full scale so that they
// sit with the music; those played at 0.32 or 0.64 are louder in the file.
constexpr float kPeakAtFull = 0.70f;
constexpr float kPeakAtTwoThirds = 0.85f;
constexpr float kPeakAtThird = 0.95f;

} // namespace

std::vector<Effect> EffectBank::Build() {
    return {
        {"Audio/Countdown.wav", Countdown()},
        {"Audio/Finish.wav", Finish()},
        {"Audio/Hit.wav", Hit()},
        {"Audio/Fire.wav", Fire()},
        {"Audio/EnemyHit.wav", EnemyHit()},
        {"Audio/Jump.wav", Jump()},
        {"Audio/RoofHit.wav", RoofHit()},
        {"Audio/Select.wav", Select()},
        {"Audio/Start.wav", Start()},
        {"Audio/SuperJump.wav", SuperJump()},
        {"Audio/SpeedUp.wav", SpeedUp()},
        {"Audio/FlipScreen.wav", FlipScreen()},
        {"Audio/OpenGates.wav", OpenGates()},
        {"Audio/Disabled.wav", Disabled()},
        {"Audio/Unlocked.wav", Unlocked()},
        {"Audio/UnlockedTour.wav", UnlockedTour()},
        {"Audio/Hurry.wav", Hurry()},
        {"Audio/HurryMore.wav", HurryMore()},
        {"Audio/Cow.wav", Cow()},
        {"Audio/CowHitPlayer.wav", CowHitPlayer()},
        {"Audio/Click.wav", Click()},
        {"Audio/DoubleClick.wav", DoubleClick()},
        {"Audio/Swap.wav", Swap()},
        {"Audio/LongSwap.wav", LongSwap()},
        {"Audio/Hover.wav", Hover()},
        {"Audio/Confusion.wav", Confusion()},
    };
}

// Countdown: one clean beep on A5; Start answers a fifth higher.
SampleBuffer EffectBank::Countdown() {
    SampleBuffer s;
    Add(s, Tone(Waveform::Square, N("A5"), 0.13, 0.02).Filter(FilterMode::LowPass, 5000), 0.0, 0.6f);
    Add(s, Tone(Waveform::Sine, N("A4"), 0.13, 0.02), 0.0, 0.5f);
    return Done(s, kPeakAtThird);
}

SampleBuffer EffectBank::Start() {
    SampleBuffer s;
    Add(s, Tone(Waveform::Square, N("D6"), 0.30, 0.03).Filter(FilterMode::LowPass, 6000), 0.0, 0.5f);
    Add(s, Tone(Waveform::Square, N("A6"), 0.30, 0.03).Duty(0.25).Filter(FilterMode::LowPass, 6000), 0.0,
        0.25f);
    Add(s, Tone(Waveform::Sine, N("D5"), 0.30, 0.03), 0.0, 0.5f);
    return Done(s, kPeakAtThird);
}

// Finish: a bright rising F major arpeggio that rings out on the top note.
SampleBuffer EffectBank::Finish() {
    SampleBuffer s;
    const char* notes[] = {"F5", "A5", "C6", "F6"};
    for (int i = 0; i < 4; ++i) {
        double at = 0.055 * i;
        double hold = i == 3 ? 0.24 : 0.05;
        Voice lead =
            Tone(Waveform::Square, N(notes[i]), hold, 0.03).Duty(0.25).Filter(FilterMode::LowPass, 7000);
        if (i == 3) {
            lead.Vibrato(7.0, 0.25, 0.08);
        }
        Add(s, lead, at, 0.45f);
        Add(s, Tone(Waveform::Triangle, N(notes[i]) / 2.0, hold, 0.03), at, 0.5f);
    }
    Add(s, Voice(Waveform::Sine, N("F7")).Envelope(0.002, 0.08, 0.0, 0.2, 0.03), 0.165, 0.15f);
    Add(s, Noise(11).Envelope(0.002, 0.05, 0.0, 0.2, 0.03).Filter(FilterMode::HighPass, 8000), 0.165, 0.1f);
    return Done(s, kPeakAtFull);
}

// Hit: a dull thud, a falling low sine with a muffled noise knock.
SampleBuffer EffectBank::Hit() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Sine, 130).Glide(45, 0.09).Envelope(0.001, 0.06, 0.0, 0.15, 0.02), 0.0);
    Add(s, Noise(21).Envelope(0.001, 0.02, 0.0, 0.05, 0.01).Filter(FilterMode::LowPass, 500), 0.0, 0.6f);
    return Done(s, kPeakAtTwoThirds);
}

// RoofHit: a higher, shorter knock.
SampleBuffer EffectBank::RoofHit() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Triangle, 440).Glide(280, 0.05).Envelope(0.001, 0.035, 0.0, 0.08, 0.01), 0.0);
    Add(s, Noise(31).Envelope(0.001, 0.008, 0.0, 0.02, 0.005).Filter(FilterMode::BandPass, 1800, 1.2), 0.0,
        0.8f);
    return Done(s, kPeakAtTwoThirds);
}

// Fire: crackling flames, a soft roar under random sharp pops.
SampleBuffer EffectBank::Fire() {
    SampleBuffer s;
    Add(s,
        Noise(41)
            .Envelope(0.03, 0.25, 0.3, 0.40, 0.02)
            .Filter(FilterMode::BandPass, 900, 0.8)
            .CutoffCurve({{0.0, 1400}, {0.45, 600}}),
        0.0, 0.5f);
    Add(s,
        Voice(Waveform::Noise, 180)
            .Seed(42)
            .Envelope(0.02, 0.2, 0.4, 0.40, 0.02)
            .Filter(FilterMode::LowPass, 400),
        0.0, 0.5f);
    NoiseSource random(43);
    for (int i = 0; i < 34; ++i) {
        double at = random.Unit() * 0.44;
        double gain = 0.3 + 0.7 * random.Unit();
        double decay = 0.002 + 0.006 * random.Unit();
        double cutoff = 2000 + 5000 * random.Unit();
        Add(s,
            Noise(100 + static_cast<uint64_t>(i))
                .Envelope(0.0005, decay, 0.0, decay * 2.0, decay)
                .Filter(FilterMode::HighPass, cutoff),
            at, static_cast<float>(gain));
    }
    return Done(s, kPeakAtFull);
}

// EnemyHit: the racer is caught; a falling zap from A5 down two octaves.
SampleBuffer EffectBank::EnemyHit() {
    SampleBuffer s;
    Add(s,
        Voice(Waveform::Square, N("A5"))
            .Glide(N("A3"), 0.32)
            .Duty(0.25)
            .Envelope(0.002, 0.2, 0.5, 0.3, 0.03)
            .Filter(FilterMode::LowPass, 4000),
        0.0, 0.6f);
    Add(s, Voice(Waveform::Noise, 3000).Seed(51).Envelope(0.001, 0.04, 0.0, 0.08, 0.02), 0.0, 0.4f);
    return Done(s, kPeakAtThird);
}

// CowHitPlayer: a heavy bonk, the cow's head meeting the racer.
SampleBuffer EffectBank::CowHitPlayer() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Sine, 260).Glide(70, 0.12).Envelope(0.001, 0.08, 0.0, 0.2, 0.02), 0.0);
    Add(s, Voice(Waveform::Triangle, 190).Glide(95, 0.1).Envelope(0.001, 0.05, 0.0, 0.12, 0.02), 0.0, 0.5f);
    Add(s, Noise(61).Envelope(0.001, 0.03, 0.0, 0.06, 0.01).Filter(FilterMode::LowPass, 2500), 0.0, 0.7f);
    return Done(s, kPeakAtThird);
}

// Jump: a quick rising blip, D5 up to A5.
SampleBuffer EffectBank::Jump() {
    SampleBuffer s;
    Add(s,
        Voice(Waveform::Square, N("D5"))
            .Glide(N("A5"), 0.09)
            .Envelope(0.002, 0.08, 0.5, 0.09, 0.025)
            .Filter(FilterMode::LowPass, 4500),
        0.0);
    return Done(s, 0.55f);
}

// SuperJump: a bigger spring, two octaves up with a wobble.
SampleBuffer EffectBank::SuperJump() {
    SampleBuffer s;
    Add(s,
        Voice(Waveform::Square, N("D4"))
            .PitchCurve({{0.0, N("D4")}, {0.22, N("D6")}, {0.4, N("A5")}})
            .Duty(0.25)
            .Vibrato(16.0, 1.2)
            .Envelope(0.002, 0.2, 0.5, 0.32, 0.03)
            .Filter(FilterMode::LowPass, 5000),
        0.0, 0.7f);
    Add(s,
        Voice(Waveform::Triangle, N("D3"))
            .PitchCurve({{0.0, N("D3")}, {0.22, N("D5")}})
            .Envelope(0.002, 0.15, 0.3, 0.25, 0.03),
        0.0, 0.6f);
    return Done(s, kPeakAtFull);
}

// SpeedUp: a fast rising arpeggio over a brightening whoosh.
SampleBuffer EffectBank::SpeedUp() {
    SampleBuffer s;
    const char* notes[] = {"D5", "F5", "A5", "D6", "F6"};
    for (int i = 0; i < 5; ++i) {
        Add(s, Tone(Waveform::Square, N(notes[i]), 0.035, 0.015).Duty(0.5).Filter(FilterMode::LowPass, 6000),
            0.04 * i, 0.5f);
    }
    Add(s,
        Noise(71)
            .Envelope(0.05, 0.2, 0.6, 0.22, 0.03)
            .Filter(FilterMode::BandPass, 800, 1.5)
            .CutoffCurve({{0.0, 800}, {0.25, 7000}}),
        0.0, 0.6f);
    return Done(s, kPeakAtFull);
}

// FlipScreen: the view turns over; a tone swoops up and back down.
SampleBuffer EffectBank::FlipScreen() {
    SampleBuffer s;
    Add(s,
        Voice(Waveform::Triangle, N("A4"))
            .PitchCurve({{0.0, N("A4")}, {0.16, N("A6")}, {0.34, N("D5")}})
            .Envelope(0.01, 0.2, 0.8, 0.32, 0.03),
        0.0);
    Add(s,
        Voice(Waveform::Square, N("A5"))
            .PitchCurve({{0.0, N("A5")}, {0.16, N("A7")}, {0.34, N("D6")}})
            .Duty(0.125)
            .Envelope(0.01, 0.2, 0.6, 0.32, 0.03)
            .Filter(FilterMode::LowPass, 6000),
        0.0, 0.25f);
    return Done(s, kPeakAtThird);
}

// OpenGates: the key turns; a metallic jingle over a rising clunk.
SampleBuffer EffectBank::OpenGates() {
    SampleBuffer s;
    const char* bells[] = {"D6", "A6", "F6", "D7"};
    for (int i = 0; i < 4; ++i) {
        double f = N(bells[i]);
        double at = 0.07 * i;
        double hold = i == 3 ? 0.2 : 0.06;
        Voice bell = Voice(Waveform::Square, f)
                         .Envelope(0.001, 0.1, 0.6, hold, 0.025)
                         .Filter(FilterMode::LowPass, 5000);
        Add(s, bell, at, 0.3f);
        Add(s, Voice(Waveform::Sine, f * 2.76).Envelope(0.001, 0.04, 0.0, 0.1, 0.02), at, 0.2f);
    }
    Voice clunk = Voice(Waveform::Square, N("D3")).Glide(N("D4"), 0.2).Envelope(0.002, 0.1, 0.3, 0.2, 0.03);
    Add(s, clunk.Filter(FilterMode::LowPass, 900), 0.0, 0.35f);
    return Done(s, kPeakAtThird);
}

// Disabled: a low two-note "no".
SampleBuffer EffectBank::Disabled() {
    SampleBuffer s;
    Add(s, Tone(Waveform::Square, N("F3"), 0.07, 0.015).Filter(FilterMode::LowPass, 1500), 0.0);
    Add(s, Tone(Waveform::Square, N("D3"), 0.09, 0.02).Filter(FilterMode::LowPass, 1500), 0.09);
    return Done(s, kPeakAtThird);
}

// Select: a bright two-note pop, A5 then D6.
SampleBuffer EffectBank::Select() {
    SampleBuffer s;
    Add(s, Tone(Waveform::Triangle, N("A5"), 0.03, 0.01), 0.0, 0.8f);
    Add(s, Tone(Waveform::Square, N("D6"), 0.05, 0.02).Duty(0.25).Filter(FilterMode::LowPass, 5000), 0.035,
        0.4f);
    Add(s, Tone(Waveform::Triangle, N("D6"), 0.05, 0.02), 0.035, 0.7f);
    return Done(s, 0.5f);
}

// Unlocked: a short fanfare for a new map.
SampleBuffer EffectBank::Unlocked() {
    SampleBuffer s;
    const char* notes[] = {"C5", "F5", "A5", "C6"};
    const double times[] = {0.0, 0.1, 0.2, 0.3};
    for (int i = 0; i < 4; ++i) {
        double hold = i == 3 ? 0.55 : 0.08;
        Voice lead =
            Tone(Waveform::Square, N(notes[i]), hold, 0.04).Duty(0.25).Filter(FilterMode::LowPass, 6000);
        if (i == 3) {
            lead.Vibrato(6.0, 0.3, 0.15);
        }
        Add(s, lead, times[i], 0.45f);
    }
    for (const char* chord : {"F4", "A4", "C5"}) {
        Add(s, Tone(Waveform::Triangle, N(chord), 0.55, 0.06), 0.3, 0.3f);
    }
    Add(s, Tone(Waveform::Triangle, N("F3"), 0.55, 0.06), 0.3, 0.45f);
    Add(s, Noise(81).Envelope(0.2, 0.3, 0.0, 0.5, 0.06).Filter(FilterMode::HighPass, 6000), 0.25, 0.12f);
    return Done(s, kPeakAtFull);
}

// UnlockedTour: the bigger fanfare for a new tour, with a drum roll and a held chord.
SampleBuffer EffectBank::UnlockedTour() {
    SampleBuffer s;
    struct Step {
        const char* note;
        double at;
        double hold;
    };
    const Step melody[] = {{"F5", 0.0, 0.06}, {"F5", 0.1, 0.06},  {"F5", 0.2, 0.06}, {"F5", 0.3, 0.25},
                           {"Db6", 0.6, 0.2}, {"Eb6", 0.85, 0.2}, {"F6", 1.1, 0.7}};
    for (const Step& step : melody) {
        Voice lead = Tone(Waveform::Square, N(step.note), step.hold, 0.04)
                         .Duty(0.25)
                         .Filter(FilterMode::LowPass, 6500);
        if (step.hold > 0.5) {
            lead.Vibrato(6.0, 0.3, 0.2);
        }
        Add(s, lead, step.at, 0.4f);
        Add(s, Tone(Waveform::Triangle, N(step.note) / 2.0, step.hold, 0.04), step.at, 0.3f);
    }
    // Bass and chords under the last three notes: Db major, Eb major, F major.
    const char* chords[3][3] = {{"Db4", "F4", "Ab4"}, {"Eb4", "G4", "Bb4"}, {"F4", "A4", "C5"}};
    const char* roots[3] = {"Db3", "Eb3", "F3"};
    const double at[3] = {0.6, 0.85, 1.1};
    const double hold[3] = {0.22, 0.22, 0.7};
    for (int c = 0; c < 3; ++c) {
        for (const char* note : chords[c]) {
            Add(s, Tone(Waveform::Triangle, N(note), hold[c], 0.05), at[c], 0.2f);
        }
        Add(s, Tone(Waveform::Triangle, N(roots[c]), hold[c], 0.05), at[c], 0.4f);
    }
    // Timpani roll into the last chord, then a cymbal.
    for (int i = 0; i < 10; ++i) {
        Add(s, Voice(Waveform::Sine, 95).Glide(80, 0.05).Envelope(0.001, 0.05, 0.0, 0.08, 0.02),
            0.6 + 0.05 * i, 0.15f + 0.03f * i);
    }
    Add(s, Noise(91).Envelope(0.002, 0.35, 0.0, 0.6, 0.08).Filter(FilterMode::HighPass, 5000), 1.1, 0.25f);
    return Done(s, kPeakAtFull);
}

// Hurry: a short two-tone alarm; HurryMore the same alarm, higher and twice as fast.
SampleBuffer EffectBank::Hurry() {
    SampleBuffer s;
    for (int i = 0; i < 6; ++i) {
        Add(s,
            Tone(Waveform::Square, N(i % 2 == 0 ? "A5" : "F5"), 0.075, 0.008)
                .Filter(FilterMode::LowPass, 5000),
            0.09 * i, 0.6f);
    }
    return Done(s, kPeakAtThird);
}

SampleBuffer EffectBank::HurryMore() {
    SampleBuffer s;
    for (int i = 0; i < 12; ++i) {
        Add(s,
            Tone(Waveform::Square, N(i % 2 == 0 ? "D6" : "A5"), 0.035, 0.006)
                .Filter(FilterMode::LowPass, 6000),
            0.045 * i, 0.6f);
    }
    return Done(s, kPeakAtThird);
}

// Cow: a moo, a nasal low tone whose brightness opens and closes like a mouth.
SampleBuffer EffectBank::Cow() {
    SampleBuffer s;
    std::vector<Breakpoint> pitch = {{0.0, 105}, {0.12, 128}, {0.38, 118}, {0.5, 92}};
    std::vector<Breakpoint> mouth = {{0.0, 300}, {0.12, 1100}, {0.36, 900}, {0.5, 350}};
    Add(s,
        Voice(Waveform::Square, 105)
            .PitchCurve(pitch)
            .Duty(0.3)
            .Vibrato(5.5, 0.25, 0.1)
            .Envelope(0.04, 0.3, 0.8, 0.46, 0.02)
            .Filter(FilterMode::LowPass, 300, 2.5)
            .CutoffCurve(mouth),
        0.0);
    Add(s,
        Voice(Waveform::Triangle, 52)
            .PitchCurve({{0.0, 52}, {0.12, 64}, {0.38, 59}, {0.5, 46}})
            .Envelope(0.05, 0.3, 0.8, 0.46, 0.02),
        0.0, 0.5f);
    Add(s, Noise(111).Envelope(0.05, 0.2, 0.3, 0.45, 0.02).Filter(FilterMode::BandPass, 700, 2.0), 0.0,
        0.08f);
    return Done(s, kPeakAtTwoThirds);
}

// Click and Hover: soft ticks; DoubleClick two of them.
SampleBuffer EffectBank::Click() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Sine, 2200).Envelope(0.0005, 0.012, 0.0, 0.03, 0.006), 0.0);
    Add(s, Voice(Waveform::Triangle, 1100).Envelope(0.0005, 0.01, 0.0, 0.03, 0.006), 0.0, 0.6f);
    Add(s, Noise(121).Envelope(0.0005, 0.003, 0.0, 0.01, 0.002).Filter(FilterMode::HighPass, 3000), 0.0,
        0.5f);
    return Done(s, kPeakAtThird);
}

SampleBuffer EffectBank::DoubleClick() {
    SampleBuffer s;
    for (int i = 0; i < 2; ++i) {
        Add(s, Voice(Waveform::Sine, i == 0 ? 2200 : 2600).Envelope(0.0005, 0.008, 0.0, 0.025, 0.005),
            0.07 * i);
        Add(s,
            Noise(131 + static_cast<uint64_t>(i))
                .Envelope(0.0005, 0.003, 0.0, 0.01, 0.002)
                .Filter(FilterMode::HighPass, 3000),
            0.07 * i, 0.5f);
    }
    return Done(s, kPeakAtThird);
}

SampleBuffer EffectBank::Hover() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Sine, N("A6")).Envelope(0.001, 0.012, 0.0, 0.03, 0.006), 0.0);
    Add(s, Voice(Waveform::Sine, N("A5")).Envelope(0.001, 0.015, 0.0, 0.03, 0.006), 0.0, 0.4f);
    return Done(s, 0.40f);
}

// Swap: a short upward whoosh with a blip; LongSwap travels further, up and back.
SampleBuffer EffectBank::Swap() {
    SampleBuffer s;
    Add(s,
        Noise(141)
            .Envelope(0.02, 0.1, 0.6, 0.14, 0.02)
            .Filter(FilterMode::BandPass, 600, 2.0)
            .CutoffCurve({{0.0, 600}, {0.16, 3200}}),
        0.0);
    Add(s, Voice(Waveform::Triangle, N("D5")).Glide(N("A5"), 0.12).Envelope(0.002, 0.08, 0.4, 0.12, 0.02),
        0.02, 0.6f);
    return Done(s, kPeakAtTwoThirds);
}

SampleBuffer EffectBank::LongSwap() {
    SampleBuffer s;
    Add(s,
        Noise(151)
            .Envelope(0.03, 0.2, 0.7, 0.40, 0.02)
            .Filter(FilterMode::BandPass, 400, 2.0)
            .CutoffCurve({{0.0, 400}, {0.22, 4000}, {0.42, 900}}),
        0.0);
    const char* notes[] = {"D5", "A5", "D6"};
    for (int i = 0; i < 3; ++i) {
        Add(s, Tone(Waveform::Triangle, N(notes[i]), 0.07, 0.02), 0.03 + 0.12 * i, 0.6f);
    }
    return Done(s, kPeakAtTwoThirds);
}

// Confusion: a wobbling disco arpeggio that cannot decide on its pitch.
SampleBuffer EffectBank::Confusion() {
    SampleBuffer s;
    const char* notes[] = {"D5", "F5", "A5", "C6", "A5", "F5", "D6", "A5"};
    for (int i = 0; i < 8; ++i) {
        Add(s,
            Tone(Waveform::Square, N(notes[i]), 0.045, 0.012)
                .Duty(0.125)
                .Vibrato(13.0, 1.0)
                .Filter(FilterMode::LowPass, 5000),
            0.055 * i, 0.5f);
    }
    Add(s,
        Voice(Waveform::Sine, N("D4"))
            .PitchCurve({{0.0, N("D4")}, {0.12, N("A4")}, {0.24, N("D4")}, {0.36, N("A4")}, {0.46, N("D4")}})
            .Envelope(0.01, 0.3, 0.8, 0.44, 0.02),
        0.0, 0.4f);
    return Done(s, kPeakAtFull);
}

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

// Every effect, played at the volume the game loads it with, has its loudest 50 ms at this RMS
// level (-14 dB, about 11 dB over the race music): none drowns another, none gets lost.
constexpr float kPlayedLevel = 0.2f;
constexpr double kLevelWindow = 0.05;
// The file's own peak stays below this; effects played quietly get denser rather than clipped.
constexpr float kCeiling = 0.95f;

SampleBuffer Done(SampleBuffer sound, float loadVolume) {
    sound.TrimTail(0.001f);
    for (int pass = 0; pass < 6; ++pass) {
        float loudest = sound.LoudestRms(kLevelWindow) * loadVolume;
        if (loudest <= 0.0f) {
            break;
        }
        sound.Scale(kPlayedLevel / loudest);
        if (sound.Peak() <= kCeiling) {
            break;
        }
        sound.SoftClip(kCeiling);
    }
    // Last, so that no offset survives: clipping the tall side of a narrow pulse leaves one.
    sound.BlockDc(40.0);
    if (sound.Peak() > kCeiling) {
        sound.NormalizeTo(kCeiling);
    }
    sound.FadeEdges(0.001, 0.004);
    return sound;
}

} // namespace

std::vector<Effect> EffectBank::Build() {
    struct Recipe {
        const char* file;
        float loadVolume; // the volume the game plays the file at
        SampleBuffer (*make)();
    };
    const Recipe recipes[] = {
        {"Audio/Countdown.wav", 0.32f, Countdown},
        {"Audio/Finish.wav", 1.0f, Finish},
        {"Audio/Hit.wav", 0.64f, Hit},
        {"Audio/Fire.wav", 1.0f, Fire},
        {"Audio/EnemyHit.wav", 0.32f, EnemyHit},
        {"Audio/Jump.wav", 1.0f, Jump},
        {"Audio/RoofHit.wav", 0.64f, RoofHit},
        {"Audio/Select.wav", 1.0f, Select},
        {"Audio/Start.wav", 0.32f, Start},
        {"Audio/SuperJump.wav", 1.0f, SuperJump},
        {"Audio/SpeedUp.wav", 1.0f, SpeedUp},
        {"Audio/FlipScreen.wav", 0.32f, FlipScreen},
        {"Audio/OpenGates.wav", 0.32f, OpenGates},
        {"Audio/Disabled.wav", 0.32f, Disabled},
        {"Audio/Unlocked.wav", 1.0f, Unlocked},
        {"Audio/UnlockedTour.wav", 1.0f, UnlockedTour},
        {"Audio/Hurry.wav", 0.32f, Hurry},
        {"Audio/HurryMore.wav", 0.32f, HurryMore},
        {"Audio/Cow.wav", 0.64f, Cow},
        {"Audio/CowHitPlayer.wav", 0.32f, CowHitPlayer},
        {"Audio/Click.wav", 0.32f, Click},
        {"Audio/DoubleClick.wav", 0.32f, DoubleClick},
        {"Audio/Swap.wav", 0.64f, Swap},
        {"Audio/LongSwap.wav", 0.64f, LongSwap},
        {"Audio/Hover.wav", 0.64f, Hover},
        {"Audio/Confusion.wav", 1.0f, Confusion},
    };
    std::vector<Effect> effects;
    for (const Recipe& recipe : recipes) {
        effects.push_back({recipe.file, Done(recipe.make(), recipe.loadVolume), recipe.loadVolume});
    }
    return effects;
}

// Countdown: one clean beep on A5; Start answers a fifth higher.
SampleBuffer EffectBank::Countdown() {
    SampleBuffer s;
    Add(s, Tone(Waveform::Square, N("A5"), 0.13, 0.02).Filter(FilterMode::LowPass, 5000), 0.0, 0.6f);
    Add(s, Tone(Waveform::Sine, N("A4"), 0.13, 0.02), 0.0, 0.5f);
    return s;
}

SampleBuffer EffectBank::Start() {
    SampleBuffer s;
    Add(s, Tone(Waveform::Square, N("D6"), 0.30, 0.03).Filter(FilterMode::LowPass, 6000), 0.0, 0.5f);
    Add(s, Tone(Waveform::Square, N("A6"), 0.30, 0.03).Duty(0.25).Filter(FilterMode::LowPass, 6000), 0.0,
        0.25f);
    Add(s, Tone(Waveform::Sine, N("D5"), 0.30, 0.03), 0.0, 0.5f);
    return s;
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
    return s;
}

// Hit: a dull thud with a woody knock on top, so that small speakers, which lose the low
// thump, still carry it.
SampleBuffer EffectBank::Hit() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Sine, 150).Glide(70, 0.08).Envelope(0.001, 0.04, 0.0, 0.1, 0.02), 0.0, 0.4f);
    Add(s, Voice(Waveform::Triangle, 360).Glide(230, 0.05).Envelope(0.001, 0.04, 0.0, 0.08, 0.015), 0.0);
    Add(s, Noise(21).Envelope(0.001, 0.015, 0.0, 0.04, 0.01).Filter(FilterMode::BandPass, 700, 1.0), 0.0,
        0.7f);
    return s;
}

// RoofHit: a higher, shorter knock.
SampleBuffer EffectBank::RoofHit() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Triangle, 1100).Glide(800, 0.05).Envelope(0.001, 0.035, 0.0, 0.08, 0.01), 0.0);
    Add(s, Noise(31).Envelope(0.001, 0.008, 0.0, 0.02, 0.005).Filter(FilterMode::BandPass, 2500, 1.2), 0.0,
        0.8f);
    return s;
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
    return s;
}

// EnemyHit: the racer is caught; a buzzing zap that falls from A4 down two octaves.
SampleBuffer EffectBank::EnemyHit() {
    SampleBuffer s;
    Add(s,
        Voice(Waveform::Square, N("A4"))
            .Glide(N("A2"), 0.32)
            .Vibrato(30.0, 1.0)
            .Envelope(0.002, 0.2, 0.5, 0.3, 0.03)
            .Filter(FilterMode::LowPass, 4000),
        0.0, 0.6f);
    Add(s, Voice(Waveform::Noise, 3000).Seed(51).Envelope(0.001, 0.04, 0.0, 0.08, 0.02), 0.0, 0.4f);
    return s;
}

// CowHitPlayer: a comic bonk, a hollow wood block struck by the cow's head, then a wobbling
// spring that bounces the racer away.
SampleBuffer EffectBank::CowHitPlayer() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Sine, N("A4")).Envelope(0.001, 0.04, 0.3, 0.06, 0.015), 0.0, 0.8f);
    Add(s, Voice(Waveform::Sine, N("A4") * 2.7).Envelope(0.001, 0.012, 0.0, 0.03, 0.01), 0.0, 0.3f);
    Add(s,
        Voice(Waveform::Square, N("A4"))
            .Glide(N("D5"), 0.2)
            .Vibrato(18.0, 1.5)
            .Envelope(0.005, 0.1, 0.6, 0.18, 0.03)
            .Filter(FilterMode::LowPass, 2500),
        0.03, 0.7f);
    return s;
}

// Jump: a quick rising blip, D5 up to A5, off a small push.
SampleBuffer EffectBank::Jump() {
    SampleBuffer s;
    Add(s,
        Voice(Waveform::Square, N("D5"))
            .Glide(N("A5"), 0.09)
            .Envelope(0.002, 0.05, 0.35, 0.09, 0.025)
            .Filter(FilterMode::LowPass, 4500),
        0.0);
    // The push-off: a tiny bright tick under the blip's onset.
    Add(s, Noise(161).Envelope(0.0005, 0.003, 0.0, 0.006, 0.002).Filter(FilterMode::HighPass, 4000), 0.0,
        0.8f);
    return s;
}

// SuperJump: a bigger spring, two octaves up with a wobble.
SampleBuffer EffectBank::SuperJump() {
    SampleBuffer s;
    Add(s,
        Voice(Waveform::Triangle, N("D4"))
            .PitchCurve({{0.0, N("D4")}, {0.22, N("D6")}, {0.4, N("A5")}})
            .Vibrato(16.0, 1.2)
            .Envelope(0.002, 0.2, 0.5, 0.32, 0.03)
            .Filter(FilterMode::LowPass, 5000),
        0.0, 0.7f);
    Add(s,
        Voice(Waveform::Triangle, N("D3"))
            .PitchCurve({{0.0, N("D3")}, {0.22, N("D5")}})
            .Envelope(0.002, 0.15, 0.3, 0.25, 0.03),
        0.0, 0.6f);
    return s;
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
    return s;
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
            .Envelope(0.01, 0.2, 0.6, 0.32, 0.03)
            .Filter(FilterMode::LowPass, 6000),
        0.0, 0.4f);
    return s;
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
                         .Envelope(0.001, 0.1, 0.8, hold, 0.025)
                         .Filter(FilterMode::LowPass, 5000);
        Add(s, bell, at, 0.3f);
        Add(s, Voice(Waveform::Sine, f * 2.76).Envelope(0.001, 0.04, 0.0, 0.1, 0.02), at, 0.2f);
    }
    Voice clunk = Voice(Waveform::Square, N("D3")).Glide(N("D4"), 0.2).Envelope(0.002, 0.1, 0.3, 0.2, 0.03);
    Add(s, clunk.Filter(FilterMode::LowPass, 900), 0.0, 0.5f);
    return s;
}

// Disabled: a low two-note "no".
SampleBuffer EffectBank::Disabled() {
    SampleBuffer s;
    Add(s, Tone(Waveform::Square, N("F4"), 0.07, 0.015).Filter(FilterMode::LowPass, 2000), 0.0);
    Add(s, Tone(Waveform::Square, N("D4"), 0.09, 0.02).Filter(FilterMode::LowPass, 2000), 0.09);
    return s;
}

// Select: a bright two-note pop, F5 then C6.
SampleBuffer EffectBank::Select() {
    SampleBuffer s;
    Add(s, Tone(Waveform::Triangle, N("F5"), 0.03, 0.01), 0.0, 0.8f);
    Add(s, Tone(Waveform::Square, N("C6"), 0.05, 0.02).Duty(0.25).Filter(FilterMode::LowPass, 5000), 0.035,
        0.4f);
    Add(s, Tone(Waveform::Triangle, N("C6"), 0.05, 0.02), 0.035, 0.7f);
    return s;
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
    return s;
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
    return s;
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
    return s;
}

SampleBuffer EffectBank::HurryMore() {
    SampleBuffer s;
    for (int i = 0; i < 12; ++i) {
        Add(s,
            Tone(Waveform::Square, N(i % 2 == 0 ? "D6" : "A5"), 0.035, 0.006)
                .Filter(FilterMode::LowPass, 6000),
            0.045 * i, 0.6f);
    }
    return s;
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
    return s;
}

// Click: a crisp knock, a short noise snap over a wooden tone; DoubleClick two of them, the
// second higher; Hover a soft rounded blip that only hints at a click.
SampleBuffer EffectBank::Click() {
    SampleBuffer s;
    Add(s, Noise(121).Envelope(0.0005, 0.006, 0.0, 0.015, 0.004).Filter(FilterMode::BandPass, 3500, 1.5), 0.0,
        0.5f);
    Add(s,
        Voice(Waveform::Square, N("E6"))
            .Envelope(0.0005, 0.03, 0.6, 0.04, 0.008)
            .Filter(FilterMode::LowPass, 4000),
        0.0, 0.8f);
    return s;
}

SampleBuffer EffectBank::DoubleClick() {
    SampleBuffer s;
    const char* notes[] = {"D6", "A6"};
    for (int i = 0; i < 2; ++i) {
        Add(s,
            Noise(131 + static_cast<uint64_t>(i))
                .Envelope(0.0005, 0.006, 0.0, 0.015, 0.004)
                .Filter(FilterMode::BandPass, 5000, 1.5),
            0.045 * i, 0.5f);
        Add(s,
            Voice(Waveform::Square, N(notes[i]))
                .Envelope(0.0005, 0.03, 0.6, 0.035, 0.006)
                .Filter(FilterMode::LowPass, 5000),
            0.045 * i, 0.8f);
    }
    return s;
}

SampleBuffer EffectBank::Hover() {
    SampleBuffer s;
    Add(s, Voice(Waveform::Sine, N("F6")).Glide(N("A6"), 0.03).Envelope(0.006, 0.03, 0.5, 0.04, 0.01), 0.0);
    return s;
}

// Swap: a short upward whoosh with a low blip; LongSwap travels further, up and back.
SampleBuffer EffectBank::Swap() {
    SampleBuffer s;
    Add(s,
        Noise(141)
            .Envelope(0.02, 0.1, 0.6, 0.14, 0.02)
            .Filter(FilterMode::BandPass, 600, 2.0)
            .CutoffCurve({{0.0, 600}, {0.16, 3200}}),
        0.0);
    Add(s, Voice(Waveform::Sine, N("F4")).Glide(N("C5"), 0.1).Envelope(0.002, 0.06, 0.3, 0.1, 0.02), 0.02,
        0.5f);
    return s;
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
    return s;
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
    return s;
}

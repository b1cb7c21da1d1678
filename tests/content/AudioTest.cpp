// The shipped sounds: every file the game loads exists, has the canonical PCM header the mixer
// reads, loads through the engine's wave loader, has a sane length and level, and the music loops
// wrap without a click. The effects carry no offset, reach small speakers, play at one level and
// each sounds like itself.
#include "Audio/VeWaveSound.h"
#include "Support/HaltCapture.h"
#include "engine/Audio/AudioTestKit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <numbers>
#include <numeric>
#include <set>
#include <string>
#include <vector>

namespace {

enum class Kind { Effect, Fanfare, Music };

struct GameSound {
    const char* name;
    const char* file;
    float volume;
    Kind kind;
    bool inRace; // played while a race (and so the race music) runs
};

// The 28 sounds in the order and with the volumes the game loads them.
const GameSound kSounds[] = {
    {"Countdown", "Audio/Countdown.wav", 0.32f, Kind::Effect, true},
    {"Finish", "Audio/Finish.wav", 1.0f, Kind::Effect, true},
    {"Hit", "Audio/Hit.wav", 0.64f, Kind::Effect, true},
    {"Fire", "Audio/Fire.wav", 1.0f, Kind::Effect, true},
    {"EnemyHit", "Audio/EnemyHit.wav", 0.32f, Kind::Effect, true},
    {"Jump", "Audio/Jump.wav", 1.0f, Kind::Effect, true},
    {"RoofHit", "Audio/RoofHit.wav", 0.64f, Kind::Effect, true},
    {"Select", "Audio/Select.wav", 1.0f, Kind::Effect, false},
    {"Start", "Audio/Start.wav", 0.32f, Kind::Effect, true},
    {"SuperJump", "Audio/SuperJump.wav", 1.0f, Kind::Effect, true},
    {"SpeedUp", "Audio/SpeedUp.wav", 1.0f, Kind::Effect, true},
    {"FlipScreen", "Audio/FlipScreen.wav", 0.32f, Kind::Effect, true},
    {"OpenGates", "Audio/OpenGates.wav", 0.32f, Kind::Effect, true},
    {"Disabled", "Audio/Disabled.wav", 0.32f, Kind::Effect, false},
    {"Unlocked", "Audio/Unlocked.wav", 1.0f, Kind::Fanfare, false},
    {"UnlockedTour", "Audio/UnlockedTour.wav", 1.0f, Kind::Fanfare, false},
    {"Hurry", "Audio/Hurry.wav", 0.32f, Kind::Effect, false},
    {"HurryMore", "Audio/HurryMore.wav", 0.32f, Kind::Effect, false},
    {"Cow", "Audio/Cow.wav", 0.64f, Kind::Effect, true},
    {"CowHitPlayer", "Audio/CowHitPlayer.wav", 0.32f, Kind::Effect, true},
    {"Click", "Audio/Click.wav", 0.32f, Kind::Effect, false},
    {"DoubleClick", "Audio/DoubleClick.wav", 0.32f, Kind::Effect, false},
    {"Swap", "Audio/Swap.wav", 0.64f, Kind::Effect, false},
    {"LongSwap", "Audio/LongSwap.wav", 0.64f, Kind::Effect, false},
    {"Hover", "Audio/Hover.wav", 0.64f, Kind::Effect, false},
    {"Confusion", "Audio/Confusion.wav", 1.0f, Kind::Effect, true},
    {"MusicInGame", "Audio/Music/Suspicious.wav", 0.64f, Kind::Music, false},
    {"Music", "Audio/Music/MainMenu.wav", 0.32f, Kind::Music, false},
};

uint32_t Read32(const std::string& b, size_t at) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i) {
        value |= static_cast<uint32_t>(static_cast<uint8_t>(b[at + i])) << (8 * i);
    }
    return value;
}

struct Decoded {
    bool ok = false;
    std::vector<double> mono; // -1..1, channels averaged
    double Seconds() const { return static_cast<double>(mono.size()) / 44100.0; }
};

// Checks the canonical 44-byte header the way the mixer expects it (16-bit PCM at 44100 Hz, the data
// right after the format), then loads the sound through the engine's own loader.
Decoded ReadCanonicalWave(const GameSound& sound) {
    Decoded out;
    const std::string path = std::string(QM_SOURCE_DIR) + "/" + sound.file;
    std::string b;
    if (!ReadFileBytes(path, b) || b.size() < 44) {
        ADD_FAILURE() << sound.file << " is missing or shorter than a header";
        return out;
    }
    const uint16_t channels = static_cast<uint16_t>(static_cast<uint8_t>(b[22]));
    EXPECT_EQ(Read32(b, 4), b.size() - 8) << sound.file << ": RIFF size";
    EXPECT_EQ(b.substr(8, 32), WaveBytes(44100, channels, {}).substr(8, 32)) << sound.file << ": format";
    EXPECT_EQ(Read32(b, 40), b.size() - 44) << sound.file << ": data size";
    MessageBoxCapture capture;
    try {
        const std::unique_ptr<VeWaveSound> loaded = VeWaveSound::Load(path, sound.volume, "", false);
        for (size_t i = 0; i + 1 < loaded->samples.size(); i += 2) {
            out.mono.push_back((loaded->samples[i] + loaded->samples[i + 1]) / 65536.0);
        }
        out.ok = true;
    } catch (const HaltIntercepted& halt) {
        ADD_FAILURE() << sound.file << ": the engine refused it: " << halt.title << " / " << halt.text;
    }
    return out;
}

double Mean(const std::vector<double>& s) {
    return std::accumulate(s.begin(), s.end(), 0.0) / static_cast<double>(s.size());
}

double Rms(const std::vector<double>& s, size_t from, size_t count) {
    double sum = 0.0;
    for (size_t i = from; i < from + count; ++i) {
        sum += s[i] * s[i];
    }
    return count ? std::sqrt(sum / static_cast<double>(count)) : 0.0;
}

// The RMS of the loudest 50 ms of the sound: how loud it is while it sounds.
double LoudestWindowRms(const std::vector<double>& s) {
    const size_t window = std::min<size_t>(2205, s.size());
    double best = 0.0;
    for (size_t from = 0; from + window <= s.size(); from += 441) {
        best = std::max(best, Rms(s, from, window));
    }
    return best;
}

// The long-term power spectrum: 2048-point Hann windows, half overlapping, summed.
constexpr size_t kFftSize = 2048;

std::vector<double> PowerSpectrum(const std::vector<double>& s) {
    std::vector<double> power(kFftSize / 2, 0.0);
    std::vector<std::complex<double>> a(kFftSize);
    for (size_t from = 0; from < s.size(); from += kFftSize / 2) {
        for (size_t i = 0; i < kFftSize; ++i) {
            const double v = from + i < s.size() ? s[from + i] : 0.0;
            a[i] = v * (0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * static_cast<double>(i) / kFftSize));
        }
        for (size_t i = 1, j = 0; i < kFftSize; ++i) { // in-place radix-2 FFT
            size_t bit = kFftSize >> 1;
            for (; j & bit; bit >>= 1) {
                j ^= bit;
            }
            j ^= bit;
            if (i < j) {
                std::swap(a[i], a[j]);
            }
        }
        for (size_t len = 2; len <= kFftSize; len <<= 1) {
            const std::complex<double> w =
                std::polar(1.0, -2.0 * std::numbers::pi / static_cast<double>(len));
            for (size_t i = 0; i < kFftSize; i += len) {
                std::complex<double> x = 1.0;
                for (size_t k = 0; k < len / 2; ++k, x *= w) {
                    const std::complex<double> u = a[i + k];
                    const std::complex<double> v = a[i + k + len / 2] * x;
                    a[i + k] = u + v;
                    a[i + k + len / 2] = u - v;
                }
            }
        }
        for (size_t k = 0; k < kFftSize / 2; ++k) {
            power[k] += std::norm(a[k]);
        }
    }
    return power;
}

// Pearson correlation of two sounds' magnitude spectra, the offset bin left out.
double SpectralCorrelation(const std::vector<double>& p, const std::vector<double>& q) {
    double mp = 0.0, mq = 0.0;
    const size_t n = p.size() - 1;
    for (size_t k = 1; k < p.size(); ++k) {
        mp += std::sqrt(p[k]) / n;
        mq += std::sqrt(q[k]) / n;
    }
    double pq = 0.0, pp = 0.0, qq = 0.0;
    for (size_t k = 1; k < p.size(); ++k) {
        const double a = std::sqrt(p[k]) - mp;
        const double b = std::sqrt(q[k]) - mq;
        pq += a * b;
        pp += a * a;
        qq += b * b;
    }
    return pq / std::sqrt(pp * qq);
}

// Each file is read once for all the checks below.
const Decoded& Wave(const GameSound& sound) {
    static std::map<std::string, Decoded> read;
    auto found = read.find(sound.file);
    if (found == read.end()) {
        found = read.emplace(sound.file, ReadCanonicalWave(sound)).first;
    }
    return found->second;
}

// A music loop wraps without a click or an offset.
void ExpectSeamlessLoop(const std::vector<double>& s) {
    const size_t n = s.size();
    ASSERT_GT(n, 1000u);
    // The loop as the player hears it: the last 64 samples, then the first 64.
    std::vector<double> seam(s.end() - 64, s.end());
    seam.insert(seam.end(), s.begin(), s.begin() + 64);
    double largestStep = 0.0;
    double largestCurve = 0.0;
    for (size_t i = 2; i < seam.size(); ++i) {
        if (i == 64 || i == 65) {
            continue; // the steps across the wrap itself are what is measured below
        }
        largestStep = std::max(largestStep, std::fabs(seam[i] - seam[i - 1]));
        largestCurve = std::max(largestCurve, std::fabs(seam[i] - 2.0 * seam[i - 1] + seam[i - 2]));
    }
    const double wrapStep = std::fabs(s[0] - s[n - 1]);
    const double wrapCurve = std::fabs(s[0] - 2.0 * s[n - 1] + s[n - 2]);
    const double floor = 16.0 / 32768.0;
    EXPECT_LE(wrapStep, 1.5 * largestStep + floor) << "the last sample does not lead into the first";
    EXPECT_LE(wrapCurve, 2.0 * largestCurve + floor) << "the slope breaks at the wrap";
    // No offset: the loop averages to silence, and the level is alike on both sides of the wrap.
    EXPECT_LT(std::fabs(Mean(s)), 0.005);
    const double before = Rms(s, n - 44100, 44100);
    const double after = Rms(s, 0, 44100);
    EXPECT_LT(std::max(before, after) / std::max(std::min(before, after), 1e-9), 2.0) << "the level jumps";
}

class ShippedSound : public ::testing::TestWithParam<GameSound> {};

TEST_P(ShippedSound, LoadsThroughTheEngineWithALengthAndLevelThatSuitItsUseAndMusicLoopsSeamlessly) {
    const GameSound& sound = GetParam();
    const Decoded& wave = Wave(sound);
    ASSERT_TRUE(wave.ok);
    // Effects are short, the unlock fanfares a little longer, the music loops last minutes.
    const std::pair<double, double> seconds = sound.kind == Kind::Effect    ? std::pair{0.02, 0.6}
                                              : sound.kind == Kind::Fanfare ? std::pair{0.6, 3.0}
                                                                            : std::pair{60.0, 180.0};
    EXPECT_GE(wave.Seconds(), seconds.first);
    EXPECT_LT(wave.Seconds(), seconds.second);
    // Quiet enough to sit in the mix, loud enough to be heard at the game's volume.
    const double peak =
        std::fabs(*std::ranges::max_element(wave.mono, {}, [](double v) { return std::fabs(v); }));
    EXPECT_LT(peak, 0.99) << "clips";
    EXPECT_GT(peak, 0.3);
    EXPECT_GT(peak * sound.volume, 0.2);
    if (sound.kind == Kind::Music) {
        // Room left for the effects on top: the music never reaches half scale in the mix.
        EXPECT_LT(peak * sound.volume, 0.5);
        ExpectSeamlessLoop(wave.mono);
    } else {
        // Effects start and stop at silence, so they never click.
        EXPECT_LT(std::fabs(wave.mono.front()), 0.01);
        EXPECT_LT(std::fabs(wave.mono.back()), 0.01);
    }
}

INSTANTIATE_TEST_SUITE_P(AllSounds, ShippedSound, ::testing::ValuesIn(kSounds),
                         [](const ::testing::TestParamInfo<GameSound>& info) {
                             return std::string(info.param.name);
                         });

struct MeasuredEffect {
    const GameSound* sound;
    const Decoded& wave;
    std::vector<double> power;
    double level; // the loudest 50 ms in the mix
};

const std::vector<MeasuredEffect>& AllEffects() {
    static const std::vector<MeasuredEffect> effects = [] {
        std::vector<MeasuredEffect> measured;
        for (const GameSound& sound : kSounds) {
            if (sound.kind != Kind::Music) {
                const std::vector<double>& mono = Wave(sound).mono;
                measured.push_back(
                    {&sound, Wave(sound), PowerSpectrum(mono), LoudestWindowRms(mono) * sound.volume});
            }
        }
        return measured;
    }();
    return effects;
}

// Race effects stand at least 6 dB over the race music while they sound; menu sounds over the
// menu music.
TEST(AudioMix, EffectsStandOutOverTheMusicTheyPlayOver) {
    const auto level = [](const GameSound& music) {
        return Rms(Wave(music).mono, 0, Wave(music).mono.size()) * music.volume;
    };
    const double raceMusic = level(kSounds[26]);
    const double menuMusic = level(kSounds[27]);
    const std::set<std::string> menu = {"Select", "Disabled", "Unlocked", "UnlockedTour",
                                        "Click",  "Swap",     "Hover"};
    for (const MeasuredEffect& e : AllEffects()) {
        if (e.sound->inRace || menu.count(e.sound->name) != 0) {
            EXPECT_GT(e.level, e.sound->inRace ? 2.0 * raceMusic : menuMusic) << e.sound->file;
        }
    }
}

TEST(AudioMix, EffectsAreCentredAndCarryOnSmallSpeakers) {
    for (const MeasuredEffect& e : AllEffects()) {
        const std::vector<double>& s = e.wave.mono;
        EXPECT_LT(std::pow(Mean(s) / Rms(s, 0, s.size()), 2.0), 0.001) << e.sound->file << ": offset";
        // Laptop speakers give little below 200 Hz: most of every effect must lie above it.
        double above = 0.0, total = 0.0;
        for (size_t k = 0; k < e.power.size(); ++k) {
            total += e.power[k];
            above += static_cast<double>(k) * 44100.0 / kFftSize > 200.0 ? e.power[k] : 0.0;
        }
        EXPECT_GT(above / total, 0.4) << e.sound->file << ": too little above 200 Hz";
    }
}

TEST(AudioMix, EffectsPlayWithinSixDecibelsOfEachOther) {
    const auto [quiet, loud] = std::ranges::minmax_element(AllEffects(), {}, &MeasuredEffect::level);
    EXPECT_LT(20.0 * std::log10(loud->level / quiet->level), 6.0)
        << loud->sound->name << " against " << quiet->sound->name;
}

TEST(AudioMix, NoTwoEffectsSoundAlike) {
    const std::vector<MeasuredEffect>& effects = AllEffects();
    for (size_t i = 0; i < effects.size(); ++i) {
        for (size_t j = i + 1; j < effects.size(); ++j) {
            EXPECT_LT(SpectralCorrelation(effects[i].power, effects[j].power), 0.8)
                << effects[i].sound->name << " and " << effects[j].sound->name;
        }
    }
}

} // namespace

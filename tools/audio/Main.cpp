// gen-audio <repository root>: writes the game's 26 sound effects and its two music loops as
// mono 16-bit PCM wave files at 44100 Hz under Audio/, then prints, per file, its length, peak
// and RMS level, and the level of its loudest 50 ms as the game plays it, so the sounds can be
// checked without speakers.
#include "EffectBank.h"
#include "Songs.h"
#include "WaveFile.h"

#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

namespace {

double Decibels(float level) {
    return level > 0.0f ? 20.0 * std::log10(level) : -120.0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: gen-audio <repository root>\n");
        return 2;
    }
    const std::filesystem::path root = argv[1];
    try {
        std::vector<Effect> sounds = EffectBank::Build();
        sounds.push_back({"Audio/Music/Suspicious.wav", Songs::Suspicious(), 0.64f});
        sounds.push_back({"Audio/Music/MainMenu.wav", Songs::MainMenu(), 0.32f});
        std::filesystem::create_directories(root / "Audio" / "Music");
        uintmax_t totalBytes = 0;
        std::printf("%-30s %8s %9s %9s %10s\n", "file", "seconds", "peak dB", "RMS dB", "played dB");
        for (const Effect& effect : sounds) {
            std::string path = (root / effect.file).string();
            std::string error;
            if (!WaveFile::Write(path, effect.sound, error)) {
                std::fprintf(stderr, "gen-audio: %s\n", error.c_str());
                return 1;
            }
            totalBytes += std::filesystem::file_size(path);
            std::printf("%-30s %8.3f %9.2f %9.2f %10.2f\n", effect.file.c_str(), effect.sound.Seconds(),
                        Decibels(effect.sound.Peak()), Decibels(effect.sound.Rms()),
                        Decibels(effect.sound.LoudestRms(0.05) * effect.loadVolume));
        }
        std::printf("%zu files, %.2f MB\n", sounds.size(),
                    static_cast<double>(totalBytes) / (1024.0 * 1024.0));
    } catch (const std::exception& e) {
        std::fprintf(stderr, "gen-audio: %s\n", e.what());
        return 1;
    }
    return 0;
}

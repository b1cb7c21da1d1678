// fuzz-links: qm_gameplay qm_options
// Feeds arbitrary bytes to the readers of what the game keeps for the player: a map's score file
// with its recording, a recording's text, the options file and a language file. Nothing may crash,
// hang or read out of bounds; a score list never holds more than the top ten; a recording read from
// any text reads back the same from its own text; a strictly read recording holds only its six
// event types at non-negative times; the options read are exactly what the file can hold.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Gameplay/QmHighscores.h"
#include "Gameplay/QmRecording.h"
#include "Platform/VeFiles.h"
#include "Platform/VeMessageBox.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace {
struct Halted {};

void Check(bool condition) {
    if (!condition) {
        __builtin_trap();
    }
}

const std::string& ScratchFolder() {
    static const std::string path = [] {
        const std::string folder = "/tmp/quillmaze-fuzz-player-" + std::to_string(getpid());
        std::filesystem::create_directories(folder);
        std::filesystem::create_directories(GetGameFolder());
        return folder;
    }();
    return path;
}

bool WriteScratch(const std::string& path, const std::string& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return false;
    }
    std::fwrite(bytes.data(), 1, bytes.size(), file);
    std::fclose(file);
    return true;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static bool ready = [] {
        SetMessageBoxHandler([](const std::string&, const std::string&, int kind) {
            if (kind == VeMessageBox::Error) {
                throw Halted{};
            }
        });
        return true;
    }();
    (void)ready;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    ScratchFolder();

    QmRecording recording;
    recording.FromText(bytes);
    QmRecording again;
    again.FromText(recording.ToText());
    Check(again.Events() == recording.Events());
    std::string error;
    if (recording.ParseStrict(bytes, error)) {
        for (const auto& [time, type] : recording.Events()) {
            Check(time >= 0 && type >= 0 && type <= 5);
        }
    } else {
        Check(recording.Empty() && !error.empty());
    }

    const std::string scores = ScratchFolder() + "/scores.dat";
    if (WriteScratch(scores, bytes)) {
        try {
            QmCoreEnvironmentManager world;
            QmHighscores highscores(world);
            highscores.LoadScores(scores);
            Check(highscores.List().size() <= QmHighscoreList::kMaxEntries);
        } catch (const Halted&) {
        }
    }

    if (WriteScratch(QmOptions::FilePath(), bytes)) {
        try {
            QmOptions options;
            options.LoadOptions();
            for (const auto& [key, value] : options.Values()) {
                Check(key.find('\n') == std::string::npos && value.find('\n') == std::string::npos);
            }
        } catch (const Halted&) {
        }
    }

    if (WriteScratch(ScratchFolder() + "/English.lang", bytes)) {
        try {
            QmLanguage language(ScratchFolder());
            language.Load("English");
            for (size_t line = 1; line <= language.LineCount(); ++line) {
                Check(language.GetLine(static_cast<int>(line)).find('\n') == std::string::npos);
            }
        } catch (const Halted&) {
        }
    }
    return 0;
}

#include "Gameplay/QmRaceSimulator.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "Gameplay/QmRaceAudio.h"
#include "Gameplay/QmRaceDrawer.h"
#include "Gameplay/QmRaceHost.h"
#include "Gameplay/QmRecordedControls.h"
#include "Platform/VeFiles.h"
#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {
// Keeps the names of the sounds a race plays.
class SimAudio : public QmRaceAudio {
public:
    explicit SimAudio(std::vector<std::string>& log) : sounds(log) {}
    void PlayAt(const std::string& name, float, float) override { sounds.push_back(name); }
    void Play(const std::string& name) override { sounds.push_back(name); }

private:
    std::vector<std::string>& sounds;
};

bool ParseSeconds(const std::string& text, float minimum, float maximum, float& value) {
    char* end = nullptr;
    const double parsed = std::strtod(text.c_str(), &end);
    if (text.empty() || end == nullptr || *end != '\0' || !std::isfinite(parsed) || parsed < minimum ||
        parsed > maximum) {
        return false;
    }
    value = static_cast<float>(parsed);
    return value > 0.0f;
}

// The racer's flags and the inputs it is given this frame.
std::string Flags(const ArPlayer& racer, QmRaceControls& controls) {
    std::string flags;
    const auto add = [&flags](bool set, const char* name) {
        if (set) {
            flags += flags.empty() ? "" : ",";
            flags += name;
        }
    };
    add(racer.active, "active");
    add(racer.inAir, "inAir");
    add(racer.falling, "falling");
    add(racer.verticalContact, "verticalContact");
    add(racer.horizontalContact, "horizontalContact");
    add(racer.active && controls.Jump(), "jump");
    add(racer.active && controls.Left(), "left");
    add(racer.active && controls.Right(), "right");
    return flags.empty() ? "-" : flags;
}
} // namespace

const char* QmSimResult::OutcomeName(Outcome outcome) {
    switch (outcome) {
    case Finished:
        return "finished";
    case Dead:
        return "dead";
    default:
        return "timeout";
    }
}

std::string QmRaceSimulator::Usage() {
    return "usage: quillmaze-sim MAPFILE [--dt SECONDS] [--inputs RECORDING_TEXT] [--max-seconds S] "
           "[--trace]\n"
           "                     [--seed N]\n"
           "Runs the countdown and the race on a map file at a fixed frame time (default 1/60 s), steering "
           "the\n"
           "racer with the inputs of a recording text (\"time:type;time:type;...\", times in race "
           "milliseconds,\n"
           "types 0 jump, 1 left, 2 right pressed, 3 jump, 4 left, 5 right released), and prints\n"
           "\"finished MS\", \"dead MS\" or \"timeout MS\" with the race time. --trace prints every frame's "
           "race\n"
           "time, position, vertical speed and flags. --max-seconds (default 120) bounds the race time;\n"
           "--seed (default 1) seeds the random directions of the cows.\n";
}

bool QmRaceSimulator::ParseArguments(int argc, const char* const* argv, QmSimOptions& options, bool& help,
                                     std::string& error) {
    help = false;
    bool haveMap = false;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const bool hasValue = i + 1 < argc;
        if (argument == "--help" || argument == "-h") {
            help = true;
            return true;
        }
        if (argument == "--trace") {
            options.trace = true;
        } else if (argument == "--dt" || argument == "--max-seconds" || argument == "--inputs" ||
                   argument == "--seed") {
            if (!hasValue) {
                error = argument + " needs a value";
                return false;
            }
            const std::string value = argv[++i];
            if (argument == "--dt" && !ParseSeconds(value, 0.0001f, 10.0f, options.dt)) {
                error = "--dt wants a frame time in seconds from 0.0001 to 10, not \"" + value + "\"";
                return false;
            }
            if (argument == "--max-seconds" && !ParseSeconds(value, 0.001f, 86400.0f, options.maxSeconds)) {
                error = "--max-seconds wants a number of seconds from 0.001 to 86400, not \"" + value + "\"";
                return false;
            }
            if (argument == "--inputs") {
                std::string reason;
                if (!options.inputs.ParseStrict(value, reason)) {
                    error = "--inputs: " + reason;
                    return false;
                }
            }
            if (argument == "--seed") {
                char* end = nullptr;
                const unsigned long seed = std::strtoul(value.c_str(), &end, 10);
                if (value.empty() || value[0] == '-' || *end != '\0' || seed > 0xFFFFFFFFul) {
                    error = "--seed wants a whole number from 0 to 4294967295, not \"" + value + "\"";
                    return false;
                }
                options.seed = static_cast<uint32_t>(seed);
            }
        } else if (!argument.empty() && argument[0] == '-') {
            error = "unknown option " + argument;
            return false;
        } else if (haveMap) {
            error = "only one map file, please (\"" + argument + "\" is a second)";
            return false;
        } else {
            options.mapPath = argument;
            haveMap = true;
        }
    }
    if (!haveMap) {
        error = "no map file given";
        return false;
    }
    return true;
}

bool QmRaceSimulator::LoadMap(QmCoreEnvironmentManager& world, const std::string& path, std::string& error) {
    std::vector<std::string> lines;
    if (IsDirectory(path)) {
        error = "\"" + path + "\" is a folder, not a map file";
        return false;
    }
    if (!QmCipherFile::ReadLines(path, lines)) {
        error = "cannot read the map file \"" + path + "\"";
        return false;
    }
    if (lines.empty()) {
        error = "the map file \"" + path + "\" is empty";
        return false;
    }
    const QmMapContents contents = QmMapFile::Parse(lines);
    world.ClearMap();
    world.SetBlockSize(contents.blockSize == QmCoreEnvironmentManager::kSmallBlockSize
                           ? QmCoreEnvironmentManager::kSmallBlockSize
                           : QmCoreEnvironmentManager::kLargeBlockSize);
    world.blocks = contents.blocks;
    world.mapName = contents.nameRead && !contents.name.empty() ? contents.name : world.defaultMapName;
    world.mapUid = contents.uid;
    world.locked = contents.locked;
    world.editable = contents.editable;
    world.gatesOpen = false;
    bool startFound = false;
    for (const auto& [column, row] : contents.startCells) {
        if (column < world.mapSize && row < world.mapSize) {
            world.startX = static_cast<float>(column);
            world.startY = static_cast<float>(row);
            startFound = true;
        }
    }
    if (!startFound) {
        error = "the map \"" + path + "\" has no Start cell (255) in its " + std::to_string(world.mapSize) +
                " x " + std::to_string(world.mapSize) + " playing area";
        return false;
    }
    return true;
}

QmSimResult QmRaceSimulator::Run(QmCoreEnvironmentManager& world, const QmSimOptions& options,
                                 std::ostream* trace) {
    QmSimResult result;
    SeedRand(options.seed);
    const int64_t start = 1000;
    int64_t now = start;
    SetTimeSource([&now] { return now; });

    SimAudio audio(result.sounds);
    QmRaceHost host;
    QmRaceDrawer drawer;
    QmClientGameplayManager* racePointer = nullptr;
    QmRecordedControls controls(options.inputs, [&racePointer] { return racePointer->RaceTime(); });
    {
        QmClientGameplayManager race(world, audio, host, controls, drawer);
        racePointer = &race;
        race.SetReplay(options.ghost);
        race.StartRace(false, true);

        const double dtMs = static_cast<double>(options.dt) * 1000.0;
        const int64_t limitMs = static_cast<int64_t>(static_cast<double>(options.maxSeconds) * 1000.0);
        // The countdown, the race up to its limit and a few frames to spare.
        const int64_t maxFrames =
            static_cast<int64_t>(static_cast<double>(race.CountdownLength() + limitMs) / dtMs) + 10;
        result.outcome = QmSimResult::Timeout;
        for (int64_t frame = 1; frame <= maxFrames; ++frame) {
            now = start + std::llround(static_cast<double>(frame) * dtMs);
            race.Update(options.dt);
            result.frames = static_cast<int>(frame);
            const ArPlayer& racer = *race.Racer();
            if (result.ghostFinishMs < 0 && race.Ghost()->finished) {
                result.ghostFinishMs = race.RaceTime();
            }
            if (trace != nullptr && options.trace) {
                char line[160];
                std::snprintf(line, sizeof(line), "%lld x=%.3f y=%.3f verticalSpeed=%.3f flags=",
                              static_cast<long long>(race.RaceTime()), static_cast<double>(racer.x),
                              static_cast<double>(racer.y), static_cast<double>(racer.verticalSpeed));
                *trace << line << Flags(racer, controls) << "\n";
            }
            if (race.FinishHandled()) {
                result.outcome = QmSimResult::Finished;
                result.timeMs = race.finalTime;
                break;
            }
            if (!racer.active && !race.finishReached) {
                result.outcome = QmSimResult::Dead;
                result.timeMs = race.RaceTime();
                break;
            }
            if (race.RaceTime() > limitMs) {
                break;
            }
        }
        if (result.outcome == QmSimResult::Timeout) {
            result.timeMs = race.RaceTime();
        }
        result.recording = race.Recording();
    }
    SetTimeSource(nullptr);
    return result;
}

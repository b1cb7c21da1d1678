#pragma once
// A whole race without window or sound: loads a map file, runs the countdown and the race at a
// fixed frame time on a driven clock, steers the racer with recorded inputs and reports how the
// run ended. The quillmaze-sim tool and the gameplay tests run races through it.
#include "Gameplay/QmRecording.h"

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

class QmCoreEnvironmentManager;

struct QmSimOptions {
    std::string mapPath;
    float dt = 1.0f / 60.0f;
    QmRecording inputs;
    // The race gives up when its time passes this.
    float maxSeconds = 120.0f;
    bool trace = false;
    uint32_t seed = 1;
    // A best run for the ghost to replay (empty: no ghost).
    QmRecording ghost;
};

struct QmSimResult {
    enum Outcome { Finished, Dead, Timeout };
    Outcome outcome = Timeout;
    // The race time at the end, milliseconds.
    int64_t timeMs = 0;
    int frames = 0;
    // The inputs the race recorded from the racer, as a score file would keep them.
    QmRecording recording;
    // The race time at which the ghost reached the finish, or -1.
    int64_t ghostFinishMs = -1;
    // Every sound played, in order.
    std::vector<std::string> sounds;

    static const char* OutcomeName(Outcome outcome);
};

class QmRaceSimulator {
public:
    // Parses the tool's command line (argv[0] is the program). Returns false with a message for
    // bad arguments; help is set for --help.
    static bool ParseArguments(int argc, const char* const* argv, QmSimOptions& options, bool& help,
                               std::string& error);
    static std::string Usage();
    // Loads a map file (enciphered or plain) into the world as the current map; false with a
    // message when it cannot be read or has no Start cell in its playing area.
    static bool LoadMap(QmCoreEnvironmentManager& world, const std::string& path, std::string& error);

    // Runs one race on the world's current map. The platform clock is driven for the run and given
    // back afterwards; Rand is seeded with options.seed. Trace lines go to trace when given.
    static QmSimResult Run(QmCoreEnvironmentManager& world, const QmSimOptions& options, std::ostream* trace);
};

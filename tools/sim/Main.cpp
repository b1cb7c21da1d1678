// quillmaze-sim MAPFILE [--dt SECONDS] [--inputs RECORDING_TEXT] [--max-seconds S] [--trace] [--seed N]
// Runs the real race code on a map file with no window and no sound and prints one final line,
// "finished MS", "dead MS" or "timeout MS". Exit code 0 for every outcome, 1 for a map file that
// cannot be raced, 2 for bad arguments.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmRaceSimulator.h"
#include "Platform/VeLog.h"

#include <cstdio>
#include <iostream>

int main(int argc, char** argv) {
    // Standard output carries the trace and the result alone.
    SetLogSink([](const std::string& text) { std::fputs(text.c_str(), stderr); });

    QmSimOptions options;
    bool help = false;
    std::string error;
    if (!QmRaceSimulator::ParseArguments(argc, argv, options, help, error)) {
        std::cerr << "quillmaze-sim: " << error << "\n" << QmRaceSimulator::Usage();
        return 2;
    }
    if (help) {
        std::cout << QmRaceSimulator::Usage();
        return 0;
    }
    QmCoreEnvironmentManager world;
    if (!QmRaceSimulator::LoadMap(world, options.mapPath, error)) {
        std::cerr << "quillmaze-sim: " << error << "\n";
        return 1;
    }
    const QmSimResult result = QmRaceSimulator::Run(world, options, &std::cout);
    std::cout << QmSimResult::OutcomeName(result.outcome) << " " << result.timeMs << "\n";
    return 0;
}

#pragma once
// Every shipped map with its recorded run, in tour order (the game seeds the same tours, in the
// same order, into its folder): what the long-race and soak benchmarks replay.
#include "Gameplay/QmRecording.h"

#include <string>
#include <vector>

struct ShippedRun {
    int tour = 0;
    int map = 0;
    std::string name; // "folder/map file"
    QmRecording recording;
};

std::vector<ShippedRun> ShippedRuns();

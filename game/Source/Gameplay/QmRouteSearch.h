#pragma once
// Finds a reference run for a map: a best-first search over the racer's inputs, held for a few
// frames at a time, through the race's own frame update. The race is snapshotted after every
// step (map cells, clocks, racer and cows) so each branch continues from where its parent
// stopped. The result is a recording text that the simulator plays to the finish at the same
// frame time.
#include "Environment/CoreEnvironmentManager/QmBlocks.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class QmCoreEnvironmentManager;

struct QmRouteOptions {
    float dt = 1.0f / 60.0f;
    // Frames an input is held before the next choice.
    int stepFrames = 4;
    // The search gives up after this many expanded states.
    size_t maxStates = 400000;
    // and when a branch's race time passes this.
    float maxSeconds = 90.0f;
    // Seeds the race's random stream (the cows' first directions), as the simulator does; false
    // leaves it as it is.
    uint32_t seed = 1;
    bool seedRandom = true;
    // When given, the search stops as soon as this turns true (and finds nothing).
    const std::atomic<bool>* cancel = nullptr;
    // How much the distance left weighs against the time spent: 1 finds the fastest run within the
    // step grid, larger values find a run sooner.
    double greed = 2.0;
    // Positions are told apart to this many pixels.
    float cellPixels = 2.0f;
    // With cows about, where the cows are matters: states are told apart by the moment too, to
    // this many frames.
    int cowFrames = 24;
    // When given, a run that reaches the finish is taken only when this accepts its recording text
    // (for example when it also finishes at other frame rates); the search goes on otherwise.
    std::function<bool(const std::string&)> accept;
    // The search gives up after refusing this many runs.
    size_t maxRefused = 40;
};

struct QmRouteResult {
    bool found = false;
    std::string run;
    int64_t timeMs = 0;
    size_t expanded = 0;
    // Runs that reached the finish but were not accepted.
    size_t refused = 0;
    // The racer's top-left corner in pixels at the start and after every step of the run found.
    std::vector<std::pair<float, float>> path;
};

class QmRouteSearch {
public:
    // The world's current map is raced from its Start cell (startX, startY). The race runs on a
    // clock of the calling thread's own, so a search may run on a worker while the frames go on.
    static QmRouteResult Find(QmCoreEnvironmentManager& world, const QmRouteOptions& options);

    // Races a known run (a recording text, as score files keep it) from the Start cell on the calling
    // thread's own clock: found when it reaches the finish, with the race time and the racer's path.
    static QmRouteResult Replay(QmCoreEnvironmentManager& world, const std::string& run,
                                const QmRouteOptions& options);

    // Moves each event of a run to the middle of the span of times at which finishes(run) still
    // holds, so that a run found at the edge of what works gains room on both sides. Events keep
    // their order; step is the shift tried, in milliseconds.
    static std::string Centre(const std::string& run, const std::function<bool(const std::string&)>& finishes,
                              int64_t step = 16, int64_t reach = 96);

    // The recording text of a list of per-frame inputs (bit 0 jump, bit 1 left, bit 2 right),
    // starting with the first frame of the countdown, at a fixed frame time.
    static std::string RecordingText(const std::string& frameInputs, float dt);
};

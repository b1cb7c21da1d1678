#include "Gameplay/QmRouteSearch.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "Gameplay/QmCoreGameplayManager.h"
#include "Gameplay/QmRaceAudio.h"
#include "Gameplay/QmRaceDrawer.h"
#include "Gameplay/QmRaceHost.h"
#include "Gameplay/QmRecordedControls.h"
#include "Gameplay/QmRecording.h"
#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"

#include <algorithm>
#include <cmath>
#include <deque>
#include <limits>
#include <memory>
#include <queue>
#include <unordered_map>
#include <vector>

namespace {
constexpr int64_t kClockStart = 1000;
constexpr int kJump = 1;
constexpr int kLeft = 2;
constexpr int kRight = 4;
// Inputs to try from each state; the first run starts with a single key, so that its first
// event (race time 0, during the countdown) is the only one at that time.
constexpr std::array<int, 6> kInputs = {kRight, kLeft, 0, kRight | kJump, kLeft | kJump, kJump};

struct EntityState {
    float x, y, width, height, gravity, verticalSpeed, speed, movedX, movedY, jumpImpulse;
    uint8_t active, inAir, falling, verticalContact, horizontalContact, finished, physical;
    int32_t groundBlock, direction;
};

EntityState Save(const ArEntity& e) {
    return EntityState{e.x,
                       e.y,
                       e.width,
                       e.height,
                       e.gravity,
                       e.verticalSpeed,
                       e.speed,
                       e.movedX,
                       e.movedY,
                       e.jumpImpulse,
                       e.active,
                       e.inAir,
                       e.falling,
                       e.verticalContact,
                       e.horizontalContact,
                       e.finished,
                       e.physical,
                       e.groundBlock,
                       e.direction};
}

void Load(ArEntity& e, const EntityState& s) {
    e.x = s.x;
    e.y = s.y;
    e.width = s.width;
    e.height = s.height;
    e.gravity = s.gravity;
    e.verticalSpeed = s.verticalSpeed;
    e.speed = s.speed;
    e.movedX = s.movedX;
    e.movedY = s.movedY;
    e.jumpImpulse = s.jumpImpulse;
    e.active = s.active;
    e.inAir = s.inAir;
    e.falling = s.falling;
    e.verticalContact = s.verticalContact;
    e.horizontalContact = s.horizontalContact;
    e.finished = s.finished;
    e.physical = s.physical;
    e.groundBlock = s.groundBlock;
    e.direction = s.direction;
}

struct EnemyState {
    EntityState entity;
    uint32_t touching; // bit i: touching enemy i (maps have far fewer than 32 cows)
};

struct Node {
    int parent;
    int frame;
    int input;
    int cells; // index into the pool of distinct grids
    bool gatesOpen;
    int64_t countdownStart, countdownAccum, lastCountdownTime, runStart, finalTime, runAccum;
    uint8_t countingDown, running, raceOver, finishReached, inputHeldLastFrame;
    bool flip, confusion;
    EntityState racer;
    std::vector<EnemyState> enemies;
};

struct GridHash {
    size_t operator()(const std::array<BlockId, 400>& cells) const {
        uint64_t h = 1469598103934665603ull;
        for (BlockId id : cells) {
            h = (h ^ static_cast<uint64_t>(static_cast<uint32_t>(id))) * 1099511628211ull;
        }
        return static_cast<size_t>(h);
    }
};

// Cells from which the Finish can be reached by steps through passable cells (gates count as
// open), counted in cells: the search's sense of how far a position is from the end.
std::vector<int> FinishDistances(QmCoreEnvironmentManager& world) {
    const int n = world.mapSize;
    std::vector<int> distance(static_cast<size_t>(n * n), std::numeric_limits<int>::max());
    std::deque<int> open;
    for (int x = 0; x < n; ++x) {
        for (int y = 0; y < n; ++y) {
            if (world.GetBlock(x, y) == Block::Finish) {
                distance[static_cast<size_t>(x * n + y)] = 0;
                open.push_back(x * n + y);
            }
        }
    }
    while (!open.empty()) {
        const int cell = open.front();
        open.pop_front();
        const int cx = cell / n;
        const int cy = cell % n;
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy) {
                const int x = cx + dx;
                const int y = cy + dy;
                if ((dx == 0 && dy == 0) || x < 0 || y < 0 || x >= n || y >= n) {
                    continue;
                }
                const BlockId id = world.GetBlock(x, y);
                if (QmBlocks::IsDefaultBlock(id)) {
                    continue;
                }
                const size_t index = static_cast<size_t>(x * n + y);
                if (distance[index] > distance[static_cast<size_t>(cell)] + 1) {
                    distance[index] = distance[static_cast<size_t>(cell)] + 1;
                    open.push_back(x * n + y);
                }
            }
        }
    }
    return distance;
}

// The input of every frame from the start to a node.
std::string FrameInputs(const std::vector<Node>& nodes, int last) {
    std::vector<int> path;
    for (int at = last; at > 0; at = nodes[static_cast<size_t>(at)].parent) {
        path.push_back(at);
    }
    std::reverse(path.begin(), path.end());
    std::string frames;
    for (int at : path) {
        const Node& node = nodes[static_cast<size_t>(at)];
        const int parentFrame = nodes[static_cast<size_t>(node.parent)].frame;
        frames.append(static_cast<size_t>(node.frame - parentFrame), static_cast<char>(node.input));
    }
    return frames;
}

struct StateKey {
    int32_t x, y, verticalSpeed, flags, cells, frame;
    bool operator==(const StateKey&) const = default;
};

struct StateKeyHash {
    size_t operator()(const StateKey& k) const {
        uint64_t h = 1469598103934665603ull;
        for (int32_t v : {k.x, k.y, k.verticalSpeed, k.flags, k.cells, k.frame}) {
            h = (h ^ static_cast<uint64_t>(static_cast<uint32_t>(v))) * 1099511628211ull;
        }
        return static_cast<size_t>(h);
    }
};

int64_t FrameClock(int frame, float dt) {
    return kClockStart + std::llround(static_cast<double>(frame) * static_cast<double>(dt) * 1000.0);
}
} // namespace

std::string QmRouteSearch::RecordingText(const std::string& frameInputs, float dt) {
    QmRecording recording;
    int previous = 0;
    const int64_t first = FrameClock(1, dt);
    for (size_t i = 0; i < frameInputs.size(); ++i) {
        const int frame = static_cast<int>(i) + 1;
        const int input = frameInputs[i];
        // Changes of one frame share its race time; the recording keeps one event per time, so the
        // second and third change go a millisecond or two earlier, still after the previous frame.
        int64_t time = frame == 1 ? 0 : FrameClock(frame, dt) - first;
        const auto change = [&](int bit, int pressed, int released) {
            if ((input & bit) != (previous & bit)) {
                recording.Add(time, (input & bit) ? pressed : released);
                --time;
            }
        };
        change(kJump, QmRecording::JumpPressed, QmRecording::JumpReleased);
        change(kLeft, QmRecording::LeftPressed, QmRecording::LeftReleased);
        change(kRight, QmRecording::RightPressed, QmRecording::RightReleased);
        previous = input;
    }
    return recording.ToText();
}

std::string QmRouteSearch::Centre(const std::string& run,
                                  const std::function<bool(const std::string&)>& finishes, int64_t step,
                                  int64_t reach) {
    QmRecording recording;
    recording.FromText(run);
    std::vector<std::pair<int64_t, int>> events(recording.Events().begin(), recording.Events().end());
    const auto text = [&events]() {
        QmRecording shifted;
        for (const auto& [time, type] : events) {
            shifted.Add(time, type);
        }
        return shifted.ToText();
    };
    for (int pass = 0; pass < 2; ++pass) {
        // The first event starts the race during the countdown and stays at time 0.
        for (size_t i = 1; i < events.size(); ++i) {
            const int64_t original = events[i].first;
            const int64_t low = events[i - 1].first + 1;
            const int64_t high = i + 1 < events.size() ? events[i + 1].first - 1 : original + reach;
            const auto works = [&](int64_t time) {
                events[i].first = time;
                return finishes(text());
            };
            int64_t earliest = original;
            while (earliest - step >= std::max(low, original - reach) && works(earliest - step)) {
                earliest -= step;
            }
            int64_t latest = original;
            while (latest + step <= std::min(high, original + reach) && works(latest + step)) {
                latest += step;
            }
            events[i].first = (earliest + latest) / 2;
            if (!works(events[i].first)) {
                events[i].first = original;
            }
        }
    }
    return text();
}

QmRouteResult QmRouteSearch::Find(QmCoreEnvironmentManager& world, const QmRouteOptions& options) {
    QmRouteResult result;
    int64_t now = kClockStart;
    SetThreadTimeSource([&now] { return now; });
    if (options.seedRandom) {
        SeedRand(VeRandomStream::Race, options.seed);
    }
    world.gatesOpen = false;

    QmRaceAudio audio;
    QmRaceHost host;
    auto race = std::make_unique<QmCoreGameplayManager>(world, audio, host);
    race->StartRace(false, true);
    ArPlayer& racer = *race->Racer();
    const size_t enemyCount = race->enemies.size();

    std::vector<std::array<BlockId, 400>> grids;
    std::unordered_map<std::array<BlockId, 400>, int, GridHash> gridIndex;
    const auto internGrid = [&]() {
        auto found = gridIndex.find(world.blocks);
        if (found != gridIndex.end()) {
            return found->second;
        }
        grids.push_back(world.blocks);
        const int index = static_cast<int>(grids.size()) - 1;
        gridIndex.emplace(world.blocks, index);
        return index;
    };

    const auto capture = [&](int parent, int frame, int input) {
        Node node;
        node.parent = parent;
        node.frame = frame;
        node.input = input;
        node.cells = internGrid();
        node.gatesOpen = world.gatesOpen;
        node.countdownStart = race->countdownStart;
        node.countdownAccum = race->countdownAccum;
        node.lastCountdownTime = race->lastCountdownTime;
        node.runStart = race->runStart;
        node.finalTime = race->finalTime;
        node.runAccum = race->runAccum;
        node.countingDown = race->countingDown;
        node.running = race->running;
        node.raceOver = race->raceOver;
        node.finishReached = race->finishReached;
        node.inputHeldLastFrame = race->inputHeldLastFrame;
        node.flip = race->flip;
        node.confusion = race->confusion;
        node.racer = Save(racer);
        for (size_t i = 0; i < enemyCount; ++i) {
            const ArEnemy& enemy = *race->enemies[i];
            EnemyState state{Save(enemy), 0};
            for (const ArEnemy* other : enemy.touching) {
                for (size_t j = 0; j < enemyCount; ++j) {
                    if (race->enemies[j].get() == other) {
                        state.touching |= 1u << j;
                    }
                }
            }
            node.enemies.push_back(state);
        }
        return node;
    };
    const auto restore = [&](const Node& node) {
        world.blocks = grids[static_cast<size_t>(node.cells)];
        world.gatesOpen = node.gatesOpen;
        race->countdownStart = node.countdownStart;
        race->countdownAccum = node.countdownAccum;
        race->lastCountdownTime = node.lastCountdownTime;
        race->runStart = node.runStart;
        race->finalTime = node.finalTime;
        race->runAccum = node.runAccum;
        race->countingDown = node.countingDown;
        race->running = node.running;
        race->raceOver = node.raceOver;
        race->finishReached = node.finishReached;
        race->inputHeldLastFrame = node.inputHeldLastFrame;
        race->flip = node.flip;
        race->confusion = node.confusion;
        Load(racer, node.racer);
        racer.ClearInput();
        for (size_t i = 0; i < enemyCount; ++i) {
            ArEnemy& enemy = *race->enemies[i];
            Load(enemy, node.enemies[i].entity);
            enemy.touching.clear();
            for (size_t j = 0; j < enemyCount; ++j) {
                if (node.enemies[i].touching & (1u << j)) {
                    enemy.touching.push_back(race->enemies[j].get());
                }
            }
        }
    };

    const std::vector<int> distances = FinishDistances(world);
    const int n = world.mapSize;
    const float cell = static_cast<float>(world.blockSize);
    const double framesPerCell = cell / (world.blockSize == 32 ? 150.0 : 300.0) / options.dt;
    const auto estimate = [&](const EntityState& r) {
        const int cx = std::clamp(static_cast<int>((r.x + cell * 0.5f) / cell), 0, n - 1);
        const int cy = std::clamp(static_cast<int>((r.y + cell * 0.5f) / cell), 0, n - 1);
        const int d = distances[static_cast<size_t>(cx * n + cy)];
        return d == std::numeric_limits<int>::max() ? 1.0e6 : d * framesPerCell;
    };

    std::vector<Node> nodes;
    nodes.push_back(capture(-1, 0, 0));
    using Entry = std::pair<double, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<Entry>> open;
    open.emplace(0.0, 0);
    std::unordered_map<StateKey, int, StateKeyHash> seen;
    const int maxFrame = static_cast<int>(options.maxSeconds / options.dt) + 1;
    int goal = -1;

    while (!open.empty() && goal < 0 && result.expanded < options.maxStates &&
           result.refused < options.maxRefused &&
           !(options.cancel != nullptr && options.cancel->load(std::memory_order_relaxed))) {
        const int index = open.top().second;
        open.pop();
        ++result.expanded;
        for (int input : kInputs) {
            const Node& parent = nodes[static_cast<size_t>(index)];
            if (parent.frame == 0 && (input == (kRight | kJump) || input == (kLeft | kJump) || input == 0)) {
                continue;
            }
            if (parent.frame + options.stepFrames > maxFrame) {
                continue;
            }
            restore(parent);
            const int startFrame = parent.frame;
            bool finished = false;
            bool dead = false;
            int frame = startFrame;
            for (int step = 0; step < options.stepFrames; ++step) {
                frame = startFrame + step + 1;
                now = FrameClock(frame, options.dt);
                racer.jumpHeld = (input & kJump) ? 1 : 0;
                racer.leftHeld = (input & kLeft) ? 1 : 0;
                racer.rightHeld = (input & kRight) ? 1 : 0;
                race->CoreUpdate(options.dt);
                if (race->finishReached) {
                    finished = true;
                    break;
                }
                if (!racer.active) {
                    dead = true;
                    break;
                }
            }
            if (dead) {
                continue;
            }
            Node child = capture(index, frame, input);
            if (finished) {
                nodes.push_back(std::move(child));
                const int candidate = static_cast<int>(nodes.size()) - 1;
                if (!options.accept) {
                    goal = candidate;
                    break;
                }
                // The check races on the shared clock; the search's own clock comes back after it.
                SetThreadTimeSource(nullptr);
                const bool accepted =
                    options.accept(RecordingText(FrameInputs(nodes, candidate), options.dt));
                SetThreadTimeSource([&now] { return now; });
                if (accepted) {
                    goal = candidate;
                    break;
                }
                ++result.refused;
                continue;
            }
            // States that look alike to the racer are explored once; with cows about, the moment
            // matters too.
            const StateKey key{static_cast<int32_t>(std::lround(child.racer.x / options.cellPixels)),
                               static_cast<int32_t>(std::lround(child.racer.y / options.cellPixels)),
                               static_cast<int32_t>(std::lround(child.racer.verticalSpeed / 25.0f)),
                               static_cast<int32_t>(child.racer.inAir | (child.racer.speed > 300.0f ? 2 : 0) |
                                                    (child.racer.jumpImpulse > 534.0f ? 4 : 0)),
                               child.cells,
                               enemyCount > 0 ? child.frame / std::max(1, options.cowFrames) : 0};
            if (!seen.emplace(key, static_cast<int>(nodes.size())).second) {
                continue;
            }
            const double priority = child.frame + options.greed * estimate(child.racer);
            nodes.push_back(std::move(child));
            open.emplace(priority, static_cast<int>(nodes.size()) - 1);
        }
    }
    race.reset();
    SetThreadTimeSource(nullptr);

    if (goal < 0) {
        return result;
    }
    const std::string frames = FrameInputs(nodes, goal);
    result.found = true;
    result.run = RecordingText(frames, options.dt);
    std::vector<int> chain;
    for (int at = goal; at >= 0; at = nodes[static_cast<size_t>(at)].parent) {
        chain.push_back(at);
    }
    for (auto at = chain.rbegin(); at != chain.rend(); ++at) {
        const EntityState& racerState = nodes[static_cast<size_t>(*at)].racer;
        result.path.emplace_back(racerState.x, racerState.y);
    }
    const int64_t first = FrameClock(1, options.dt);
    result.timeMs = FrameClock(nodes[static_cast<size_t>(goal)].frame, options.dt) - first;
    return result;
}

QmRouteResult QmRouteSearch::Replay(QmCoreEnvironmentManager& world, const std::string& run,
                                    const QmRouteOptions& options) {
    QmRouteResult result;
    QmRecording inputs;
    std::string reason;
    if (!inputs.ParseStrict(run, reason)) {
        return result;
    }
    int64_t now = kClockStart;
    SetThreadTimeSource([&now] { return now; });
    if (options.seedRandom) {
        SeedRand(VeRandomStream::Race, options.seed);
    }
    world.gatesOpen = false;
    QmRaceAudio audio;
    QmRaceHost host;
    QmRaceDrawer drawer;
    QmClientGameplayManager* racePointer = nullptr;
    QmRecordedControls controls(inputs, [&racePointer] { return racePointer->RaceTime(); });
    {
        QmClientGameplayManager race(world, audio, host, controls, drawer);
        racePointer = &race;
        race.StartRace(false, true);
        const double dtMs = static_cast<double>(options.dt) * 1000.0;
        const int64_t limitMs = static_cast<int64_t>(static_cast<double>(options.maxSeconds) * 1000.0);
        const int64_t maxFrames =
            static_cast<int64_t>(static_cast<double>(race.CountdownLength() + limitMs) / dtMs) + 10;
        for (int64_t frame = 1; frame <= maxFrames; ++frame) {
            if (options.cancel != nullptr && options.cancel->load(std::memory_order_relaxed)) {
                break;
            }
            now = kClockStart + std::llround(static_cast<double>(frame) * dtMs);
            race.Update(options.dt);
            const ArPlayer& racer = *race.Racer();
            if (frame % options.stepFrames == 1 || race.FinishHandled()) {
                result.path.emplace_back(racer.x, racer.y);
            }
            if (race.FinishHandled()) {
                result.found = true;
                result.timeMs = race.finalTime;
                result.run = run;
                break;
            }
            if ((!racer.active && !race.finishReached) || race.RaceTime() > limitMs) {
                break;
            }
        }
    }
    SetThreadTimeSource(nullptr);
    if (!result.found) {
        result.path.clear();
    }
    return result;
}

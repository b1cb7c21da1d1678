#include "Environment/CoreEnvironmentManager/QmLevelGenerator.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Platform/VeLog.h"
#include "Platform/VeRandom.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {
// The walk reaches its target in fewer than 2 n steps; this bound only guards against a broken
// map size.
constexpr int kMaxPasses = 1000;
} // namespace

QmLevelGenerator::QmLevelGenerator(QmCoreEnvironmentManager& world) : world(world) {}

bool QmLevelGenerator::FinishFits(int sx, int sy, int fx, int fy) {
    const int dx = fx - sx;
    const int dy = fy - sy;
    const int adx = std::abs(dx);
    const int ady = std::abs(dy);
    const int d2 = dx * dx + dy * dy;
    if (d2 == 0 || d2 < 25) {
        return false;
    }
    if (dx == 0 ? dy <= 0 : ady > adx) {
        return false;
    }
    if (adx == ady) {
        return false;
    }
    return d2 <= 36 || adx - ady >= 4;
}

void QmLevelGenerator::Generate() {
    Log("Level Generation Started.\n");
    world.ClearMap();
    n = world.mapSize;

    const int sx = Rand() % n;
    const int sy = Rand() % n;
    world.startX = static_cast<float>(sx);
    world.startY = static_cast<float>(sy);
    world.SetBlock(sx, sy, Block::Start);

    int fx = 0;
    int fy = 0;
    do {
        fx = Rand() % n;
        fy = Rand() % (n - 3) + 1;
    } while (!FinishFits(sx, sy, fx, fy));
    finish = {static_cast<float>(fx), static_cast<float>(fy)};
    target = {finish.x, finish.y + 1};
    Log("- Start placed at %f %f and Finish placed at %f %f.\n", static_cast<double>(sx),
        static_cast<double>(sy), static_cast<double>(fx), static_cast<double>(fy));
    world.SetBlock(fx, fy, Block::Finish);

    const Cell start{static_cast<float>(sx), static_cast<float>(sy)};
    Cell walker{start.x, start.y + 1};
    Cell next = walker;
    Cell previous{-1, -1};
    bool first = true;
    for (int pass = 0; pass < kMaxPasses; ++pass) {
        const bool last = walker == target;
        const bool wanted = first || WantsBlock(next, previous);
        const bool excluded = walker == start || walker == finish || walker.y >= static_cast<float>(n);
        if (!excluded) {
            const Cell cell{std::clamp(walker.x, 0.0f, static_cast<float>(n - 1)),
                            std::clamp(walker.y, 0.0f, static_cast<float>(n - 1))};
            if (wanted) {
                world.SetBlock(static_cast<int>(cell.x), static_cast<int>(cell.y), world.RandomColourBlock());
                previous = cell;
            }
        }
        if (last) {
            break;
        }
        if (first) {
            walker = Step(walker);
            next = Step(walker);
            first = false;
        } else {
            walker = next;
            next = Step(next);
        }
    }
    Log("Level Generation Completed.\n");
}

bool QmLevelGenerator::WantsBlock(Cell next, Cell previous) const {
    if (previous == Cell{-1, -1}) {
        return true;
    }
    const float dxn = std::fabs(next.x - previous.x);
    const float dyn = next.y - previous.y;
    const bool high = next.y > 1 && previous.y > 1;
    const float reach = high ? 4.0f : 2.0f;
    const float rise = high ? 2.0f : 1.0f;
    if (dyn >= 0) {
        if (std::floor(std::fabs(dyn) * 0.25f) + reach >= dxn) {
            return !(Rand() % 100 > 50); // still reachable: leave a gap 49 times in 100
        }
        return true;
    }
    if (dxn > 2) {
        return true;
    }
    if (std::fabs(dyn) < rise) {
        return !(Rand() % 100 > 25);
    }
    return true;
}

QmLevelGenerator::Cell QmLevelGenerator::Step(Cell from) const {
    const float ex = finish.x - from.x;
    const float ey = target.y - from.y;
    Cell to = from;
    if (ex > 0) {
        to.x += 1;
    } else if (ex < 0) {
        to.x -= 1;
    }
    if (ey < 0) {
        if (std::fabs(ex) / std::fabs(ey) > 1.0f) {
            if (Rand() % 2 == 1) {
                to.y -= 1;
            }
        } else {
            to.y -= 1;
        }
    } else if (ey > 0) {
        if (ex == 0) {
            to.y = target.y;
        } else {
            const int r = Rand() % static_cast<int>(ey);
            const int k = r > 2 ? Rand() % (r / 2) : 0;
            to.y = std::min(from.y + 1 + static_cast<float>(r - k), target.y);
        }
    }
    return to;
}

#pragma once
// The random level: a Start, a Finish mostly sideways of it and at least five cells away, and a
// walk from the cell under the Start to the cell under the Finish that drops randomly coloured
// floor blocks the racer can reach: it climbs at most one row per step and leaves gaps only where
// the next block can still be jumped to. Everything random comes from Rand(), so the same seed
// gives the same map; cells are written through the manager's virtual operations.
class QmCoreEnvironmentManager;

class QmLevelGenerator {
public:
    struct Cell {
        float x;
        float y;
        bool operator==(const Cell& other) const = default;
    };

    explicit QmLevelGenerator(QmCoreEnvironmentManager& world);

    void Generate();

    // Whether a Finish at (fx, fy) is acceptable for a Start at (sx, sy).
    static bool FinishFits(int sx, int sy, int fx, int fy);

private:
    // One step of the walker towards the target cell under the Finish.
    Cell Step(Cell from) const;
    // Whether the walker's cell gets a block, given the next cell and the last block placed.
    bool WantsBlock(Cell next, Cell previous) const;

    QmCoreEnvironmentManager& world;
    int n = 10;
    Cell finish{0, 0};
    Cell target{0, 0};
};

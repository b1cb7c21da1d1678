#pragma once
// The menu's backdrop: the tiled background and, while the option is on, coloured blocks that fall
// into twenty columns of twenty cells and stack up; once every column is full (or on F12) the
// lowest block of each column drops out at random and everything falls away, then it starts over.
// Step is given the frame time and whether F12 was pressed, so tests drive it without a screen;
// the random numbers come from the game's Rand.
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

class VeImage;
class VeSurface;

class QmMenuBackground {
public:
    static constexpr int kColumns = 20;
    static constexpr int kRows = 20;
    static constexpr int kCell = 32;

    struct Block {
        float x = 0.0f;
        float y = 0.0f;
        int32_t colour = 0;
    };

    QmMenuBackground();
    ~QmMenuBackground();
    QmMenuBackground(const QmMenuBackground&) = delete;
    QmMenuBackground& operator=(const QmMenuBackground&) = delete;

    // Loads the tile and block art and makes the surfaces (only with a screen).
    void Prepare(int32_t width, int32_t height);
    // The tiled background copied onto the target.
    void DrawStatic(VeSurface& target) const;
    // One frame of the animation; draws onto target when given.
    void Step(float frameTime, bool f12, VeSurface* target);
    // Empties the stack and the falling blocks.
    void Reset();

    // How many in ten columns release their lowest block per frame of this length while clearing.
    static int ReleaseChance(float frameTime);
    bool Clearing() const { return clearing; }
    size_t FallingCount() const { return falling.size(); }
    bool Occupied(int column, int row) const { return grid[Index(column, row)] != nullptr; }
    int LandedCount() const;
    // Fills every cell (tests and the first frame of a full stack).
    void FillAll();

private:
    static size_t Index(int column, int row) { return static_cast<size_t>(row * kColumns + column); }
    void DrawBlock(VeSurface& target, const Block& block) const;
    void EraseFromLayer(const Block& block);

    std::unique_ptr<VeSurface> background;
    std::unique_ptr<VeSurface> blockLayer;
    std::array<std::unique_ptr<VeImage>, 5> blockArt;
    std::vector<std::unique_ptr<Block>> falling;
    std::array<std::unique_ptr<Block>, kColumns * kRows> grid;
    float spawnTimer = 0.0f;
    bool clearing = false;
};

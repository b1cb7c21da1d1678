#pragma once
// The per-cell model matrices of the 3D view: a 22 x 22 table (the 20 x 20 grid plus a ring of one
// cell for the border) with one valid byte per cell, indexed by (column + 1, row + 1). A cell's
// matrix is computed once and reused until the cell changes; on a 20-block map the border ring
// (placed on the 10-block grid) uses index 21 for its column or row 10, clear of the map's cells.
#include <glm/mat4x4.hpp>

#include <array>
#include <cstdint>

class QmCellCache {
public:
    static constexpr int kSide = 22;
    static constexpr int kCells = kSide * kSide;

    // The table index of a cube at (column, row) placed on a grid of placementSize cells while the
    // map has mapSize cells a side; -1 when it lies outside the table.
    static int Index(int column, int row, int placementSize, int mapSize);

    // The stored matrix, when the index is valid.
    bool Lookup(int index, glm::mat4& model) const;
    void Store(int index, const glm::mat4& model);
    // Marks map cell (x, y) stale.
    void Invalidate(int x, int y);
    void InvalidateAll();
    bool IsValid(int index) const {
        return index >= 0 && index < kCells && valid[static_cast<size_t>(index)] != 0;
    }
    bool IsCellValid(int x, int y) const { return IsValid((x + 1) * kSide + (y + 1)); }

private:
    std::array<glm::mat4, kCells> matrices{};
    std::array<uint8_t, kCells> valid{};
};

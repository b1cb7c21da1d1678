#pragma once
// The forest decorations: plants, mushrooms, rocks, wood and signs that stand in front of the map
// without blocking the racer. One sheet per size, eight decorations across and three rows down,
// read in order (rows top to bottom, each left to right).
#include "ArtImage.h"
#include "AssetSet.h"

class DecorationArt {
public:
    static constexpr int Columns = 8;
    static constexpr int Rows = 3;
    static void Paint(AssetSet& set);
    static ArtImage Sheet(int size);
    // Decoration number index (0 to Columns * Rows - 1) at the given size.
    static ArtImage Decoration(int index, int size);
};

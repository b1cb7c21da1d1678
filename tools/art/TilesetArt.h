#pragma once
// The forest tileset: one row of square tiles per block kind, rows top to bottom. The first tile
// of a row is the block as the flat view shows it and the front face of its cube; the six tiles
// of a row are the cube's faces in the order front, back, left, right, bottom, top.
#include "ArtImage.h"
#include "AssetSet.h"

class TilesetArt {
public:
    static constexpr int Rows = 12;
    static constexpr int FacesPerRow = 6;
    static void Paint(AssetSet& set);
    // The sheet for one tile size: FacesPerRow tiles across, Rows tiles down.
    static ArtImage Sheet(int size);

private:
    static ArtImage Tile(int row, int face, int size);
};

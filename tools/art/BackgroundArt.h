#pragma once
// The backgrounds behind the map and the menus: calm, pale, low-contrast tiles that repeat without
// a visible seam, one per block size (16, 32 and 64 pixels).
#include "ArtImage.h"
#include "AssetSet.h"

class BackgroundArt {
public:
    static void Paint(AssetSet& set);
    static ArtImage Background(int size);
};

#pragma once
// The cow, the race's enemy, seen from the front so it reads the same walking either way: white
// with black patches, horns, ears, a pink snout and a bell on a red collar. 16, 32 and 64 pixels.
#include "ArtImage.h"
#include "AssetSet.h"

class CowArt {
public:
    static void Paint(AssetSet& set);
    static ArtImage Cow(int size);

private:
    static ArtImage Cow16();
};

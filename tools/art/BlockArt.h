#pragma once
// The map's single-image blocks: Blank, the five coloured blocks, the border ring, the editor
// cursor, the red gate, the finish (with its 3D face) and the fire, each at 16, 32 and 64 pixels.
#include "ArtImage.h"
#include "AssetSet.h"

class BlockArt {
public:
    static void Paint(AssetSet& set);
    // A solid bevelled block of the given base colour (one of the block ramps' base tones).
    static ArtImage SolidBlock(int size, uint32_t base);

private:
    static ArtImage Blank(int size);
    static ArtImage Border(int size);
    static ArtImage EditorCursor(int size, bool flash);
    static ArtImage RedGate(int size);
    static ArtImage Finish(int size);
    static ArtImage Finish3D();
    static ArtImage Fire(int size);
};

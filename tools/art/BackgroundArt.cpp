#include "BackgroundArt.h"

#include "ArtPalette.h"

#include <string>

using P = ArtPalette;

ArtImage BackgroundArt::Background(int size) {
    // A pale sky tone with a quiet, even lattice of small marks in the darker tone, staggered so no
    // lines or blobs stand out. The lattice spacing divides every tile size, so the tiles join
    // without seams and the pattern runs on evenly across the whole screen.
    ArtImage image(size, size, P::A1);
    const int spacing = 8;
    for (int y = 0; y < size; y += spacing) {
        for (int x = 0; x < size; x += spacing) {
            int cx = x + ((y / spacing) % 2) * spacing / 2;
            int cy = y;
            if (size >= 64) {
                // Small diamonds with a lit centre.
                image.Set(cx % size, (cy + 1) % size, P::A0);
                image.Set((cx + 1) % size, cy % size, P::A0);
                image.Set((cx + 2) % size, (cy + 1) % size, P::A0);
                image.Set((cx + 1) % size, (cy + 2) % size, P::A0);
            } else if (size >= 32) {
                image.Set(cx % size, cy % size, P::A0);
                image.Set((cx + 1) % size, (cy + 1) % size, P::A0);
            } else {
                image.Set(cx % size, cy % size, P::A0);
            }
        }
    }
    // A faint diagonal grain between the marks.
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            if ((x + y) % 16 == 12 && (x / 2 + y / 2) % 2 == 0 && image.Get(x, y) == P::A1) {
                image.Set(x, y, P::A0);
            }
        }
    }
    return image;
}

void BackgroundArt::Paint(AssetSet& set) {
    for (int size : {16, 32, 64}) {
        set.Add(AssetSet::Sized("Assets/Background", size), Background(size), "Backgrounds");
    }
    // The backgrounds as the map shows them, tiled, for the contact sheet.
    for (int size : {16, 32, 64}) {
        ArtImage tiled(256, 192);
        ArtImage tile = Background(size);
        for (int y = 0; y < 192; y += size) {
            for (int x = 0; x < 256; x += size) {
                tiled.BlitOpaque(tile, x, y);
            }
        }
        set.AddPreview(AssetSet::Name({"Tiled background ", std::to_string(size)}), tiled, "Backgrounds");
    }
}

#pragma once
// The pickups, each saying what it does: a spring with an up arrow (Jump Impulse), an arrow with
// speed lines (Speed Up), turning arrows around an eye (Flip Vision), the red key (Red Gate Key)
// and a disco ball (Disco Confusion), at 16, 32 and 64 pixels.
#include "ArtImage.h"
#include "AssetSet.h"

class PickupArt {
public:
    static void Paint(AssetSet& set);
    static ArtImage SuperJump(int size);
    static ArtImage SpeedUp(int size);
    static ArtImage FlipScreen(int size);
    static ArtImage RedGateKey(int size);
    static ArtImage Disco(int size);
};

#pragma once
// Sample scenes for the contact sheet: small maps drawn the way the flat view draws them
// (background, blocks, decorations, pickups, the racer and a cow), to judge whether all the images
// belong to one game. Nothing here is written as a game file.
#include "AssetSet.h"

class ScenePreview {
public:
    static void Paint(AssetSet& set);
};

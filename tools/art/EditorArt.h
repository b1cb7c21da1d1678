#pragma once
// The map editor's images (Assets/EditorGUI/): the toolbar buttons (32 x 32, each with a hover
// version named <name>Hover.png), the map status marks (16 x 16) and the command menu's pictures
// (Assets/EditorGUI/DisplayControls/, 24 x 24).
#include "ArtImage.h"
#include "AssetSet.h"

#include <string>

class EditorArt {
public:
    static void Paint(AssetSet& set);
    // The picture of a command drawn at size pixels (24 for the menu, 16 for the status marks).
    static ArtImage Glyph(const std::string& name, int size);
    static ArtImage Button(const std::string& name, bool hover);
};

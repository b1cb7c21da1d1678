#pragma once
// Images of the menus and the head-up display: the logo, the window icon, the four badges, the
// language flags, the race's head-up panel and the marks of the tour lists.
#include "ArtImage.h"
#include "AssetSet.h"

class MenuArt {
public:
    static void Paint(AssetSet& set);
    // The logo: the game's name built from small blocks in the five block colours.
    static ArtImage Logo();
    static ArtImage Icon();
    // kind: 0 gold, 1 silver, 2 bronze, 3 the plain ribbon badge.
    static ArtImage Badge(int kind);
    // language: 0 Dutch, 1 English, 2 French, 3 Norwegian.
    static ArtImage Flag(int language);
    static ArtImage Panel();
    static ArtImage LockMark();
    static ArtImage OfficialMark();
};

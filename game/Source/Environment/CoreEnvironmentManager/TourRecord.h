#pragma once
// One tour's settings, as kept in its tour.dat. A new record is an unofficial, unlocked, editable
// tour that collects every map file found in its folder.
#include <string>

struct TourRecord {
    bool official = false;     // shipped: never moved in the list; an empty name stays empty
    std::string name;          // display name; the folder name is derived from it
    bool locked = false;       // cannot be played yet
    bool editable = true;      // its maps may be reordered
    bool collectsFiles = true; // every ".map" file in the folder joins the tour
    std::string uid;           // random identity written on the "t" line of each of its maps
};

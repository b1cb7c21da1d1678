#pragma once
// A first start: the world's scan lists the tour folders beside the program but copies nothing
// from them, so a game folder without a tour list would start with empty tours. Before the world
// is made, the shipped tours (the "Maps" folder beside the program: tour.dat, maps and their score
// files) are copied whole into such a game folder and listed in its Maps/tours.dat in the shipped
// order, as the install step does. A game folder that has a tour list is never touched.
#include <string>
#include <vector>

class QmTourSeed {
public:
    // True when the game folder has a tour list afterwards (or nothing was shipped to seed it
    // with); false with the reason when copying failed. copied names the tour folders added.
    static bool SeedWhenEmpty(const std::string& shippedMaps, const std::string& gameFolder,
                              std::vector<std::string>& copied, std::string& error);
};

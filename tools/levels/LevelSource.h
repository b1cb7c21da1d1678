#pragma once
// The readable sources of the shipped tours: one ".tour" text file per tour under
// tools/levels/tours/, read in file name order. A source holds the tour's settings and its maps,
// each map drawn as rows of characters, one character per cell:
//
//   # a comment                     (lines starting with '#' are ignored, blank lines too)
//   tour <name>                     the tour's display name
//   map <name>                      starts a map (names are at most 15 bytes)
//   size 10|20                      10 x 10 cells of 64 pixels or 20 x 20 cells of 32 pixels
//   legend <c>=<id> ...             extra or changed characters for this map only
//   run <recording text>            the reference run that finishes the map ("time:type;...")
//   grid                            followed by exactly size rows of size characters
//
// The legend every map starts with (see LevelSource::DefaultLegend):
//   .  Blank       S Start   F Finish   * Fire   C Cow (Enemy)   J Jump Impulse   P Speed Up
//   V  Flip Vision K Red Gate Key       G Red Gate   D Disco Confusion
//   o b g y r   the coloured blocks Orange, Blue, Green, Yellow, Red (1 to 5)
//   # : m B q w T L X U & I   the forest tileset, ids 6 to 17 in order (grass on earth, earth,
//               mossy stone bricks, stone bricks, cobblestones, wooden planks, tree trunk,
//               leaves, crate, mushroom cap, grass on stone, birch trunk)
//   , ' f h d n u z a i k l p s _ j ) ( ^ ! + v t ~   the decorations, ids 150 to 173 in order
#include "Environment/CoreEnvironmentManager/QmBlocks.h"

#include <array>
#include <map>
#include <string>
#include <vector>

struct LevelMap {
    std::string name;
    int size = 10;
    std::map<char, BlockId> legend; // this map's additions to the default legend
    std::string run;
    std::vector<std::string> rows;
    int line = 0; // where the map starts in its source, for messages
};

struct LevelTour {
    std::string name;
    std::vector<LevelMap> maps;
    std::string sourcePath;
};

class LevelSource {
public:
    static const std::map<char, BlockId>& DefaultLegend();

    // Reads one tour source. False with a message naming the line when it is malformed.
    static bool ParseTour(const std::string& text, LevelTour& tour, std::string& error);
    static bool ReadTour(const std::string& path, LevelTour& tour, std::string& error);
    // Every "*.tour" file of a folder, in file name order.
    static bool ReadTours(const std::string& folder, std::vector<LevelTour>& tours, std::string& error);

    // The cells of a map, x-major over the full 20 x 20 grid (cells outside a 10 x 10 map stay
    // Blank). False when a character has no meaning.
    static bool Cells(const LevelMap& map, std::array<BlockId, 400>& cells, std::string& error);

    // Replaces (or adds) the run line of the named map in a tour source text.
    static bool SetRun(std::string& text, const std::string& mapName, const std::string& run,
                       std::string& error);
};

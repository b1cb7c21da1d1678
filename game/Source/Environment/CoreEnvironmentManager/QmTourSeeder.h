#pragma once
// The shipped tours in the player's game folder. The game's scan only lists the tour folders
// beside the program and copies nothing, so the install step (quillmaze-seed, on every make run)
// and the game's first start in a folder without a tour list put them there.
//
// For every shipped tour (in the order of the shipped Maps/tours.dat):
// - a tour the player does not have (no tour of the same uid anywhere in the game folder's tour
//   list or Maps folder) is copied whole: tour.dat, its maps and their score files;
// - a tour the player has keeps everything the player made of it (unlocked maps, times, ghosts,
//   its name); only map files it lists that are missing are put back, and maps that a newer
//   shipped tour adds are copied and appended to its list, locked.
// No existing file is ever replaced. The game folder's tours.dat then lists the shipped tours in
// their shipped order ahead of any other tour; the player's own tours keep their order after them.
#include <string>
#include <vector>

struct QmSeedReport {
    std::vector<std::string> copiedTours; // folder names
    std::vector<std::string> copiedFiles; // "Folder/File" of files added to tours the player had
    bool tourListWritten = false;
};

class QmTourSeeder {
public:
    // shippedMaps: the "Maps" folder beside the program; gameFolder: the player's game folder
    // (created when missing). False with a message when the shipped tours cannot be read or the
    // game folder cannot be written.
    static bool Seed(const std::string& shippedMaps, const std::string& gameFolder, QmSeedReport& report,
                     std::string& error);
};

#pragma once
// Turns the tour sources into the game's own files, through the world model's writers:
//   Maps/tours.dat                       the official tours in source order
//   Maps/<Tour>/tour.dat                 official, read-only, only its own maps; all but the first
//                                        tour locked
//   Maps/<Tour>/<Map>.map                read-only; all but the first map of a tour locked
//   Maps/<Tour>/<Map>.dat                no times yet, the reference run as the first ghost
// Folder and file names are the CamelCase forms the game's scan gives them, so a scan renames
// nothing. Identities are derived from the content (a changed map gets a new uid, so old times do
// not carry over to it), and the cipher's filler bytes are seeded per file: the same sources give
// the same bytes.
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "LevelSource.h"

#include <string>
#include <vector>

class QmCoreEnvironmentManager;

class LevelBuilder {
public:
    // A decimal identity derived from text (the shape of the game's own random uids).
    static std::string Uid(const std::string& text);
    static std::string TourUid(const LevelTour& tour);
    static std::string TourFolder(const LevelTour& tour);
    static std::string MapFile(const LevelMap& map);

    // The map record of map m of a tour that is tour t of the list; false when the map is not
    // raceable (no or several Start cells in the playing area, no Finish, unknown characters).
    static bool Contents(const LevelTour& tour, size_t m, QmMapContents& contents, std::string& error);
    // The map as the current map of a world, ready to race (Start noted).
    static bool LoadIntoWorld(const LevelTour& tour, size_t m, QmCoreEnvironmentManager& world,
                              std::string& error);

    // The bytes of a score file with no times and the run as its recording.
    static std::string ScoreFileBytes(const std::string& mapUid, const std::string& run);

    // Writes every tour into mapsFolder (created if needed), removing tour folders and files there
    // that the sources no longer name. Maps without a run get no score file; they are listed in
    // missingRuns.
    static bool Write(const std::vector<LevelTour>& tours, const std::string& mapsFolder,
                      std::vector<std::string>& missingRuns, std::string& error);
};

#pragma once
// Test support for the tours shipped beside the program (or any tour folder laid out like them),
// read as the game reads them: the tour list, a tour's record and map files, and every shipped map
// with the best run its score file keeps.
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Gameplay/QmHighscores.h"
#include "Platform/VeFiles.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace shipped_tours {

inline const std::string kShipped = std::string(QM_SOURCE_DIR) + "/Maps";

// The folders a tours.dat lists.
inline std::vector<std::string> ReadTourList(const std::string& path = kShipped + "/tours.dat") {
    std::vector<std::string> lines;
    QmCipherFile::ReadLines(path, lines);
    return QmTourFile::ParseTourList(lines);
}

struct Tour {
    TourRecord record;
    std::vector<std::string> levels;
};

inline Tour ReadTour(const std::string& folder) {
    Tour tour;
    std::vector<std::string> lines;
    QmCipherFile::ReadLines(folder + "/tour.dat", lines);
    QmTourFile::ParseTour(lines, tour.record, tour.levels);
    return tour;
}

// Every file under a folder with its bytes.
inline std::map<std::string, std::string> Snapshot(const std::string& root) {
    std::map<std::string, std::string> files;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root, ignored)) {
        if (entry.is_regular_file()) {
            std::string bytes;
            ReadFileBytes(entry.path().string(), bytes);
            files[std::filesystem::relative(entry.path(), root).string()] = bytes;
        }
    }
    return files;
}

struct ShippedMap {
    size_t tour = 0;  // its tour's place in the list
    size_t level = 0; // its place in the tour
    std::string file;
    std::string path;
    QmMapContents contents;
    std::string bestRun;     // the recording its score file keeps
    size_t scoreEntries = 0; // the names and times it lists
};

inline std::vector<ShippedMap> ShippedMaps() {
    std::vector<ShippedMap> maps;
    const std::vector<std::string> folders = ReadTourList();
    for (size_t t = 0; t < folders.size(); ++t) {
        const Tour tour = ReadTour(kShipped + "/" + folders[t]);
        for (size_t m = 0; m < tour.levels.size(); ++m) {
            ShippedMap map;
            map.tour = t;
            map.level = m;
            map.file = tour.levels[m];
            map.path = kShipped + "/" + folders[t] + "/" + map.file;
            std::vector<std::string> lines;
            QmCipherFile::ReadLines(map.path, lines);
            map.contents = QmMapFile::Parse(lines);
            QmCoreEnvironmentManager world;
            world.mapUid = map.contents.uid;
            QmHighscores scores(world);
            scores.LoadScores(QmFileNames::ScoreFileOf(map.path));
            map.bestRun = scores.StoredRecordingText();
            map.scoreEntries = scores.List().size();
            maps.push_back(map);
        }
    }
    return maps;
}

} // namespace shipped_tours

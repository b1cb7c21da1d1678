#include "LevelBuilder.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Platform/VeFiles.h"
#include "Platform/VeRandom.h"

#include <algorithm>
#include <set>

namespace {
uint64_t Fnv(const std::string& text) {
    uint64_t h = 1469598103934665603ull;
    for (unsigned char c : text) {
        h = (h ^ c) * 1099511628211ull;
    }
    return h;
}

std::string GridText(const LevelMap& map) {
    std::string text = std::to_string(map.size) + "\n";
    for (const auto& [c, id] : map.legend) {
        text += std::string(1, c) + "=" + std::to_string(id) + " ";
    }
    for (const std::string& row : map.rows) {
        text += row + "\n";
    }
    return text;
}

// Files written with the cipher get their filler bytes from a sequence seeded by their path.
void SeedFor(const std::string& relativePath) {
    SeedRand(static_cast<uint32_t>(Fnv(relativePath)));
}
} // namespace

std::string LevelBuilder::Uid(const std::string& text) {
    const uint64_t h = Fnv(text);
    const uint32_t first = static_cast<uint32_t>(h >> 33);
    const uint32_t second = static_cast<uint32_t>(h & 0x7FFFFFFFu);
    return std::to_string(first) + std::to_string(second);
}

std::string LevelBuilder::TourUid(const LevelTour& tour) {
    return Uid("tour:" + tour.name);
}

std::string LevelBuilder::TourFolder(const LevelTour& tour) {
    return QmFileNames::CamelCase(tour.name);
}

std::string LevelBuilder::MapFile(const LevelMap& map) {
    return QmFileNames::CamelCase(map.name) + ".map";
}

bool LevelBuilder::Contents(const LevelTour& tour, size_t m, QmMapContents& contents, std::string& error) {
    const LevelMap& map = tour.maps[m];
    contents = QmMapContents();
    if (!LevelSource::Cells(map, contents.blocks, error)) {
        return false;
    }
    int starts = 0;
    int finishes = 0;
    for (int x = 0; x < map.size; ++x) {
        for (int y = 0; y < map.size; ++y) {
            const BlockId id = contents.blocks[x * 20 + y];
            if (id == Block::Start) {
                ++starts;
                contents.startCells.emplace_back(x, y);
            }
            finishes += id == Block::Finish ? 1 : 0;
        }
    }
    if (starts != 1 || finishes == 0) {
        error = "map " + map.name + " needs exactly one Start and at least one Finish";
        return false;
    }
    contents.blockSize = map.size == 10 ? QmCoreEnvironmentManager::kLargeBlockSize
                                        : QmCoreEnvironmentManager::kSmallBlockSize;
    contents.nameRead = true;
    contents.name = map.name;
    contents.uid = Uid("map:" + map.name + "\n" + GridText(map));
    contents.locked = m > 0;
    contents.editable = false;
    contents.tourUidRead = true;
    contents.tourUid = TourUid(tour);
    return true;
}

bool LevelBuilder::LoadIntoWorld(const LevelTour& tour, size_t m, QmCoreEnvironmentManager& world,
                                 std::string& error) {
    QmMapContents contents;
    if (!Contents(tour, m, contents, error)) {
        return false;
    }
    world.ClearMap();
    world.SetBlockSize(contents.blockSize);
    world.blocks = contents.blocks;
    world.mapName = contents.name;
    world.mapUid = contents.uid;
    world.locked = contents.locked;
    world.editable = contents.editable;
    world.gatesOpen = false;
    world.startX = static_cast<float>(contents.startCells.front().first);
    world.startY = static_cast<float>(contents.startCells.front().second);
    return true;
}

std::string LevelBuilder::ScoreFileBytes(const std::string& mapUid, const std::string& run) {
    return QmTextCipher::EncodeText(QmTextCipher::kFileLevel, "u" + mapUid + "@") + "\r\n" +
           QmTextCipher::EncodeText(QmTextCipher::kFileLevel, run);
}

bool LevelBuilder::Write(const std::vector<LevelTour>& tours, const std::string& mapsFolder,
                         std::vector<std::string>& missingRuns, std::string& error) {
    missingRuns.clear();
    std::vector<std::string> folders;
    for (const LevelTour& tour : tours) {
        const std::string folder = TourFolder(tour);
        if (std::find(folders.begin(), folders.end(), folder) != folders.end()) {
            error = "two tours share the folder " + folder;
            return false;
        }
        folders.push_back(folder);
    }
    if (!CreateFolder(mapsFolder)) {
        error = "cannot create " + mapsFolder;
        return false;
    }
    for (const std::string& old : ListFolders(mapsFolder)) {
        if (std::find(folders.begin(), folders.end(), old) == folders.end()) {
            DeleteFolder(mapsFolder + "/" + old);
        }
    }
    SeedFor("Maps/tours.dat");
    if (!QmCipherFile::WriteLines(mapsFolder + "/tours.dat", folders, false)) {
        error = "cannot write " + mapsFolder + "/tours.dat";
        return false;
    }
    for (size_t t = 0; t < tours.size(); ++t) {
        const LevelTour& tour = tours[t];
        const std::string folder = mapsFolder + "/" + folders[t];
        CreateFolder(folder);
        std::set<std::string> written = {"tour.dat"};
        std::vector<std::string> files;
        for (size_t m = 0; m < tour.maps.size(); ++m) {
            QmMapContents contents;
            if (!Contents(tour, m, contents, error)) {
                error = tour.sourcePath + ": " + error;
                return false;
            }
            const std::string file = MapFile(tour.maps[m]);
            if (!written.insert(file).second) {
                error = "two maps of " + tour.name + " share the file " + file;
                return false;
            }
            files.push_back(file);
            SeedFor("Maps/" + folders[t] + "/" + file);
            if (!QmCipherFile::WriteLines(folder + "/" + file, QmMapFile::Format(contents))) {
                error = "cannot write " + folder + "/" + file;
                return false;
            }
            const std::string score = QmFileNames::ScoreFileOf(file);
            if (tour.maps[m].run.empty()) {
                missingRuns.push_back(tour.name + " / " + tour.maps[m].name);
                continue;
            }
            written.insert(score);
            SeedFor("Maps/" + folders[t] + "/" + score);
            if (!WriteFileAtomic(folder + "/" + score, ScoreFileBytes(contents.uid, tour.maps[m].run))) {
                error = "cannot write " + folder + "/" + score;
                return false;
            }
        }
        TourRecord record;
        record.official = true;
        record.name = tour.name;
        record.locked = t > 0;
        record.editable = false;
        record.collectsFiles = false;
        record.uid = TourUid(tour);
        SeedFor("Maps/" + folders[t] + "/tour.dat");
        if (!QmCipherFile::WriteLines(folder + "/tour.dat", QmTourFile::FormatTour(record, files), false)) {
            error = "cannot write " + folder + "/tour.dat";
            return false;
        }
        for (const std::string& old : ListFiles(folder)) {
            if (written.count(old) == 0) {
                RemoveFile(folder + "/" + old);
            }
        }
    }
    return true;
}

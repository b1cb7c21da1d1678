#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmLevelGenerator.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Environment/CoreEnvironmentManager/QmWorldFrontEndLink.h"
#include "Environment/CoreEnvironmentManager/QmWorldGameplayLink.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"
#include "Platform/VeRandom.h"

#include <algorithm>

namespace {

// Language lines of the tour notices.
constexpr int kLineMapUnlocked = 113;
constexpr int kLineUnlockedTitle = 114;
constexpr int kLineMoveRefusedTitle = 120;
constexpr int kLineOfficialTourMove = 128;
constexpr int kLineTourNotEditable = 129;
constexpr int kLineTourUnlocked = 130;
constexpr float kUnlockVolume = 0.8f;

constexpr int kMaxRandomNameTries = 10000;

std::string GamePath(const std::string& relative) {
    return GetGameFolder() + "/" + relative;
}

std::string RandomUid() {
    const int first = Rand();
    return std::to_string(first) + std::to_string(Rand());
}

// Moves a map file and its score file within a folder (relative to the game folder). A score file
// already lying under the new name belongs to no map (the new map name was free) and gives way.
bool MoveMapFiles(const std::string& folder, const std::string& from, const std::string& to) {
    if (!RenamePath(GamePath(folder + from), GamePath(folder + to))) {
        Log("Could not rename %s%s to %s\n", folder.c_str(), from.c_str(), to.c_str());
        return false;
    }
    const std::string oldScore = GamePath(folder + QmFileNames::ScoreFileOf(from));
    const std::string newScore = GamePath(folder + QmFileNames::ScoreFileOf(to));
    if (FileExists(oldScore)) {
        if (FileExists(newScore)) {
            RemoveFile(newScore);
        }
        if (!RenamePath(oldScore, newScore)) {
            Log("Could not rename the score file of %s%s\n", folder.c_str(), from.c_str());
        }
    }
    return true;
}
} // namespace

QmCoreEnvironmentManager::QmCoreEnvironmentManager() = default;

QmCoreEnvironmentManager::~QmCoreEnvironmentManager() = default;

// ---- Virtual operations ----

void QmCoreEnvironmentManager::SaveMap(bool) {}

void QmCoreEnvironmentManager::ClearMap() {
    blocks.fill(Block::Blank);
}

void QmCoreEnvironmentManager::SetBlockSize(int size) {
    blockSize = size;
    mapSize = size == kLargeBlockSize ? 10 : 20;
}

BlockId QmCoreEnvironmentManager::RandomColourBlock() {
    return Block::FirstDefault;
}

void QmCoreEnvironmentManager::OpenGates() {
    const int size = std::min(mapSize, kGridSize);
    for (int x = 0; x < size; ++x) {
        for (int y = 0; y < size; ++y) {
            if (blocks[x * kGridSize + y] == Block::RedGate) {
                blocks[x * kGridSize + y] = Block::Blank;
            }
        }
    }
}

void QmCoreEnvironmentManager::ReportError(const std::string& message) {
    Log("%s\n", message.c_str());
    VeAssertFailed("false");
}

BlockId QmCoreEnvironmentManager::GetBlock(int x, int y) {
    return blocks[x * kGridSize + y];
}

void QmCoreEnvironmentManager::SetBlock(int x, int y, BlockId id) {
    blocks[x * kGridSize + y] = id;
}

// ---- The map record ----

bool QmCoreEnvironmentManager::IsPassable(int x, int y, bool gatesClosed) const {
    const int size = std::min(mapSize, kGridSize);
    if (x < 0 || y < 0 || x >= size || y >= size) {
        return false;
    }
    const BlockId id = blocks[x * kGridSize + y];
    if (QmBlocks::IsDefaultBlock(id)) {
        return false;
    }
    if (id == Block::RedGate) {
        return !gatesClosed && gatesOpen;
    }
    return true;
}

bool QmCoreEnvironmentManager::AllBlocksAre(BlockId id) const {
    const int size = std::min(mapSize, kGridSize);
    for (int x = 0; x < size; ++x) {
        for (int y = 0; y < size; ++y) {
            if (blocks[x * kGridSize + y] != id) {
                return false;
            }
        }
    }
    return true;
}

void QmCoreEnvironmentManager::FillMap(BlockId id) {
    const int size = std::min(mapSize, kGridSize);
    for (int x = 0; x < size; ++x) {
        for (int y = 0; y < size; ++y) {
            SetBlock(x, y, id);
        }
    }
}

void QmCoreEnvironmentManager::RemoveStart() {
    for (int x = 0; x < kGridSize; ++x) {
        for (int y = 0; y < kGridSize; ++y) {
            if (blocks[x * kGridSize + y] == Block::Start) {
                SetBlock(x, y, Block::Blank);
            }
        }
    }
}

std::vector<std::pair<float, float>> QmCoreEnvironmentManager::GetEnemySpawns() const {
    std::vector<std::pair<float, float>> spawns;
    const int size = std::min(mapSize, kGridSize);
    for (int x = 0; x < size; ++x) {
        for (int y = 0; y < size; ++y) {
            if (blocks[x * kGridSize + y] == Block::Enemy) {
                spawns.emplace_back(static_cast<float>(x * blockSize), static_cast<float>(y * blockSize));
            }
        }
    }
    return spawns;
}

void QmCoreEnvironmentManager::InitWorld() {
    startingUp = true;
    blockSize = kLargeBlockSize;
    mapSize = 10;
    tourIndex = 0;
    levelIndex = 0;
    locked = false;
    editable = true;
    gatesOpen = false;
    ScanWorld();
    LoadLevel(0, false);
    startingUp = false;
}

void QmCoreEnvironmentManager::StartCellMet(int column, int row) {
    startX = static_cast<float>(column);
    startY = static_cast<float>(row);
    if (!startingUp && gameplay != nullptr) {
        gameplay->PlaceRacerAtCell(startX, startY);
    }
}

void QmCoreEnvironmentManager::MapReadyForRace() {
    if (!startingUp && gameplay != nullptr) {
        gameplay->MapReady(GetEnemySpawns(), blockSize);
    }
}

// ---- Map files ----

std::string QmCoreEnvironmentManager::TourFolderPath(int t) const {
    return "Maps/" + tourFolders[t] + "/";
}

bool QmCoreEnvironmentManager::ValidLevel(int t, int level) const {
    return ValidTour(t) && level >= 0 && level < static_cast<int>(tourLevels[t].size());
}

bool QmCoreEnvironmentManager::SafeFolder(int t) const {
    return ValidTour(t) && QmFileNames::IsSafeName(tourFolders[t]);
}

std::string QmCoreEnvironmentManager::CurrentMapFile() const {
    return ValidLevel(tourIndex, levelIndex) ? tourLevels[tourIndex][levelIndex] : std::string();
}

void QmCoreEnvironmentManager::LoadLevel(int index, bool fromCache) {
    ClearMap();
    if (blockSize != kLargeBlockSize) {
        SetBlockSize(kLargeBlockSize);
    }
    levelIndex = index;
    mapName.clear();
    mapUid.clear();
    locked = false;
    editable = true;

    std::string path;
    if (fromCache) {
        if (index >= 0 && index < static_cast<int>(cacheFiles.size()) &&
            QmFileNames::IsSafeCacheEntry(cacheFiles[index])) {
            path = "Cache/" + cacheFiles[index];
        } else {
            Log("No downloaded map %d to load\n", index);
        }
    } else if (ValidTour(tourIndex) && index >= static_cast<int>(tourLevels[tourIndex].size())) {
        // Past the end of the tour: a new, empty map is added to it.
        SaveMap(false);
        if (mapName.empty()) {
            mapName = defaultMapName;
        }
        return;
    } else if (ValidLevel(tourIndex, index) && SafeFolder(tourIndex) &&
               QmFileNames::IsSafeName(tourLevels[tourIndex][index])) {
        path = TourFolderPath(tourIndex) + tourLevels[tourIndex][index];
    }

    std::vector<std::string> lines;
    if (!path.empty() && QmCipherFile::ReadLines(GamePath(path), lines)) {
        const QmMapContents contents = QmMapFile::Parse(lines);
        if (contents.blockSize == kSmallBlockSize && blockSize == kLargeBlockSize) {
            SetBlockSize(kSmallBlockSize);
        }
        blocks = contents.blocks;
        if (contents.nameRead) {
            mapName = contents.name;
        }
        mapUid = contents.uid;
        locked = contents.locked;
        editable = contents.editable;
        if (contents.tourUidRead) {
            mapTourUid = contents.tourUid;
            if (!fromCache && !tours[tourIndex].collectsFiles && contents.tourUid != tours[tourIndex].uid) {
                ReportError("Unknown Level added to tour:" + path);
            }
        }
        for (const auto& [column, row] : contents.startCells) {
            StartCellMet(column, row);
        }
    }
    if (mapName.empty()) {
        mapName = defaultMapName;
    }
    MapReadyForRace();
}

void QmCoreEnvironmentManager::WriteMap(const std::string& path) {
    QmMapContents contents;
    contents.blockSize = blockSize;
    contents.name = mapName;
    contents.uid = mapUid;
    contents.locked = locked;
    contents.editable = editable;
    contents.tourUid = ValidTour(tourIndex) ? tours[tourIndex].uid : std::string();
    contents.blocks = blocks;
    for (int x = 0; x < kGridSize; ++x) {
        for (int y = 0; y < kGridSize; ++y) {
            if (blocks[x * kGridSize + y] == Block::Start) {
                StartCellMet(x, y);
            }
        }
    }
    QmCipherFile::WriteLines(GamePath(path), QmMapFile::Format(contents));
    MapReadyForRace();
}

void QmCoreEnvironmentManager::SaveMapToTour(bool asNew) {
    if (!ValidTour(tourIndex)) {
        Log("There is no tour to save the map into\n");
        return;
    }
    if (!ValidLevel(tourIndex, levelIndex)) {
        asNew = true;
    }
    mapUid = RandomUid();
    std::string file;
    if (asNew) {
        mapName = defaultMapName;
        locked = false;
        editable = true;
        file = GenerateFileName(false, mapName, TourFolderPath(tourIndex), ".map", std::string());
        tourLevels[tourIndex].push_back(file);
        levelIndex = static_cast<int>(tourLevels[tourIndex].size()) - 1;
        SaveTour(tourIndex, true); // may move the tour's folder
    } else {
        file = tourLevels[tourIndex][levelIndex];
    }
    if (!SafeFolder(tourIndex) || !QmFileNames::IsSafeName(file)) {
        Log("Refusing to write the map file '%s'\n", file.c_str());
        return;
    }
    CreateFolder(GamePath(TourFolderPath(tourIndex)));
    WriteMap(TourFolderPath(tourIndex) + file);
}

std::string QmCoreEnvironmentManager::GetMapField(char tag, const std::string& file) {
    if (!SafeFolder(tourIndex)) {
        return std::string();
    }
    const std::string name = file.empty() ? CurrentMapFile() : file;
    std::vector<std::string> lines;
    if (!QmFileNames::IsSafeName(name) ||
        !QmCipherFile::ReadLines(GamePath(TourFolderPath(tourIndex) + name), lines)) {
        return std::string();
    }
    std::string value;
    for (const std::string& line : lines) {
        if (!line.empty() && line[0] == tag) {
            value = line.substr(1);
        }
    }
    return value;
}

std::string QmCoreEnvironmentManager::SetMapField(char tag, const std::string& value, int tour, int level,
                                                  const std::string& file) {
    if (tour < 0) {
        tour = tourIndex;
    }
    if (level < 0) {
        level = levelIndex;
    }
    if (!ValidTour(tour)) {
        return std::string();
    }
    std::string name = file;
    if (name.empty()) {
        if (!ValidLevel(tour, level)) {
            return std::string();
        }
        name = tourLevels[tour][level];
    }
    if (!SafeFolder(tour) || !QmFileNames::IsSafeName(name)) {
        Log("Refusing to write the map file '%s'\n", name.c_str());
        return std::string();
    }
    const std::string folder = TourFolderPath(tour);
    const std::string text = QmFileNames::OneLine(value);

    std::vector<std::string> lines;
    QmCipherFile::ReadLines(GamePath(folder + name), lines);
    std::string previous;
    bool found = false;
    for (std::string& line : lines) {
        if (!line.empty() && line[0] == tag) {
            previous = line.substr(1);
            line = tag + text;
            found = true;
        }
    }
    if (!found) {
        lines.push_back(tag + text);
    }
    if (!QmCipherFile::WriteLines(GamePath(folder + name), lines)) {
        return previous;
    }

    if (tag == 'n' && !text.empty() && text != previous) {
        // The file follows the name: find the map's entry in the tour and move its files.
        std::vector<std::string>& levels = tourLevels[tour];
        int entry = ValidLevel(tour, level) && levels[level] == name ? level : -1;
        if (entry < 0) {
            const auto found = std::find(levels.begin(), levels.end(), name);
            entry = found != levels.end() ? static_cast<int>(found - levels.begin()) : -1;
        }
        const std::string renamed = GenerateFileName(false, text, folder, ".map", name);
        if (entry >= 0 && renamed != name && MoveMapFiles(folder, name, renamed)) {
            levels[entry] = renamed;
            SaveTour(tour, false);
            if (gameplay != nullptr && tour == tourIndex && entry == levelIndex) {
                gameplay->MapFileRenamed();
            }
        }
    }
    return previous;
}

void QmCoreEnvironmentManager::SetEditable(bool flag) {
    editable = flag;
    SetMapField('e', flag ? "1" : "0");
}

void QmCoreEnvironmentManager::SetLocked(bool flag) {
    locked = flag;
    SetMapField('l', flag ? "1" : "0");
}

void QmCoreEnvironmentManager::CommitName() {
    if (mapName.empty()) {
        mapName = defaultMapName;
    }
    SetMapField('n', mapName);
}

bool QmCoreEnvironmentManager::DeleteLevel(int tour, int level, bool updateTour) {
    if (!ValidLevel(tour, level)) {
        return false;
    }
    const std::string name = tourLevels[tour][level];
    const std::string folder = TourFolderPath(tour);
    bool removed = false;
    bool gone = true;
    if (SafeFolder(tour) && QmFileNames::IsSafeName(name)) {
        removed = RemoveFile(GamePath(folder + name));
        if (removed) {
            RemoveFile(GamePath(folder + QmFileNames::ScoreFileOf(name)));
        }
        gone = !FileExists(GamePath(folder + name));
    }
    // An entry whose file is already missing leaves the tour too; one that could not be removed stays.
    if (updateTour && gone) {
        tourLevels[tour].erase(tourLevels[tour].begin() + level);
        SaveTour(tour, false);
    }
    return removed;
}

std::string QmCoreEnvironmentManager::GenerateFileName([[maybe_unused]] bool isFolder,
                                                       const std::string& name, const std::string& prefix,
                                                       const std::string& extension,
                                                       const std::string& current) {
    if (name.empty()) {
        Halt("Error: Cannot generate empty filename",
             "An unknown error occured while generating filename."
             "\n\nPlease download the latest version or contact Velnosoft.");
    }
    const std::string base = QmFileNames::CamelCase(name);
    // Anything already there, file or folder, takes the name, whichever of the two is wanted.
    auto isFree = [&](const std::string& candidate) {
        if (candidate == current) {
            return true;
        }
        const std::string path = GamePath(prefix + candidate);
        return !FileExists(path) && !IsDirectory(path);
    };
    std::string candidate = base + extension;
    if (isFree(candidate)) {
        return candidate;
    }
    for (int number = 2; number <= 19; ++number) {
        candidate = base + "_" + std::to_string(number) + extension;
        if (isFree(candidate)) {
            return candidate;
        }
    }
    // A current name that is already base_<number> stays, so a scan does not rename it again.
    const std::string stem = base + "_";
    if (current.size() > stem.size() + extension.size() && current.compare(0, stem.size(), stem) == 0 &&
        current.compare(current.size() - extension.size(), extension.size(), extension) == 0) {
        const std::string number =
            current.substr(stem.size(), current.size() - stem.size() - extension.size());
        if (number.find_first_not_of("0123456789") == std::string::npos) {
            return current;
        }
    }
    for (int attempt = 0; attempt < kMaxRandomNameTries; ++attempt) {
        candidate = base + "_" + std::to_string(Rand()) + extension;
        if (isFree(candidate)) {
            break;
        }
    }
    return candidate;
}

void QmCoreEnvironmentManager::MoveCacheFileDown(int index, bool toEnd) {
    const int count = static_cast<int>(cacheFiles.size());
    if (index < 0 || index + 1 >= count) {
        return;
    }
    std::swap(cacheFiles[index], cacheFiles[toEnd ? count - 1 : index + 1]);
}

void QmCoreEnvironmentManager::MoveCacheFileUp(int index, bool toStart) {
    const int count = static_cast<int>(cacheFiles.size());
    if (index <= 0 || index >= count) {
        return;
    }
    std::swap(cacheFiles[index], cacheFiles[toStart ? 0 : index - 1]);
}

// ---- Tours ----

void QmCoreEnvironmentManager::ReadTours() {
    std::vector<std::string> lines;
    QmCipherFile::ReadLines(GamePath("Maps/tours.dat"), lines);
    tourFolders = QmTourFile::ParseTourList(lines);
    tours.assign(tourFolders.size(), TourRecord());
    tourLevels.assign(tourFolders.size(), std::vector<std::string>());
}

void QmCoreEnvironmentManager::WriteTours() {
    std::vector<std::string> folders;
    for (const std::string& folder : tourFolders) {
        if (QmFileNames::IsSafeName(folder)) {
            folders.push_back(folder);
        }
    }
    CreateFolder(GamePath("Maps"));
    QmCipherFile::UpdateLines(GamePath("Maps/tours.dat"), folders, false);
}

void QmCoreEnvironmentManager::ReadTour(int t) {
    if (!ValidTour(t)) {
        return;
    }
    tours[t] = TourRecord();
    tourLevels[t].clear();
    if (!SafeFolder(t)) {
        return;
    }
    std::vector<std::string> lines;
    if (QmCipherFile::ReadLines(GamePath(TourFolderPath(t) + "tour.dat"), lines)) {
        QmTourFile::ParseTour(lines, tours[t], tourLevels[t]);
    }
}

void QmCoreEnvironmentManager::SaveTour(int t, bool retag) {
    if (!ValidTour(t)) {
        return;
    }
    TourRecord& record = tours[t];
    if (record.uid.empty()) {
        record.uid = RandomUid();
        retag = true;
    }
    if (record.name.empty() && !record.official) {
        record.name = defaultTourName;
    }
    if (retag && SafeFolder(t)) {
        for (int level = 0; level < static_cast<int>(tourLevels[t].size()); ++level) {
            SetMapField('t', record.uid, t, level);
        }
    }
    if (!(record.official && record.name.empty())) {
        // A folder name that would leave "Maps/" is never moved; the tour gets a folder of its own.
        const std::string old = QmFileNames::IsSafeName(tourFolders[t]) ? tourFolders[t] : std::string();
        std::string folder = GenerateFileName(true, record.name, "Maps/", std::string(), old);
        if (!old.empty() && folder != old && IsDirectory(GamePath("Maps/" + old)) &&
            !RenamePath(GamePath("Maps/" + old), GamePath("Maps/" + folder))) {
            Log("Could not move the tour folder %s to %s\n", old.c_str(), folder.c_str());
            folder = old;
        }
        tourFolders[t] = folder;
        WriteTours();
    }
    if (!SafeFolder(t)) {
        return;
    }
    CreateFolder(GamePath("Maps/" + tourFolders[t]));
    QmCipherFile::UpdateLines(GamePath(TourFolderPath(t) + "tour.dat"),
                              QmTourFile::FormatTour(record, tourLevels[t]), false);
}

void QmCoreEnvironmentManager::NewTour() {
    tours.emplace_back();
    tourFolders.emplace_back();
    tourLevels.emplace_back();
    SaveTour(static_cast<int>(tours.size()) - 1, true);
    WriteTours();
}

void QmCoreEnvironmentManager::DeleteTour(int t) {
    if (!ValidTour(t)) {
        return;
    }
    const std::string folder = tourFolders[t];
    Log("Deleting Tour: '%s'\n", folder.c_str());
    int result = 1; // a folder name that would leave "Maps/" is not deleted
    if (QmFileNames::IsSafeName(folder)) {
        const std::string path = GamePath("Maps/" + folder);
        DeleteFolder(path);
        result = IsDirectory(path) ? 1 : 0;
    }
    Log("ret %i\n", result);
    tours.erase(tours.begin() + t);
    tourFolders.erase(tourFolders.begin() + t);
    tourLevels.erase(tourLevels.begin() + t);
    WriteTours();
}

bool QmCoreEnvironmentManager::MoveTourDown() {
    const int t = tourIndex;
    if (t < 0 || t + 1 >= static_cast<int>(tours.size())) {
        return false;
    }
    if (tours[t].official || tours[t + 1].official) {
        Notice(Line(kLineMoveRefusedTitle), Line(kLineOfficialTourMove));
        return false;
    }
    // The map lists move with their tours, so a tour is never saved with another tour's maps.
    std::swap(tourFolders[t], tourFolders[t + 1]);
    std::swap(tours[t], tours[t + 1]);
    std::swap(tourLevels[t], tourLevels[t + 1]);
    WriteTours();
    return true;
}

bool QmCoreEnvironmentManager::MoveTourUp() {
    const int t = tourIndex;
    if (t <= 0 || t >= static_cast<int>(tours.size())) {
        return false;
    }
    if (tours[t].official || tours[t - 1].official) {
        Notice(Line(kLineMoveRefusedTitle), Line(kLineOfficialTourMove));
        return false;
    }
    std::swap(tourFolders[t], tourFolders[t - 1]);
    std::swap(tours[t], tours[t - 1]);
    std::swap(tourLevels[t], tourLevels[t - 1]);
    WriteTours();
    return true;
}

bool QmCoreEnvironmentManager::MoveLevelDown(bool toEnd) {
    if (!ValidTour(tourIndex)) {
        return false;
    }
    if (!tours[tourIndex].editable) {
        Notice(Line(kLineMoveRefusedTitle), Line(kLineTourNotEditable));
        return false;
    }
    std::vector<std::string>& levels = tourLevels[tourIndex];
    const int count = static_cast<int>(levels.size());
    if (levelIndex < 0 || levelIndex + 1 >= count) {
        return false;
    }
    std::swap(levels[levelIndex], levels[toEnd ? count - 1 : levelIndex + 1]);
    SaveTour(tourIndex, false);
    return true;
}

bool QmCoreEnvironmentManager::MoveLevelUp(bool toStart) {
    if (!ValidTour(tourIndex)) {
        return false;
    }
    if (!tours[tourIndex].editable) {
        Notice(Line(kLineMoveRefusedTitle), Line(kLineTourNotEditable));
        return false;
    }
    std::vector<std::string>& levels = tourLevels[tourIndex];
    if (levelIndex <= 0 || levelIndex >= static_cast<int>(levels.size())) {
        return false;
    }
    std::swap(levels[levelIndex], levels[toStart ? 0 : levelIndex - 1]);
    SaveTour(tourIndex, false);
    return true;
}

void QmCoreEnvironmentManager::UnlockNext() {
    const int t = tourIndex;
    const int level = levelIndex;
    if (!ValidTour(t)) {
        return;
    }
    const int count = static_cast<int>(tourLevels[t].size());
    if (level >= 0 && level + 1 < count) {
        const std::string& next = tourLevels[t][level + 1];
        std::string name = GetMapField('n', next);
        if (name.empty()) {
            name = defaultMapName;
        }
        if (SetMapField('l', "0", t, level + 1) == "1") {
            Notice(Line(kLineUnlockedTitle), Line(kLineMapUnlocked) + ": " + name);
            PlaySound("Unlocked", kUnlockVolume);
        }
        return;
    }
    if (level != count - 1 || !ValidTour(t + 1)) {
        return;
    }
    TourRecord& nextTour = tours[t + 1];
    const bool wasLocked = nextTour.locked;
    nextTour.locked = false;
    std::string previous;
    if (!tourLevels[t + 1].empty()) {
        previous = SetMapField('l', "0", t + 1, 0);
    }
    SaveTour(t + 1, false);
    if (wasLocked || previous == "1") {
        Notice(Line(kLineUnlockedTitle), Line(kLineTourUnlocked) + ": " + tours[t + 1].name);
        PlaySound("UnlockedTour", kUnlockVolume);
    }
}

bool QmCoreEnvironmentManager::ScanWorld() {
    const int rememberedTour = tourIndex;
    ReadTours();

    // Tours shipped beside the program contribute their folder names.
    for (const std::string& folder : ListFolders(programMapsFolder)) {
        if (QmFileNames::IsSafeName(folder) &&
            std::find(tourFolders.begin(), tourFolders.end(), folder) == tourFolders.end()) {
            tourFolders.push_back(folder);
            tours.emplace_back();
            tourLevels.emplace_back();
        }
    }
    WriteTours();

    for (int t = 0; t < static_cast<int>(tours.size()); ++t) {
        const std::string folder = TourFolderPath(t);
        if (!SafeFolder(t) || !IsDirectory(GamePath(folder))) {
            continue;
        }
        ReadTour(t);
        std::vector<std::string>& levels = tourLevels[t];
        if (tours[t].collectsFiles) {
            for (const std::string& file : ListFiles(GamePath(folder))) {
                if (file == "tours.dat" || file == "tour.dat") {
                    continue;
                }
                const std::string extension = QmFileNames::Extension(file);
                if (extension == ".map") {
                    if (std::find(levels.begin(), levels.end(), file) == levels.end()) {
                        levels.push_back(file);
                    }
                } else if (extension == ".dat") {
                    const std::string partner = file.substr(0, file.size() - 4) + ".map";
                    if (!FileExists(GamePath(folder + partner))) {
                        RemoveFile(GamePath(folder + file));
                    }
                }
            }
        }
        // Map files carry the file name of their map's name.
        for (std::string& file : levels) {
            tourIndex = t;
            std::string name = GetMapField('n', file);
            if (name.empty()) {
                name = defaultMapName;
            }
            const std::string renamed = GenerateFileName(false, name, folder, ".map", file);
            if (renamed != file && FileExists(GamePath(folder + file)) &&
                MoveMapFiles(folder, file, renamed)) {
                file = renamed;
            }
        }
        WriteTours();
        SaveTour(t, false);
    }

    tourIndex = rememberedTour;
    if (tourFolders.empty()) {
        Log("Critical error: Tour data was not found!\n");
        return false;
    }
    return true;
}

// ---- Level generator ----

void QmCoreEnvironmentManager::GenerateLevel() {
    QmLevelGenerator(*this).Generate();
}

// ---- Front end ----

std::string QmCoreEnvironmentManager::Line(int number) const {
    return frontEnd != nullptr ? frontEnd->GetLine(number) : std::string();
}

void QmCoreEnvironmentManager::Notice(const std::string& title, const std::string& text) {
    if (frontEnd != nullptr) {
        frontEnd->ShowNotice(title, text);
    } else {
        Log("%s: %s\n", title.c_str(), text.c_str());
    }
}

void QmCoreEnvironmentManager::PlaySound(const std::string& name, float volume) {
    if (frontEnd != nullptr) {
        frontEnd->PlaySound(name, volume);
    }
}

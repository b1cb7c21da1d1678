#pragma once
// The world model: the map record with its blocks, the tour lists, and everything the world keeps
// on disk under the game folder (Maps/tours.dat, Maps/<folder>/tour.dat, Maps/<folder>/<name>.map
// with its score file <name>.dat beside it, Cache/<user id>/<name>.map).
//
// Contract:
// - blocks is always 20 x 20, x-major; only the top-left mapSize x mapSize cells are played, drawn
//   and edited, but every cell is kept and saved.
// - The virtual operations (SaveMap ... SetBlock) are the ones the client manager overrides to keep
//   its cell cache in step; everything that changes cells goes through them where a cache could see
//   it (ClearMap, SetBlockSize, SetBlock, OpenGates).
// - Every change to the tour lists is written to disk at once. Every file is replaced atomically;
//   names read from files or given by the player never reach outside their folder.
// - The racer and enemies are reached through QmWorldGameplayLink, language lines, notices and
//   sounds through QmWorldFrontEndLink; both may be absent.
#include "Environment/CoreEnvironmentManager/QmBlocks.h"
#include "Environment/CoreEnvironmentManager/TourRecord.h"

#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

class QmWorldGameplayLink;
class QmWorldFrontEndLink;

class QmCoreEnvironmentManager {
public:
    static constexpr int kGridSize = 20;
    static constexpr int kCellCount = kGridSize * kGridSize;
    static constexpr int kLargeBlockSize = 64; // 10 x 10 blocks
    static constexpr int kSmallBlockSize = 32; // 20 x 20 blocks
    static constexpr size_t kMaxMapNameLength = 15;

    QmCoreEnvironmentManager();
    QmCoreEnvironmentManager(const QmCoreEnvironmentManager&) = delete;
    QmCoreEnvironmentManager& operator=(const QmCoreEnvironmentManager&) = delete;

    // ---- Virtual operations, in slot order ----
    // 0. The base does nothing; the client's override stores the map with SaveMapToTour.
    virtual void SaveMap(bool asNew);
    // 1. Rebuilds the tour lists from disk and repairs them; false when there is no tour at all.
    virtual bool ScanWorld();
    // 2. Every cell becomes Blank.
    virtual void ClearMap();
    // 3. blockSize = size; mapSize = 10 for 64, else 20.
    virtual void SetBlockSize(int size);
    // 4. A coloured block id for the generator; the base always gives 1.
    virtual BlockId RandomColourBlock();
    // 5. Every RedGate of the playing area becomes Blank.
    virtual void OpenGates();
    // 6. Writes the message to the console and stops at a failed assertion.
    virtual void ReportError(const std::string& message);
    // 7, 8. No range check: 0 <= x, y < 20.
    virtual BlockId GetBlock(int x, int y);
    virtual void SetBlock(int x, int y, BlockId id);

    virtual ~QmCoreEnvironmentManager();

    // ---- The map record ----
    // False outside the playing area; default blocks are solid; a RedGate lets through only when
    // gatesClosed is false and the gates are open; every other id is passable.
    bool IsPassable(int x, int y, bool gatesClosed) const;
    // True when every playing cell holds id.
    bool AllBlocksAre(BlockId id) const;
    // Every playing cell becomes id.
    void FillMap(BlockId id);
    // Every Start cell of the whole grid becomes Blank.
    void RemoveStart();
    // (x * blockSize, y * blockSize) of each Enemy cell of the playing area, column by column.
    std::vector<std::pair<float, float>> GetEnemySpawns() const;
    // Start-up: defaults, ScanWorld, the first map of the first tour.
    void InitWorld();

    // ---- Map files (paths relative to the game folder) ----
    // Loads tourLevels[tourIndex][index] or, fromCache, cacheFiles[index]. An index past the
    // tour's list makes a new map (SaveMap); a cache index outside the list loads nothing.
    void LoadLevel(int index, bool fromCache);
    // Writes the current map to game folder + path; notes the Start cell and, unless starting
    // up, places the racer and spawns the enemies as a load does.
    void WriteMap(const std::string& path);
    // Gives the map a new uid and writes it into the current tour; asNew (or a levelIndex past the
    // list) appends a new, empty-named map file to the tour.
    void SaveMapToTour(bool asNew);
    // The text after the tag of the last line starting with it in Maps/<current folder>/<file>
    // (the current map's file when empty); empty when there is none.
    std::string GetMapField(char tag, const std::string& file = std::string());
    // Replaces every line starting with tag by tag + value (appends one when there is none) and
    // returns the previous value. Renaming ('n') moves the map and its score file to the file name
    // of the new name and updates the tour. tour and level -1 mean the current ones.
    std::string SetMapField(char tag, const std::string& value, int tour = -1, int level = -1,
                            const std::string& file = std::string());
    void SetEditable(bool flag);
    void SetLocked(bool flag);
    // Stores mapName (the default name when empty) in the map file, renaming it when it changed.
    void CommitName();
    // Removes the map file and, when that worked, its score file; with updateTour the tour forgets
    // it. True when the map file was removed.
    bool DeleteLevel(int tour, int level, bool updateTour);
    // A free file or folder name under game folder + prefix for the name in CamelCase ("my cool
    // map" -> MyCoolMap.map, then MyCoolMap_2.map ...); current counts as free. Characters no file
    // name may hold are treated as blanks, and the result is never "." or "..". Halts on an empty name.
    std::string GenerateFileName(bool isFolder, const std::string& name, const std::string& prefix,
                                 const std::string& extension, const std::string& current);
    void MoveCacheFileDown(int index, bool toEnd);
    void MoveCacheFileUp(int index, bool toStart);
    // The file name of the current map in its tour; empty when levelIndex is outside the list.
    std::string CurrentMapFile() const;

    // ---- Tours ----
    void ReadTours();
    void WriteTours();
    void ReadTour(int t);
    // Gives the tour a uid (and retags its maps), a default name, its folder and writes tour.dat.
    void SaveTour(int t, bool retag);
    void NewTour();
    void DeleteTour(int t);
    // Swap the current tour with its neighbour; refused (with a notice) when either is official.
    bool MoveTourDown();
    bool MoveTourUp();
    // Swap the map at levelIndex with its neighbour, or with the last (first) map; refused with a
    // notice when the tour is not editable. levelIndex stays.
    bool MoveLevelDown(bool toEnd);
    bool MoveLevelUp(bool toStart);
    // The current map was finished: unlock the next map, or the next tour after the last map.
    void UnlockNext();

    // ---- Level generator ----
    // Replaces the map with a random one of the current size: Start, Finish and a path of coloured
    // blocks the racer can run and jump along.
    void GenerateLevel();

    void SetGameplayLink(QmWorldGameplayLink* link) { gameplay = link; }
    void SetFrontEndLink(QmWorldFrontEndLink* link) { frontEnd = link; }

    // ---- The map record (fields in order) ----
    int32_t blockSize = kLargeBlockSize;
    int32_t mapSize = 10;
    std::array<BlockId, kCellCount> blocks{}; // cell (x, y) is blocks[x * 20 + y]
    int32_t tourIndex = 0;
    int32_t levelIndex = 0;
    std::vector<TourRecord> tours;
    std::vector<std::string> tourFolders;
    std::vector<std::vector<std::string>> tourLevels;
    std::vector<std::string> cacheFiles; // "<user id>/<file>" under Cache/
    std::string mapName;
    std::string mapUid;
    std::string mapTourUid;
    bool locked = false;
    bool editable = true;
    float startX = 0.0f;
    float startY = 0.0f;
    bool startingUp = false;
    std::string defaultMapName = "Level";
    bool gatesOpen = false;
    std::string defaultTourName = "Tour";

    // The folder of shipped tours beside the program, relative to the working folder.
    std::string programMapsFolder = "Maps";

protected:
    // The path of Maps/<folder>/ of tour t under the game folder, with trailing '/'.
    std::string TourFolderPath(int t) const;
    bool ValidTour(int t) const { return t >= 0 && t < static_cast<int>(tours.size()); }
    bool ValidLevel(int t, int level) const;
    // Tour t exists and its folder name stays inside "Maps/".
    bool SafeFolder(int t) const;
    // The language line, or empty without a front end.
    std::string Line(int number) const;
    void Notice(const std::string& title, const std::string& text);
    void PlaySound(const std::string& name, float volume);
    // The Start cell was met (column, row): note it and place the racer unless starting up.
    void StartCellMet(int column, int row);
    // After a map was read or written: spawn enemies and size the racer unless starting up.
    void MapReadyForRace();

    QmWorldGameplayLink* gameplay = nullptr;
    QmWorldFrontEndLink* frontEnd = nullptr;
};

#pragma once
// What the world model reaches in a race. The gameplay manager implements this while it exists
// and registers itself with QmCoreEnvironmentManager::SetGameplayLink; without one (menus, editor,
// tools) maps load and save without touching racer or enemies.
#include <utility>
#include <vector>

class QmWorldGameplayLink {
public:
    virtual ~QmWorldGameplayLink() = default;

    // A Start cell was met while a map was read or written: when there is a racer, move it to the
    // cell (column, row) at once (it stands at column x blockSize, row x blockSize).
    virtual void PlaceRacerAtCell(float column, float row) = 0;
    // A map has been read or written: create one enemy per spawn point (pixels) and make the
    // racer blockSize wide and high.
    virtual void MapReady(const std::vector<std::pair<float, float>>& enemySpawns, int blockSize) = 0;
    // The current map's file got a new name: write its score file under the new name.
    virtual void MapFileRenamed() = 0;
};

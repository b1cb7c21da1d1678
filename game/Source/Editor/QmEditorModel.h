#pragma once
// What the editor changes in the world's current map, with undo and redo.
//
// Contract:
// - Every change of the grid, the block size, the name and the two flags goes through here; a
//   change that leaves the map as it was records nothing and leaves `modified` as it was.
// - Each change is one undo step (a stroke of painting with a held button is one step); at least
//   kUndoDepth steps are kept, the oldest dropped first. A new change forgets what could be redone.
// - Saving is not a step: it writes only a modified map and clears `modified`. Undo and redo set
//   `modified` whenever the grid or the size then differ from what was last saved or loaded.
// - The name and the flags are stored in the map file at once (CommitName, SetLocked,
//   SetEditable), also when undone or redone.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"

#include <array>
#include <cstddef>
#include <deque>
#include <string>

class QmEditorModel {
public:
    static constexpr size_t kUndoDepth = 256;
    using Grid = std::array<BlockId, QmCoreEnvironmentManager::kCellCount>;

    // The parts of the map record the editor changes.
    struct Snapshot {
        Grid blocks{};
        int32_t blockSize = QmCoreEnvironmentManager::kLargeBlockSize;
        std::string name;
        bool locked = false;
        bool editable = true;
        bool operator==(const Snapshot&) const = default;
    };

    explicit QmEditorModel(QmCoreEnvironmentManager& world);

    // Starts on the world's current map as loaded: no history, not modified.
    void Begin();
    // The map was loaded again from disk: what is saved is what the world now holds (history kept).
    void Reloaded();
    Snapshot Current() const;
    bool Modified() const { return modified; }

    // ---- Changes (each true when the map changed) ----
    // One cell; Start first clears every other Start cell.
    bool Paint(int x, int y, BlockId id);
    // Every playing cell; with Start the old Start cells are cleared first.
    bool Fill(BlockId id);
    // The map becomes Blank, or a generated level; both always mark the map modified.
    bool Clear();
    bool Generate();
    // 64-pixel blocks (10 x 10) and 32-pixel blocks (20 x 20) swap; every cell keeps its value.
    bool SwitchSize();
    // The name (empty: the default name) is stored at once.
    bool Rename(const std::string& name);
    bool SetLocked(bool flag);
    bool SetEditable(bool flag);
    // The whole grid replaced (a copied map); recordUndo false writes back edits that were
    // already recorded (returning from the copy without choosing).
    bool ReplaceGrid(const Grid& grid, bool recordUndo);

    // Painting with a held button: the cells painted between these make one undo step.
    void BeginStroke();
    void EndStroke();

    // False (and nothing written) when the map is not modified.
    bool Save();

    bool Undo();
    bool Redo();
    size_t UndoCount() const { return undo.size(); }
    size_t RedoCount() const { return redo.size(); }

private:
    // Runs a change; records the state before it when something changed.
    template <typename Change> bool Apply(Change change, bool alwaysModifies = false);
    void Push(std::deque<Snapshot>& stack, Snapshot snapshot);
    void Restore(const Snapshot& snapshot);
    bool DiffersFromSaved() const;

    QmCoreEnvironmentManager& world;
    std::deque<Snapshot> undo;
    std::deque<Snapshot> redo;
    Snapshot saved;
    bool modified = false;
    bool strokeOpen = false;
    bool strokeRecorded = false;
};

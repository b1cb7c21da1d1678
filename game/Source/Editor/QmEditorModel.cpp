#include "Editor/QmEditorModel.h"

#include <utility>

QmEditorModel::QmEditorModel(QmCoreEnvironmentManager& world) : world(world) {
    Begin();
}

void QmEditorModel::Begin() {
    undo.clear();
    redo.clear();
    saved = Current();
    modified = false;
    strokeOpen = false;
    strokeRecorded = false;
}

void QmEditorModel::Reloaded() {
    saved = Current();
    modified = false;
}

QmEditorModel::Snapshot QmEditorModel::Current() const {
    Snapshot snapshot;
    snapshot.blocks = world.blocks;
    snapshot.blockSize = world.blockSize;
    snapshot.name = world.mapName;
    snapshot.locked = world.locked;
    snapshot.editable = world.editable;
    return snapshot;
}

template <typename Change> bool QmEditorModel::Apply(Change change, bool alwaysModifies) {
    Snapshot before = Current();
    change();
    const Snapshot after = Current();
    const bool changed = !(before == after);
    if (changed && !(strokeOpen && strokeRecorded)) {
        Push(undo, std::move(before));
        redo.clear();
        strokeRecorded = strokeOpen;
    }
    const bool gridOrSize = before.blocks != after.blocks || before.blockSize != after.blockSize;
    if (gridOrSize || alwaysModifies) {
        modified = true;
    }
    return changed;
}

void QmEditorModel::Push(std::deque<Snapshot>& stack, Snapshot snapshot) {
    stack.push_back(std::move(snapshot));
    while (stack.size() > kUndoDepth) {
        stack.pop_front();
    }
}

bool QmEditorModel::Paint(int x, int y, BlockId id) {
    if (x < 0 || y < 0 || x >= world.mapSize || y >= world.mapSize) {
        return false;
    }
    return Apply([&] {
        if (id == Block::Start) {
            // Only the painted cell may stay Start; the others are cleared one by one so that a
            // cell that is already the only Start is not touched at all.
            for (int cx = 0; cx < QmCoreEnvironmentManager::kGridSize; ++cx) {
                for (int cy = 0; cy < QmCoreEnvironmentManager::kGridSize; ++cy) {
                    if ((cx != x || cy != y) && world.GetBlock(cx, cy) == Block::Start) {
                        world.SetBlock(cx, cy, Block::Blank);
                    }
                }
            }
        }
        if (world.GetBlock(x, y) != id) {
            world.SetBlock(x, y, id);
        }
    });
}

bool QmEditorModel::Fill(BlockId id) {
    return Apply([&] {
        if (id == Block::Start) {
            world.RemoveStart();
        }
        if (!world.AllBlocksAre(id)) {
            world.FillMap(id);
        }
    });
}

bool QmEditorModel::Clear() {
    return Apply([&] { world.ClearMap(); }, true);
}

bool QmEditorModel::Generate() {
    return Apply([&] { world.GenerateLevel(); }, true);
}

bool QmEditorModel::SwitchSize() {
    return Apply([&] {
        world.SetBlockSize(world.blockSize != QmCoreEnvironmentManager::kSmallBlockSize
                               ? QmCoreEnvironmentManager::kSmallBlockSize
                               : QmCoreEnvironmentManager::kLargeBlockSize);
    });
}

bool QmEditorModel::Rename(const std::string& name) {
    const std::string wanted = name.empty() ? world.defaultMapName : name;
    if (wanted == world.mapName) {
        return false;
    }
    return Apply([&] {
        world.mapName = wanted;
        world.CommitName();
    });
}

bool QmEditorModel::SetLocked(bool flag) {
    if (flag == world.locked) {
        return false;
    }
    return Apply([&] { world.SetLocked(flag); });
}

bool QmEditorModel::SetEditable(bool flag) {
    if (flag == world.editable) {
        return false;
    }
    return Apply([&] { world.SetEditable(flag); });
}

bool QmEditorModel::ReplaceGrid(const Grid& grid, bool recordUndo) {
    const auto write = [&] {
        for (int x = 0; x < QmCoreEnvironmentManager::kGridSize; ++x) {
            for (int y = 0; y < QmCoreEnvironmentManager::kGridSize; ++y) {
                const BlockId id = grid[static_cast<size_t>(x * QmCoreEnvironmentManager::kGridSize + y)];
                if (world.GetBlock(x, y) != id) {
                    world.SetBlock(x, y, id);
                }
            }
        }
    };
    if (recordUndo) {
        return Apply(write);
    }
    const Grid before = world.blocks;
    write();
    modified = DiffersFromSaved();
    return before != world.blocks;
}

void QmEditorModel::BeginStroke() {
    strokeOpen = true;
    strokeRecorded = false;
}

void QmEditorModel::EndStroke() {
    strokeOpen = false;
    strokeRecorded = false;
}

bool QmEditorModel::Save() {
    if (!modified) {
        return false;
    }
    world.SaveMap(false);
    saved = Current();
    modified = false;
    return true;
}

bool QmEditorModel::Undo() {
    EndStroke();
    if (undo.empty()) {
        return false;
    }
    Push(redo, Current());
    Restore(undo.back());
    undo.pop_back();
    modified = DiffersFromSaved();
    return true;
}

bool QmEditorModel::Redo() {
    EndStroke();
    if (redo.empty()) {
        return false;
    }
    Push(undo, Current());
    Restore(redo.back());
    redo.pop_back();
    modified = DiffersFromSaved();
    return true;
}

void QmEditorModel::Restore(const Snapshot& snapshot) {
    if (world.blockSize != snapshot.blockSize) {
        world.SetBlockSize(snapshot.blockSize);
    }
    for (int x = 0; x < QmCoreEnvironmentManager::kGridSize; ++x) {
        for (int y = 0; y < QmCoreEnvironmentManager::kGridSize; ++y) {
            const BlockId id =
                snapshot.blocks[static_cast<size_t>(x * QmCoreEnvironmentManager::kGridSize + y)];
            if (world.GetBlock(x, y) != id) {
                world.SetBlock(x, y, id);
            }
        }
    }
    if (world.mapName != snapshot.name) {
        world.mapName = snapshot.name;
        world.CommitName();
    }
    if (world.locked != snapshot.locked) {
        world.SetLocked(snapshot.locked);
    }
    if (world.editable != snapshot.editable) {
        world.SetEditable(snapshot.editable);
    }
}

bool QmEditorModel::DiffersFromSaved() const {
    return world.blocks != saved.blocks || world.blockSize != saved.blockSize;
}

// The editor's changes to the map: what marks it modified, what a save writes, and undo/redo
// across every kind of change.
#include "Editor/QmEditorModel.h"

#include "Platform/VeFiles.h"
#include "game/Environment/CoreEnvironmentManager/WorldFixture.h"

#include <algorithm>
#include <functional>
#include <random>

namespace {
class EditorModelTest : public WorldTest {
protected:
    void SetUp() override {
        WorldTest::SetUp();
        AddTour("Forest", "Forest", {"Level.map"});
        world.LoadLevel(0, false);
        model.Begin();
    }

    // The map file as the world writes it, deciphered.
    std::string MapBytes() {
        world.WriteMap("probe.map");
        std::string bytes;
        for (const std::string& line : ReadLines("probe.map")) {
            bytes += line + "\n";
        }
        return bytes;
    }

    int64_t MapFileStamp() {
        std::string bytes;
        ReadFileBytes(Game("Maps/Forest/" + world.CurrentMapFile()), bytes);
        return static_cast<int64_t>(std::hash<std::string>()(bytes));
    }

    QmEditorModel model{world};
};
} // namespace

TEST_F(EditorModelTest, OnlyRealChangesMarkTheMapModified) {
    EXPECT_FALSE(model.Paint(2, 3, Block::Blank)) << "painting the block the cell holds";
    EXPECT_FALSE(model.Fill(Block::Blank));
    EXPECT_FALSE(model.Modified());
    EXPECT_EQ(model.UndoCount(), 0u);

    EXPECT_TRUE(model.Paint(2, 3, 4));
    EXPECT_TRUE(model.Modified());
    EXPECT_FALSE(model.Paint(2, 3, 4));
    EXPECT_EQ(model.UndoCount(), 1u);
    EXPECT_FALSE(model.Paint(world.mapSize, 0, 4)) << "outside the playing area";

    // Start stays single: painting it elsewhere clears the old one.
    EXPECT_TRUE(model.Paint(0, 0, Block::Start));
    EXPECT_TRUE(model.Paint(5, 5, Block::Start));
    EXPECT_EQ(world.GetBlock(0, 0), Block::Blank);
    // The Fill button with Start leaves a map of Start cells only.
    EXPECT_TRUE(model.Fill(Block::Start));
    EXPECT_TRUE(world.AllBlocksAre(Block::Start));
}

TEST_F(EditorModelTest, SavingWritesOnlyAModifiedMapAndUndoAfterASaveModifiesAgain) {
    const int64_t before = MapFileStamp();
    EXPECT_FALSE(model.Save());
    EXPECT_EQ(MapFileStamp(), before) << "an unmodified map is not written";

    model.Paint(1, 1, 3);
    EXPECT_TRUE(model.Save());
    EXPECT_FALSE(model.Modified());
    EXPECT_NE(MapFileStamp(), before);

    EXPECT_TRUE(model.Undo()) << "the paint is undone, not the save";
    EXPECT_EQ(world.GetBlock(1, 1), Block::Blank);
    EXPECT_TRUE(model.Modified());
    EXPECT_TRUE(model.Redo());
    EXPECT_FALSE(model.Modified()) << "back to what was saved";
}

TEST_F(EditorModelTest, TheSizeSwitchThereAndBackKeepsEveryCell) {
    world.SetBlockSize(32);
    model.Begin();
    for (int i = 0; i < 400; ++i) {
        world.SetBlock(i / 20, i % 20, static_cast<BlockId>(i % 7));
    }
    const auto cells = world.blocks;
    EXPECT_TRUE(model.SwitchSize());
    EXPECT_EQ(world.mapSize, 10);
    EXPECT_TRUE(model.Modified());
    EXPECT_TRUE(model.SwitchSize());
    EXPECT_EQ(world.mapSize, 20);
    EXPECT_EQ(world.blocks, cells);
}

// (A stroke painted with a held button is one step: the editor scene's test paints one.)
TEST_F(EditorModelTest, TheHistoryKeepsTwoHundredSteps) {
    for (int i = 0; i < 300; ++i) {
        model.Paint(i % 10, (i / 10) % 10, 1 + (i + i / 100) % 5);
    }
    EXPECT_GE(model.UndoCount(), 200u);
    model.Undo();
    model.Paint(0, 0, 6);
    EXPECT_EQ(model.RedoCount(), 0u) << "a new change forgets what could be redone";
}

TEST_F(EditorModelTest, UndoingEveryRandomEditRestoresTheMapByteForByte) {
    std::mt19937 random(20261124);
    for (int round = 0; round < 12; ++round) {
        model.Begin();
        const std::string original = MapBytes();
        const QmEditorModel::Snapshot start = model.Current();
        const std::string startFile = world.CurrentMapFile();
        const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<uint32_t>(n)); };
        const std::function<void()> edits[] = {
            [&] {
                model.Paint(below(world.mapSize), below(world.mapSize), static_cast<BlockId>(below(256)));
            },
            [&] { model.Fill(static_cast<BlockId>(below(6))); },
            [&] { model.Generate(); },
            [&] { model.SwitchSize(); },
            [&] { model.Rename("Map " + std::to_string(below(5))); },
            [&] { model.SetLocked(below(2) == 0); },
            [&] { model.SetEditable(below(2) == 0); },
            [&] { model.Clear(); },
        };
        const int steps = 5 + below(30);
        for (int s = 0; s < steps; ++s) {
            edits[std::max(0, below(10) - 2)](); // painting three times as often as each other edit
        }
        const QmEditorModel::Snapshot end = model.Current();
        while (model.Undo()) {
        }
        EXPECT_EQ(model.Current(), start) << "round " << round;
        EXPECT_EQ(MapBytes(), original) << "round " << round;
        EXPECT_EQ(world.CurrentMapFile(), startFile);
        EXPECT_EQ(world.GetMapField('l'), start.locked ? "1" : "0") << "flags are stored again";
        EXPECT_FALSE(model.Modified());
        while (model.Redo()) {
        }
        EXPECT_EQ(model.Current(), end) << "round " << round;
        // The next round starts from the map as saved.
        model.Save();
    }
}

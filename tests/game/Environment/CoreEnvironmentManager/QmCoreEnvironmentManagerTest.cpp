#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"

#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Platform/VeRandom.h"
#include "Support/HaltCapture.h"
#include "Support/LogCapture.h"
#include "WorldFixture.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace {
int Index(int x, int y) {
    return x * 20 + y;
}

// Passability of row y from x = -1 to x = 20: '#' a wall, '.' open.
std::string PassableRow(const QmCoreEnvironmentManager& world, int y, bool gatesClosed = false) {
    std::string row;
    for (int x = -1; x <= 20; ++x) {
        row += world.IsPassable(x, y, gatesClosed) ? '.' : '#';
    }
    return row;
}

// Counts what goes through the virtual operations, as the client's cell cache would see it.
class CountingWorld : public QmCoreEnvironmentManager {
public:
    void ClearMap() override {
        ++clears;
        QmCoreEnvironmentManager::ClearMap();
    }
    void SetBlockSize(int size) override {
        sizes.push_back(size);
        QmCoreEnvironmentManager::SetBlockSize(size);
    }
    void SetBlock(int x, int y, BlockId id) override {
        ++setBlocks;
        QmCoreEnvironmentManager::SetBlock(x, y, id);
    }
    int clears = 0;
    int setBlocks = 0;
    std::vector<int> sizes;
};
} // namespace

// ---- The map record ----

TEST(QmCoreEnvironmentManagerRecordTest, PassabilityFollowsBlocksGatesAndTheOuterRing) {
    QmCoreEnvironmentManager world;
    world.SetBlockSize(64);
    // Row 0 from x = 0: a block, the last default block, a decoration, a gate, ids out of range.
    const BlockId row0[] = {1, 149, 150, Block::RedGate, 9999, -4};
    for (int x = 0; x < 6; ++x) {
        world.SetBlock(x, 0, row0[x]);
    }
    // From x = -1 to 20: the ring around the 10 x 10 playing area is a wall.
    EXPECT_EQ(PassableRow(world, 0), "###.#......###########") << "gates closed";
    EXPECT_EQ(PassableRow(world, -1), std::string(22, '#'));
    EXPECT_EQ(PassableRow(world, 9), "#..........###########");
    world.gatesOpen = true;
    EXPECT_EQ(PassableRow(world, 0), "###........###########");
    EXPECT_EQ(PassableRow(world, 0, true), "###.#......###########") << "asked with gatesClosed";

    world.SetBlockSize(32);
    EXPECT_EQ(PassableRow(world, 0), "###..................#");
}

TEST(QmCoreEnvironmentManagerRecordTest, FillRemoveStartSpawnsAndGatesWorkOnThePlayingArea) {
    CountingWorld world;
    EXPECT_TRUE(world.AllBlocksAre(0));
    world.SetBlock(15, 15, 7); // outside the 10 x 10 area
    EXPECT_TRUE(world.AllBlocksAre(0));
    world.setBlocks = 0;
    world.FillMap(3);
    EXPECT_EQ(world.setBlocks, 100) << "every change goes through SetBlock for the cell cache";
    EXPECT_TRUE(world.AllBlocksAre(3));
    EXPECT_EQ(world.blocks[Index(10, 0)], 0);

    world.SetBlock(2, 2, Block::Start);
    world.SetBlock(18, 18, Block::Start);
    EXPECT_FALSE(world.AllBlocksAre(3));
    world.RemoveStart();
    EXPECT_EQ(world.GetBlock(2, 2), 0);
    EXPECT_EQ(world.GetBlock(18, 18), 0) << "the whole grid loses its Start cells";

    world.SetBlock(4, 1, Block::Enemy);
    world.SetBlock(1, 7, Block::Enemy);
    world.SetBlock(1, 2, Block::Enemy);
    world.SetBlock(11, 1, Block::Enemy);
    using Spawns = std::vector<std::pair<float, float>>;
    EXPECT_EQ(world.GetEnemySpawns(), (Spawns{{64, 128}, {64, 448}, {256, 64}}));
    world.SetBlockSize(32);
    EXPECT_EQ(world.GetEnemySpawns(), (Spawns{{32, 64}, {32, 224}, {128, 32}, {352, 32}}));

    world.SetBlockSize(64);
    world.SetBlock(5, 5, Block::RedGate);
    world.SetBlock(15, 5, Block::RedGate);
    world.OpenGates();
    EXPECT_EQ(world.GetBlock(5, 5), 0);
    EXPECT_EQ(world.GetBlock(15, 5), Block::RedGate) << "only the playing area";
    EXPECT_EQ(world.RandomColourBlock(), 1);
}

TEST(QmCoreEnvironmentManagerRecordTest, ReportErrorStopsAtAnAssertionNamingTheSource) {
    QmCoreEnvironmentManager world;
    LogCapture log;
    MessageBoxCapture capture;
    EXPECT_THROW(world.ReportError("Something broke"), HaltIntercepted);
    ASSERT_EQ(capture.boxes.size(), 1u);
    const std::string source = "game/Source/Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.cpp";
    EXPECT_THAT(capture.boxes[0].text, ::testing::StartsWith("Assertion failed in " + source + ", line "));
    EXPECT_EQ(log.all, "Something broke\n");
}

// ---- Map files ----

TEST_F(WorldTest, SavedMapLoadsBackWithEveryCellAndANewUidEachSave) {
    AddTour("Forest", "Forest", {});
    world.SaveMap(true);
    ASSERT_EQ(world.tourLevels[0], Lines{"Level.map"});
    EXPECT_EQ(world.levelIndex, 0);
    EXPECT_TRUE(FileExists(Game("Maps/Forest/Level.map")));

    world.SetBlock(1, 1, Block::Start);
    world.SetBlock(5, 9, 4);
    world.SetBlock(14, 3, 160); // outside the 10 x 10 area, kept and saved
    world.mapName = "Forest Run";
    world.locked = true;
    world.SaveMap(false);
    const std::string firstUid = world.mapUid;
    world.SaveMap(false);
    EXPECT_NE(world.mapUid, firstUid) << "every save gives the map a new identity";
    EXPECT_FALSE(world.mapUid.empty());

    const auto saved = world.blocks;
    world.ClearMap();
    world.LoadLevel(0, false);
    EXPECT_EQ(world.blocks, saved);
    EXPECT_EQ(MapState(world), "Forest Run: 10 x 10 of 64, locked, editable, tour uidForest, start 1,1");

    // The file lines are those of the format, enciphered after the marker.
    Lines raw;
    ASSERT_TRUE(ReadTextLines(Game("Maps/Forest/Level.map"), raw));
    ASSERT_EQ(raw.size(), 27u);
    EXPECT_EQ(raw[0], QmCipherFile::kMarker);
    EXPECT_EQ(QmTextCipher::DecodeText(4, raw[3]), "u" + world.mapUid);

    // Switching the small map to 20 x 20 brings the outer cells into play.
    world.SetBlockSize(32);
    world.SaveMap(false);
    world.LoadLevel(0, false);
    EXPECT_EQ(MapState(world), "Forest Run: 20 x 20 of 32, locked, editable, tour uidForest, start 1,1");
    EXPECT_EQ(world.GetBlock(14, 3), 160);
}

TEST_F(WorldTest, LoadingResetsTheRecordAndReadsHandWrittenFiles) {
    AddTour("Hand", "Hand", {});
    const std::string data = std::string(QM_SOURCE_DIR) + "/tests/data/environment/";
    ASSERT_TRUE(CopyFileTo(data + "HandWritten.map", Game("Maps/Hand/HandMade.map")));
    ASSERT_TRUE(CopyFileTo(data + "Faulty.map", Game("Maps/Hand/Faulty.map")));
    world.tourLevels[0] = {"HandMade.map", "Faulty.map", "Missing.map"};

    world.SetBlockSize(32);
    world.locked = true;
    world.LoadLevel(0, false);
    EXPECT_EQ(MapState(world), "Hand Made: 10 x 10 of 64, editable, tour , start 1,8");

    world.LoadLevel(1, false);
    EXPECT_EQ(MapState(world), "A Name Much Lon: 10 x 10 of 64, locked, tour , start 0,0");
    EXPECT_EQ(world.GetMapField('n'), "A Name Much Longer Than Fifteen") << "the file keeps the long name";
    world.SaveMap(false);
    EXPECT_EQ(world.GetMapField('n'), "A Name Much Lon") << "until it is saved again";

    world.startX = 3;
    world.LoadLevel(2, false);
    // A missing file gives the cleared map with the default name; without Start the start stays.
    EXPECT_EQ(MapState(world), "Level: 10 x 10 of 64, editable, tour , start 3,0");
    EXPECT_TRUE(world.AllBlocksAre(0));
}

TEST_F(WorldTest, LoadingPastTheEndAddsANewMapAndLoadsGoThroughTheVirtualOperations) {
    AddTour("Forest", "Forest", {"Level.map"});
    world.LoadLevel(1, false);
    EXPECT_EQ(Maps(world, 0), "Level.map,Level_2.map");
    EXPECT_EQ(world.levelIndex, 1);
    EXPECT_EQ(world.mapName, "Level");
    EXPECT_TRUE(FileExists(Game("Maps/Forest/Level_2.map")));
    EXPECT_TRUE(world.AllBlocksAre(0));

    // The base SaveMap stores nothing; every load clears the map and sets its size, 64 pixels first.
    WritePlain("Maps/Forest/Big.map", {"i32", "nBig"});
    CountingWorld counting;
    counting.tours = world.tours;
    counting.tourFolders = world.tourFolders;
    counting.tourLevels = {{"Big.map"}};
    counting.LoadLevel(0, false);
    counting.LoadLevel(0, false);
    EXPECT_EQ(counting.clears, 2);
    EXPECT_EQ(counting.sizes, (std::vector<int>{32, 64, 32}));
    counting.LoadLevel(5, false);
    EXPECT_EQ(counting.tourLevels[0].size(), 1u);
    EXPECT_EQ(counting.mapName, "Level");
}

TEST_F(WorldTest, RacerAndEnemiesFollowLoadsAndWritesOutsideStartUp) {
    AddTour("Forest", "Forest", {});
    WritePlain(
        "Maps/Forest/Cows.map",
        MapLines("Cows", "uidForest",
                 {{Index(1, 1), Block::Start}, {Index(3, 4), Block::Start}, {Index(2, 2), Block::Enemy}}));
    world.tourLevels[0] = {"Cows.map"};
    world.SetGameplayLink(&gameplay);

    world.startingUp = true;
    world.LoadLevel(0, false);
    EXPECT_EQ(gameplay.Told(), "");
    EXPECT_FLOAT_EQ(world.startX, 3);
    EXPECT_FLOAT_EQ(world.startY, 4);

    world.startingUp = false;
    world.LoadLevel(0, false);
    EXPECT_EQ(gameplay.Told(), "racer 1,1, racer 3,4, ready, size 64, cows 128,128");

    world.RemoveStart();
    world.SetBlock(6, 2, Block::Start);
    world.SaveMap(false);
    EXPECT_EQ(gameplay.Told(), "racer 6,2, ready, size 64, cows 128,128");
}

TEST_F(WorldTest, AMapClaimingAnotherTourIsReportedInATourThatDoesNotCollect) {
    AddTour("Strict", "Strict", {}, false, false);
    WritePlain("Maps/Strict/Stray.map", MapLines("Stray", "someone-else"));
    WritePlain("Maps/Strict/Own.map", MapLines("Own", "uidStrict"));
    world.tourLevels[0] = {"Stray.map", "Own.map"};
    world.LoadLevel(1, false);
    EXPECT_EQ(world.mapName, "Own");

    MessageBoxCapture capture;
    EXPECT_THROW(world.LoadLevel(0, false), HaltIntercepted);

    world.tours[0].collectsFiles = true;
    world.LoadLevel(0, false);
    EXPECT_EQ(world.mapTourUid, "someone-else");
}

TEST_F(WorldTest, DownloadedMapsLoadFromTheCacheAndMoveInTheList) {
    WritePlain("Cache/42/Shared.map", MapLines("Shared"));
    world.cacheFiles = {"42/Shared.map", "../../outside.map", "42/Other.map"};
    world.LoadLevel(0, true);
    EXPECT_EQ(world.mapName, "Shared");
    world.LoadLevel(1, true);
    EXPECT_EQ(world.mapName, "Level") << "an entry that leaves the cache is refused";
    world.LoadLevel(7, true);
    EXPECT_EQ(world.mapName, "Level");
    EXPECT_TRUE(world.tourLevels.empty());

    world.MoveCacheFileDown(0, true);
    EXPECT_EQ(world.cacheFiles, (Lines{"42/Other.map", "../../outside.map", "42/Shared.map"}));
    world.MoveCacheFileDown(2, false);
    world.MoveCacheFileUp(0, false);
    world.MoveCacheFileUp(2, false);
    EXPECT_EQ(world.cacheFiles, (Lines{"42/Other.map", "42/Shared.map", "../../outside.map"}));
    world.MoveCacheFileUp(2, true);
    EXPECT_EQ(world.cacheFiles.front(), "../../outside.map");
}

TEST_F(WorldTest, GeneratedFileNamesAreFreeCamelCaseNames) {
    CreateFolder(Game("Maps/Forest"));
    WritePlain("Maps/Forest/Level.map", {"x"});
    WritePlain("Maps/Forest/Level_2.map", {"x"});
    EXPECT_EQ(world.GenerateFileName(false, "level", "Maps/Forest/", ".map", ""), "Level_3.map");
    EXPECT_EQ(world.GenerateFileName(false, "level", "Maps/Forest/", ".map", "Level.map"), "Level.map");
    for (int n = 3; n <= 19; ++n) {
        WritePlain("Maps/Forest/Level_" + std::to_string(n) + ".map", {"x"});
    }
    const std::string random = world.GenerateFileName(false, "Level", "Maps/Forest/", ".map", "");
    EXPECT_EQ(random.rfind("Level_", 0), 0u);
    EXPECT_FALSE(FileExists(Game("Maps/Forest/" + random)));
    EXPECT_EQ(world.GenerateFileName(false, "Level", "Maps/Forest/", ".map", "Level_48213.map"),
              "Level_48213.map")
        << "a numbered name past the nineteenth stays";
    EXPECT_NE(world.GenerateFileName(false, "Level", "Maps/Forest/", ".map", "Level_x1.map"), "Level_x1.map");

    EXPECT_EQ(world.GenerateFileName(true, "forest", "Maps/", "", ""), "Forest_2");

    EXPECT_HALT(
        world.GenerateFileName(false, "", "Maps/", ".map", ""), "Error: Cannot generate empty filename",
        "An unknown error occured while generating filename.\n\nPlease download the latest version or "
        "contact Velnosoft.");
}

TEST_F(WorldTest, SetMapFieldRewritesTaggedLinesAndEnciphersPlainFiles) {
    AddTour("Forest", "Forest", {"Level.map"});
    WritePlain("Maps/Forest/Level.map", {"nLevel", "l1", "x", "l1"});
    EXPECT_EQ(world.SetMapField('l', "0"), "1");
    EXPECT_EQ(ReadLines("Maps/Forest/Level.map"), (Lines{"nLevel", "l0", "x", "l0"}));
    EXPECT_EQ(world.SetMapField('e', "1"), "");
    EXPECT_EQ(ReadLines("Maps/Forest/Level.map"), (Lines{"nLevel", "l0", "x", "l0", "e1"}));
    Lines raw;
    ASSERT_TRUE(ReadTextLines(Game("Maps/Forest/Level.map"), raw));
    EXPECT_EQ(raw[0], QmCipherFile::kMarker) << "a plain file is enciphered afterwards";

    EXPECT_EQ(world.SetMapField('t', "x", 5, 0), "") << "an unknown tour writes nothing";
    EXPECT_EQ(world.SetMapField('t', "x", 0, 9), "") << "an unknown map writes nothing";
    EXPECT_EQ(world.SetMapField('t', "x", 0, 0, "../../../escape.map"), "");
    EXPECT_FALSE(FileExists(data.path + "/escape.map"));

    world.SetLocked(true);
    world.SetEditable(false);
    EXPECT_EQ(world.GetMapField('l'), "1");
    EXPECT_EQ(world.GetMapField('e'), "0");
    EXPECT_TRUE(world.locked);
    EXPECT_FALSE(world.editable);
}

TEST_F(WorldTest, RenamingAMapMovesItsFilesAndTellsTheRace) {
    AddTour("Forest", "Forest", {"Level.map", "Other.map"});
    WritePlain("Maps/Forest/Level.dat", {"scores"});
    WritePlain("Maps/Forest/DarkWoods.dat", {"stray scores of no map"});
    world.LoadLevel(0, false);
    world.SetGameplayLink(&gameplay);

    world.mapName = "dark woods";
    world.CommitName();
    EXPECT_EQ(Maps(world, 0), "DarkWoods.map,Other.map");
    EXPECT_EQ(Files("Maps/Forest"), "DarkWoods.dat,DarkWoods.map,Other.map,tour.dat");
    EXPECT_EQ(ReadLines("Maps/Forest/DarkWoods.dat"), Lines{"scores"}) << "the score file moves with its map";
    EXPECT_EQ(world.GetMapField('n'), "dark woods");
    EXPECT_EQ(gameplay.Told(), "renamed");

    world.mapName = "Dark  Woods"; // the same file name: only the name changes
    world.CommitName();
    EXPECT_EQ(Maps(world, 0), "DarkWoods.map,Other.map");
    EXPECT_EQ(gameplay.Told(), "");

    world.mapName.clear();
    world.CommitName();
    EXPECT_EQ(world.mapName, "Level");
    EXPECT_EQ(Maps(world, 0), "Level.map,Other.map");
}

TEST_F(WorldTest, DeletingAMapRemovesItsScoreFileOnlyWithIt) {
    AddTour("Forest", "Forest", {"A.map", "B.map", "C.map"});
    WritePlain("Maps/Forest/A.dat", {"s"});
    WritePlain("Maps/Forest/C.dat", {"s"});
    RemoveFile(Game("Maps/Forest/C.map"));

    EXPECT_TRUE(world.DeleteLevel(0, 0, false));
    EXPECT_EQ(Files("Maps/Forest"), "B.map,C.dat,tour.dat");
    EXPECT_EQ(Maps(world, 0), "A.map,B.map,C.map") << "the list stays unless asked";

    EXPECT_FALSE(world.DeleteLevel(0, 2, false));
    EXPECT_EQ(Files("Maps/Forest"), "B.map,C.dat,tour.dat") << "a missing map keeps its score file";
    EXPECT_FALSE(world.DeleteLevel(0, 3, true));
    EXPECT_FALSE(world.DeleteLevel(1, 0, true));
    EXPECT_FALSE(world.DeleteLevel(-1, 0, true));

    EXPECT_TRUE(world.DeleteLevel(0, 1, true));
    EXPECT_EQ(Maps(world, 0), "A.map,C.map");
}

TEST_F(WorldTest, AnInterruptedSaveLeavesTheOldMapWhole) {
    AddTour("Forest", "Forest", {"Level.map"});
    world.LoadLevel(0, false);
    const Lines before = ReadLines("Maps/Forest/Level.map");
    ASSERT_TRUE(CreateFolder(Game("Maps/Forest/Level.map.tmp"))); // the temporary file cannot be made
    LogCapture quiet; // the failed write is logged (QmCipherFileTest looks at that)
    world.SetBlock(3, 3, 2);
    world.SaveMap(false);
    EXPECT_EQ(ReadLines("Maps/Forest/Level.map"), before);
}

// ---- Tours ----

TEST_F(WorldTest, ANewTourGetsAUidTheDefaultNameAndAFolder) {
    SeedRand(3);
    world.NewTour();
    EXPECT_EQ(Tours(world), "MyTour");
    EXPECT_TRUE(IsDirectory(Game("Maps/MyTour")));
    EXPECT_EQ(ReadLines("Maps/MyTour/tour.dat"),
              (Lines{"o0", "nMy Tour", "l0", "e1", "a1", "u" + world.tours[0].uid}));

    world.NewTour();
    EXPECT_EQ(Tours(world), "MyTour,MyTour_2");
    EXPECT_NE(world.tours[1].uid, world.tours[0].uid);
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(Game("Maps/tours.dat"), bytes));
    EXPECT_NE(bytes.substr(bytes.size() - 2), "\r\n") << "the last tour line has no line end";
}

TEST_F(WorldTest, SavingATourRetagsItsMapsAndRenamesItsFolder) {
    const int t = AddTour("Forest", "Forest", {"A.map", "B.map"});
    world.tours[t].uid.clear();
    world.SaveTour(t, false);
    const std::string uid = world.tours[t].uid;
    EXPECT_FALSE(uid.empty());
    world.tourIndex = t;
    EXPECT_EQ(world.GetMapField('t', "A.map"), uid) << "a new uid retags every map";
    EXPECT_EQ(world.GetMapField('t', "B.map"), uid);

    world.tours[t].name = "deep forest";
    world.SaveTour(t, false);
    EXPECT_EQ(Tours(world), "DeepForest");
    EXPECT_FALSE(IsDirectory(Game("Maps/Forest")));
    EXPECT_TRUE(FileExists(Game("Maps/DeepForest/A.map"))) << "the maps stay inside the renamed folder";

    const int official = AddTour("Shipped", "", {}, true);
    EXPECT_EQ(world.tourFolders[official], "Shipped") << "an official tour without a name keeps its folder";
    EXPECT_EQ(world.tours[official].name, "");
}

TEST_F(WorldTest, ScanCollectsCopiedMapsDeletesOrphanScoresAndRenamesFiles) {
    AddTour("Forest", "Forest", {"Level.map"});
    AddTour("Strict", "Strict", {"Own.map"}, false, false);
    world.tourFolders.push_back("Gone"); // listed, but no folder under the game folder
    world.tours.emplace_back();
    world.tourLevels.emplace_back();
    world.WriteTours();
    WritePlain("Maps/Forest/copied by hand.map", MapLines("sunny hills"));
    WritePlain("Maps/Forest/copied by hand.dat", {"scores"});
    WritePlain("Maps/Forest/Orphan.dat", {"scores of a lost map"});
    WritePlain("Maps/Forest/Level.dat", {"kept"});
    WritePlain("Maps/Forest/notes.txt", {"left alone"});
    WritePlain("Maps/Strict/Stray.map", MapLines("Stray"));
    CreateFolder(world.programMapsFolder + "/Shipped");
    CreateFolder(world.programMapsFolder + "/Forest");

    world.tourIndex = 1;
    QmCoreEnvironmentManager fresh;
    fresh.programMapsFolder = world.programMapsFolder;
    fresh.tourIndex = 1;
    ASSERT_TRUE(fresh.ScanWorld());
    EXPECT_EQ(fresh.tourIndex, 1);
    EXPECT_EQ(Tours(fresh), "Forest,Strict,Gone,Shipped");
    EXPECT_EQ(Maps(fresh, 0), "Level.map,SunnyHills.map");
    EXPECT_EQ(Maps(fresh, 1), "Own.map") << "a tour that does not collect keeps its own list";
    // The copied map and its scores take its name's form; an orphan score file goes.
    EXPECT_EQ(Files("Maps/Forest"), "Level.dat,Level.map,SunnyHills.dat,SunnyHills.map,notes.txt,tour.dat");
    EXPECT_EQ(ReadLines("Maps/Forest/SunnyHills.dat"), Lines{"scores"});
    EXPECT_EQ(Files("Maps/Strict"), "Own.map,Stray.map,tour.dat");
    EXPECT_EQ(fresh.tours[2].name, "") << "a missing folder keeps the default record";
    EXPECT_EQ(Join(ListFolders(Game("Maps"))), "Forest,Strict") << "shipped tours are not copied";

    // A map whose file does not carry its name's form is renamed at the next scan.
    WritePlain("Maps/Forest/Level.map", MapLines("meadow"));
    ASSERT_TRUE(fresh.ScanWorld());
    EXPECT_EQ(Maps(fresh, 0), "Meadow.map,SunnyHills.map");
    EXPECT_EQ(Files("Maps/Forest"), "Meadow.dat,Meadow.map,SunnyHills.dat,SunnyHills.map,notes.txt,tour.dat");
    EXPECT_EQ(ReadLines("Maps/Forest/Meadow.dat"), Lines{"kept"});
}

TEST_F(WorldTest, HostileTourListsNeverReachOutsideTheMapsFolder) {
    WritePlain("Precious.txt", {"keep me"});
    WritePlain("Maps/Forest/Level.map", MapLines("Level"));
    WritePlain("Maps/tours.dat", {"..", "../..", "", "Forest"});
    WritePlain("Maps/Forest/tour.dat", {"nForest", "Level.map,../../Precious.txt"});
    ASSERT_TRUE(world.ScanWorld());
    EXPECT_EQ(Tours(world), "Forest");
    EXPECT_EQ(Maps(world, 0), "Level.map");

    world.tourFolders.push_back("..");
    world.tours.emplace_back();
    world.tourLevels.push_back({"../../Precious.txt"});
    world.tourIndex = 1;
    EXPECT_EQ(world.GetMapField('n', "Level.map"), "");
    EXPECT_EQ(world.SetMapField('n', "x", 1, 0), "");
    EXPECT_FALSE(world.DeleteLevel(1, 0, true));
    world.SaveTour(1, false);
    EXPECT_EQ(world.tourFolders[1], "MyTour") << "the tour gets a folder of its own";
    world.tourFolders[1] = "..";
    world.DeleteTour(1);
    EXPECT_EQ(Files(""), "Precious.txt");
    EXPECT_EQ(Files("Maps/Forest"), "Level.map,tour.dat");
}

TEST_F(WorldTest, ToursMoveUnlessOfficialAndADeletedTourTakesItsFolder) {
    AddTour("First", "First", {"A.map"});
    AddTour("Second", "Second", {"B.map"});
    AddTour("Shipped", "Shipped", {}, true);
    world.tourIndex = 0;
    EXPECT_FALSE(world.MoveTourUp());
    EXPECT_TRUE(world.MoveTourDown());
    EXPECT_EQ(Tours(world), "Second,First,Shipped");
    EXPECT_EQ(Maps(world, 1), "A.map");
    EXPECT_EQ(frontEnd.Told(), "");

    world.tourIndex = 1;
    EXPECT_FALSE(world.MoveTourDown());
    EXPECT_EQ(frontEnd.Told(), "L120|L128");
    world.tourIndex = 2;
    EXPECT_FALSE(world.MoveTourUp());
    EXPECT_FALSE(world.MoveTourDown());
    EXPECT_EQ(Tours(world), "Second,First,Shipped");
    world.tourIndex = 1;
    EXPECT_TRUE(world.MoveTourUp());
    EXPECT_EQ(Tours(world), "First,Second,Shipped");

    LogCapture log;
    world.DeleteTour(0);
    EXPECT_EQ(log.all, "Deleting Tour: 'First'\nret 0\n");
    EXPECT_FALSE(IsDirectory(Game("Maps/First")));
    EXPECT_EQ(Tours(world), "Second,Shipped");
    EXPECT_EQ(Maps(world, 0), "B.map");
}

TEST_F(WorldTest, MapsMoveWithinEditableToursOnly) {
    AddTour("Forest", "Forest", {"A.map", "B.map", "C.map", "D.map"});
    world.levelIndex = 1;
    EXPECT_TRUE(world.MoveLevelDown(false));
    EXPECT_EQ(Maps(world, 0), "A.map,C.map,B.map,D.map");
    EXPECT_EQ(world.levelIndex, 1) << "levelIndex stays";
    EXPECT_TRUE(world.MoveLevelDown(true));
    EXPECT_EQ(Maps(world, 0), "A.map,D.map,B.map,C.map");
    EXPECT_TRUE(world.MoveLevelUp(true));
    EXPECT_EQ(Maps(world, 0), "D.map,A.map,B.map,C.map");
    world.levelIndex = 0;
    EXPECT_FALSE(world.MoveLevelUp(false));
    world.levelIndex = 3;
    EXPECT_FALSE(world.MoveLevelDown(true));

    world.tours[0].editable = false;
    world.levelIndex = 1;
    EXPECT_FALSE(world.MoveLevelDown(false));
    EXPECT_FALSE(world.MoveLevelUp(false));
    EXPECT_EQ(frontEnd.Told(), "L120|L129, L120|L129");
    EXPECT_EQ(Maps(world, 0), "D.map,A.map,B.map,C.map");
}

TEST_F(WorldTest, FinishingAMapUnlocksTheNextMapOrTheNextTourOnce) {
    AddTour("Forest", "Forest", {"A.map", "B.map"});
    AddTour("Desert", "Desert", {"Dune.map"});
    world.SetMapField('l', "1", 0, 1);
    world.SetMapField('n', "Bright Path", 0, 1);
    world.tours[1].locked = true;
    world.SaveTour(1, false);
    world.SetMapField('l', "1", 1, 0);
    world.levelIndex = 0;
    world.UnlockNext();
    EXPECT_EQ(world.GetMapField('l', "BrightPath.map"), "0");
    EXPECT_EQ(frontEnd.Told(), "L114|L113: Bright Path, Unlocked@8");
    world.UnlockNext();
    EXPECT_EQ(frontEnd.Told(), "") << "an unlocked successor shows nothing";

    world.levelIndex = 1;
    world.UnlockNext();
    EXPECT_FALSE(world.tours[1].locked);
    EXPECT_EQ(ReadLines("Maps/Desert/tour.dat")[2], "l0");
    EXPECT_EQ(frontEnd.Told(), "L114|L130: Desert, UnlockedTour@8");
    world.tourIndex = 1;
    EXPECT_EQ(world.GetMapField('l', "Dune.map"), "0");
    world.tourIndex = 0;
    world.UnlockNext();
    EXPECT_EQ(frontEnd.Told(), "") << "an open tour shows nothing";
    world.tourIndex = 1;
    world.levelIndex = 0;
    world.UnlockNext();
    EXPECT_EQ(frontEnd.Told(), "") << "the last map of the last tour unlocks nothing";
}

TEST_F(WorldTest, StartingUpLoadsTheFirstMapOfTheFirstTour) {
    AddTour("Forest", "Forest", {"Level.map"});
    WritePlain("Maps/Forest/Level.map", MapLines("Opening", "uidForest", {{Index(2, 3), Block::Start}}));
    SavingWorld fresh;
    fresh.programMapsFolder = world.programMapsFolder;
    fresh.SetGameplayLink(&gameplay);
    fresh.SetBlockSize(32);
    fresh.tourIndex = 4;
    fresh.gatesOpen = true;
    fresh.InitWorld();
    EXPECT_FALSE(fresh.startingUp);
    EXPECT_EQ(fresh.tourIndex, 0);
    EXPECT_EQ(MapState(fresh), "Opening: 10 x 10 of 64, editable, tour uidForest, start 2,3");
    EXPECT_EQ(gameplay.Told(), "") << "no racer is placed while starting up";
}

// Score files: the name beside the map, the two enciphered lines, the uid check, the stored best
// run, resets, and files that are missing or damaged.
#include "Gameplay/QmHighscores.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Platform/VeFiles.h"
#include "Support/HaltCapture.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

namespace {
class ScoreFileTest : public ::testing::Test {
protected:
    void SetUp() override {
        world.tours.assign(1, TourRecord());
        world.tourFolders = {"Forest"};
        world.tourLevels = {{"Level_1.map", "Level_2.map"}};
        world.mapUid = "4711815";
        CreateFolder(data.GameFolder() + "/Maps/Forest");
    }

    std::vector<std::string> PlainLines() {
        std::string bytes;
        EXPECT_TRUE(ReadFileBytes(data.GameFolder() + "/Maps/Forest/Level_1.dat", bytes));
        std::vector<std::string> plain;
        for (const std::string& line : SplitLines(bytes)) {
            plain.push_back(DecodeText(4, line));
        }
        return plain;
    }

    static QmRecording Run(const std::string& text) {
        QmRecording run;
        run.FromText(text);
        return run;
    }

    TempUserData data;
    QmCoreEnvironmentManager world;
    QmHighscores scores{world};
    LogCapture log;
};
} // namespace

TEST_F(ScoreFileTest, TheFileBesideTheMapListsEveryEntryAfterTheUid) {
    EXPECT_EQ(scores.ScoreFileName(), "Maps/Forest/Level_1.dat");
    const QmRecording run = Run("0:2;812:0;1204:3");
    scores.SaveScores(run, true, false, "Ann", true, 61234);
    scores.LoadScores(); // the stored recording is the one read from the file
    scores.SaveScores(run, false, false, "Cid", true, 80000);
    scores.SaveScores(run, false, false, "Bob", true, 70001);
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(data.GameFolder() + "/Maps/Forest/Level_1.dat", bytes));
    EXPECT_NE(bytes.find("\r\n"), std::string::npos);
    EXPECT_EQ(bytes.find("Ann"), std::string::npos) << "enciphered";
    const std::vector<std::string> plain = PlainLines();
    ASSERT_EQ(plain.size(), 2u);
    EXPECT_EQ(plain[0], "u4711815@Ann:61234.000000;Bob:70001.000000;Cid:80000.000000;");
    EXPECT_EQ(plain[1], "0:2;812:0;1204:3");
    EXPECT_NE(log.all.find("Encrypt from: u4711815@Ann:61234.000000;\n"), std::string::npos);
    EXPECT_NE(log.all.find("Saving Highscore Recording: 0:2;812:0;1204:3\n"), std::string::npos);

    QmHighscores read(world);
    read.LoadScores();
    ASSERT_EQ(read.List().size(), 3u);
    EXPECT_EQ(read.List()[1].name, "Bob");
    EXPECT_EQ(read.BestTimeText(), "61234.000000");
    EXPECT_EQ(read.StoredRecordingText(), "0:2;812:0;1204:3");
    EXPECT_FLOAT_EQ(read.Limits().bronze, 80.0f) << "the limits follow the list read";
    EXPECT_NE(log.all.find("Highscore Recording loaded: 0:2;812:0;1204:3\n"), std::string::npos);

    world.levelIndex = 1;
    EXPECT_EQ(scores.ScoreFileName(), "Maps/Forest/Level_2.dat");
    for (int outside : {2, -1}) {
        world.levelIndex = outside;
        EXPECT_EQ(scores.ScoreFileName(), "") << "outside the tour's list";
    }
}

TEST_F(ScoreFileTest, OnlyANewBestRunReplacesTheStoredRecordingAndResetsAndOtherUidsEmptyTheList) {
    scores.SaveScores(Run("0:2"), true, false, "Ann", true, 5000);
    scores.LoadScores();
    scores.SaveScores(Run("0:1"), false, false, "Bob", true, 6000);
    EXPECT_EQ(PlainLines()[1], "0:2");
    // A reset leaves the header alone; clearing the list is logged.
    scores.ResetScoreFile();
    EXPECT_TRUE(scores.List().empty());
    EXPECT_TRUE(scores.StoredRecordingText().empty());
    EXPECT_EQ(PlainLines()[0], "u4711815@");
    EXPECT_NE(log.all.find("No Highscore Recording found.\n"), std::string::npos);
    scores.SaveScores(QmRecording(), false, true, "", false, 0);
    EXPECT_NE(log.all.find("New Highscore File\n"), std::string::npos);
    // The file's uid comes from the map: a map saved again (new uid) no longer takes it.
    scores.SaveScores(Run("0:2"), true, false, "Ann", true, 5000);
    world.mapUid = "999";
    scores.LoadScores();
    EXPECT_TRUE(scores.List().empty()) << "a score file whose uid differs is ignored";
    EXPECT_TRUE(scores.StoredRecordingText().empty());
    EXPECT_FLOAT_EQ(scores.Limits().gold, 0.0f);
}

TEST_F(ScoreFileTest, AFailedSaveWarnsAndKeepsTheOldFile) {
    const QmRecording run = Run("0:2");
    ASSERT_TRUE(scores.SaveScores(run, true, false, "Ann", true, 5000));
    const std::vector<std::string> before = PlainLines();
    CreateFolder(data.GameFolder() + "/Maps/Forest/Level_1.dat.tmp"); // the temporary file cannot be made
    MessageBoxCapture capture;
    EXPECT_FALSE(scores.SaveScores(run, false, false, "Bob", true, 4000));
    EXPECT_FALSE(scores.ResetScoreFile());
    ASSERT_EQ(capture.boxes.size(), 2u);
    EXPECT_EQ(capture.boxes[0].title, "Warning: Scores not saved");
    EXPECT_EQ(capture.boxes[0].kind, 1);
    EXPECT_EQ(PlainLines(), before);
    ASSERT_EQ(scores.List().size(), 1u) << "the reset read the old file back";
    EXPECT_EQ(scores.List()[0].name, "Ann");
}

TEST_F(ScoreFileTest, MissingDamagedAndHostileFilesReadSafely) {
    scores.LoadScores();
    EXPECT_TRUE(scores.List().empty());
    EXPECT_EQ(log.all.find("No Highscore Recording found."), std::string::npos)
        << "nothing read, nothing said";

    const std::string path = data.GameFolder() + "/Maps/Forest/Level_1.dat";
    // An entry without time (skipped), more than ten entries after it, odd separators.
    std::string header = "u4711815@lonely;";
    for (int i = 0; i < 15; ++i) {
        header += "N";
        header += std::to_string(i) + ":" + std::to_string(1000 + i) + ".000000;";
    }
    ASSERT_TRUE(WriteFileAtomic(path, EncodeText(4, header) + "\n" + EncodeText(4, "5:1;x;7")));
    scores.LoadScores();
    EXPECT_EQ(scores.List().size(), 10u);
    EXPECT_EQ(scores.List()[0].name, "N0");
    EXPECT_EQ(scores.StoredRecording().Size(), 1u) << "parts without \":\" are skipped";
    // Names cannot break the file apart.
    QmRecording none;
    scores.SaveScores(none, false, true, "", false, 0);
    scores.SaveScores(none, false, false, "Ev;il:Name\r\n", true, 4000);
    scores.LoadScores();
    ASSERT_EQ(scores.List().size(), 1u);
    EXPECT_EQ(scores.List()[0].name, "Ev il Name  ");
    EXPECT_EQ(scores.List()[0].time, "4000.000000");
}

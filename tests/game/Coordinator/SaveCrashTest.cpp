// Saves cut short by a kill at random moments: whenever the process dies, the options file and a
// map's score file on disk are the last whole ones written (or absent before the first), never
// torn.
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "FrontEnd/Options/QmOptions.h"
#include "Gameplay/QmHighscores.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Support/LogCapture.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {
// Names of different lengths, so that a torn file would show as a name never written.
std::string Name(int i) {
    return "RACER" + std::string(static_cast<size_t>(i % 7), 'X') + std::to_string(i);
}

bool Written(const std::string& name) {
    for (int i = 0; i < 1000; ++i) {
        if (name == Name(i)) {
            return true;
        }
    }
    return false;
}

void PrepareWorld(QmCoreEnvironmentManager& world, const TempUserData& data) {
    world.tours.assign(1, TourRecord());
    world.tourFolders = {"Forest"};
    world.tourLevels = {{"Level_1.map"}};
    world.mapUid = "4711815";
    CreateFolder(data.GameFolder() + "/Maps/Forest");
}
} // namespace

TEST(SaveCrashTest, AKilledSaveLeavesTheOldOrTheNewFileWhole) {
    TempUserData data;
    LogCapture quiet;
    QmRecording run;
    run.FromText("0:2;812:0;1204:3");
    std::mt19937 random(20261124);
    for (int round = 0; round < 12; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            QmCoreEnvironmentManager world;
            PrepareWorld(world, data);
            for (int i = 0;; i = (i + 1) % 1000) {
                QmOptions options;
                options.Set(QmOptions::kUsername, Name(i));
                options.SaveOptions();
                QmHighscores scores(world);
                scores.SaveScores(run, true, false, Name(i), true, 60000 + i);
            }
        }
        usleep(static_cast<useconds_t>(2000 + random() % 40000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);

        QmOptions options;
        options.LoadOptions();
        const std::string name = options.Get(QmOptions::kUsername);
        if (FileExists(QmOptions::FilePath())) {
            EXPECT_TRUE(Written(name)) << "round " << round << ": '" << name << "'";
        }
        QmCoreEnvironmentManager world;
        PrepareWorld(world, data);
        QmHighscores scores(world);
        scores.LoadScores();
        for (const QmHighscoreEntry& entry : scores.List()) {
            EXPECT_TRUE(Written(entry.name)) << "round " << round << ": '" << entry.name << "'";
        }
        if (!scores.List().empty()) {
            EXPECT_EQ(scores.StoredRecordingText(), run.ToText()) << "round " << round;
        }
    }
}

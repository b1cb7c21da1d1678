// The editor in the game: opened from the command line, a map with best times changed, saved after
// a question and played after the check, and the test run's way back to the editor. (The journey
// makes, paints, checks, plays and leaves a map through the pages with real keys; the editor's own
// tests ask every other question and undo across saves.)
#include "Editor/QmEditor.h"
#include "Environment/ArEnvironmentManager.h"
#include "HeadlessGame.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using EditorGame = HeadlessGame;

TEST_F(EditorGame, AChangedMapWithBestTimesIsSavedAfterAQuestionPlayedAfterTheCheckAndReloaded) {
    StartInWindow({"--edit", "0", "1", "--2d"});
    ASSERT_EQ(app->scene, SceneEditor);
    QmEditor& editor = *coordinator->Editor();
    ArEnvironmentManager& world = *coordinator->environment;
    const BlockId painted = editor.SelectedId();
    ASSERT_TRUE(editor.Model().Paint(0, 1, painted));

    // The map has best times: saving asks; then the check runs beside the frames and the race begins.
    editor.ExecuteCommand(QmEditor::CmdSaveAndPlay);
    ASSERT_EQ(editor.PendingQuestion(), "SAVE_AND_PLAY");
    editor.Answer(true);
    EXPECT_FALSE(editor.Model().Modified());
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(3);
    while (app->scene == SceneEditor && std::chrono::steady_clock::now() < deadline) {
        Frame();
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    ASSERT_EQ(app->scene, SceneRace);
    ASSERT_NE(editor.CheckReport(), nullptr);
    EXPECT_EQ(editor.CheckReport()->outcome, QmPlayabilityCheck::Outcome::Finishable);

    // Leaving the race comes back to the editor with the map as saved.
    coordinator->ReturnToMenu();
    EXPECT_EQ(app->scene, SceneEditor);
    EXPECT_EQ(world.GetBlock(0, 1), painted);
}

TEST_F(EditorGame, TheCommandLineOpensOnlyAMapThatExists) {
    StartInWindow({"--edit", "0", "99"});
    EXPECT_TRUE(app->quitRequested);
    EXPECT_NE(app->ExitCode(), 0);
}

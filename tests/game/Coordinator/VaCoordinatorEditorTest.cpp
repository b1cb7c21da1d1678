// The editor in the game: opened from the command line, a map with best times painted with the
// keys, saved after a question and played after the check, and the test run's way back to the
// editor. (The journey makes, paints and leaves a map through the pages; the editor's own tests
// ask every question and undo across saves.)
#include "Editor/QmEditor.h"
#include "Environment/ArEnvironmentManager.h"
#include "HeadlessGame.h"
#include "Input/VeKey.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using EditorGame = HeadlessGame;

TEST_F(EditorGame, PaintCheckSavePlayAndComeBack) {
    StartInWindow({"--edit", "0", "1", "--2d"});
    ASSERT_EQ(app->scene, SceneEditor);
    QmEditor& editor = *coordinator->Editor();
    ArEnvironmentManager& world = *coordinator->environment;
    // Down one row from the top-left cell and paint the selected block there.
    FrameWithKeys({VeKey::Down});
    ASSERT_EQ(editor.CursorY(), 1);
    FrameWithKeys({VeKey::Return});
    const BlockId painted = world.GetBlock(0, 1);
    EXPECT_NE(painted, Block::Blank);
    EXPECT_TRUE(editor.Model().Modified());

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

    // Leaving the race comes back to the editor with the saved map; leaving it ends in the menu.
    coordinator->ReturnToMenu();
    EXPECT_EQ(app->scene, SceneEditor);
    EXPECT_EQ(world.GetBlock(0, 1), painted);
    editor.ExecuteCommand(QmEditor::CmdLeave);
    EXPECT_EQ(app->scene, SceneMenu);
}

TEST_F(EditorGame, TheCommandLineOpensOnlyAMapThatExists) {
    StartInWindow({"--edit", "0", "99"});
    EXPECT_TRUE(app->quitRequested);
    EXPECT_NE(app->ExitCode(), 0);
}

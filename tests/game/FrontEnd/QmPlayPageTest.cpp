#include "FrontEnd/QmPlayPage.h"
#include "Environment/ArEnvironmentManager.h"
#include "FrontEnd/QmTourMapList.h"
#include "Input/VeKey.h"
#include "MenuPageGame.h"

#include <gtest/gtest.h>

namespace {

using PlayPageTest = MenuPageGame;

int RowY(int row) {
    return QmTourMapList::kRowsY + row * QmTourMapList::kRowHeight + 10;
}

// (Back to the main menu with Escape: the journey.)
TEST_F(PlayPageTest, TheMouseSelectsAClickOnTheSelectedMapStartsItAndTheTitleFollowsThePlayMode) {
    coordinator->SetMenuPage(2);
    QmPlayPage page;
    page.RebuildLists();
    Pointer(page, QmTourMapList::kTourX + 20, RowY(2), true);
    EXPECT_EQ(page.SelectedTour(), 2);
    Pointer(page, QmTourMapList::kTourX + 20, RowY(0), true);
    Pointer(page, QmTourMapList::kMapX + 40, RowY(0), true);
    EXPECT_EQ(app->scene, SceneMenu) << "the first click selects";
    Pointer(page, QmTourMapList::kMapX + 40, RowY(0), true);
    EXPECT_EQ(app->scene, SceneRace);
    EXPECT_EQ(coordinator->playMode, VaCoordinator::PlayTour);
    EXPECT_EQ(coordinator->environment->tourIndex, 0);
    EXPECT_EQ(coordinator->environment->levelIndex, 0);

    coordinator->playMode = VaCoordinator::PlayRandomRun;
    page.RefreshTitle();
    EXPECT_EQ(page.TextBoxes().rbegin()[1].text, coordinator->GetLine(167));
}

} // namespace

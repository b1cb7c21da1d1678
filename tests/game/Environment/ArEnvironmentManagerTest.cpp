#include "game/Environment/ClientEnvironmentManager/RendererTestSupport.h"

#include "Screen/Surface/VeSurface.h"

#include <cstdlib>
#include <vector>

using namespace renderer_test;

class RaceFrameTest : public RendererTest, public ::testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        RendererTest::SetUp();
        host.threeD = GetParam();
        host.race = true;
        host.racer.exists = true;
        host.racer.x = 150.0f;
        host.racer.y = 350.0f;
        Open();
        BuildMap(EverythingSmall());
        world->mapName = "Meadow Run";
        world->SetIntro(0.0f);
    }

    // A frame with the race's entities (a cow, the racer, the ghost at 0.3) and the race's layer.
    ScreenshotImage RaceFrame(const std::function<void()>& raceLayer) {
        const auto entities = [this](bool) {
            world->DrawEntityAt(QmRaceDrawer::EnemyEntity, 384.0f, 384.0f, 1.0f);
            world->DrawEntityAt(QmRaceDrawer::RacerEntity, host.racer.x, host.racer.y, 1.0f);
            if (ghost) {
                world->DrawEntityAt(QmRaceDrawer::GhostEntity, 60.0f, 250.0f, 0.3f);
            }
        };
        return Frame(entities, raceLayer);
    }

    // The stored picture of a frame of this view.
    std::string Stored(const std::string& frame) const {
        return "environment-client/" + frame + (GetParam() ? "-3d" : "-2d") + ".png";
    }

    bool ghost = true;
};

namespace {
int Channel(uint32_t colour, int shift) {
    return static_cast<int>((colour >> shift) & 0xFFu);
}

bool Grey(uint32_t pixel) {
    const int r = Channel(pixel, 16);
    const int g = Channel(pixel, 8);
    const int b = Channel(pixel, 0);
    return std::abs(r - g) <= 3 && std::abs(g - b) <= 3;
}

// Where the text strokes (white pixels) are inside the head-up panel (256 x 40 at its corner) clear
// of its edge, and how many of its pixels have colour.
std::vector<int> PanelStrokes(const ScreenshotImage& shot, int& coloured) {
    std::vector<int> strokes;
    coloured = 0;
    for (int y = ArEnvironmentManager::kHudY + 4; y < ArEnvironmentManager::kHudY + 36; ++y) {
        for (int x = ArEnvironmentManager::kHudX + 4; x < ArEnvironmentManager::kHudX + 252; ++x) {
            const uint32_t pixel = shot.At(x, y);
            coloured += Grey(pixel) ? 0 : 1;
            if (pixel == 0xFFFFFF) {
                strokes.push_back(y * shot.width + x);
            }
        }
    }
    return strokes;
}

// Pixels with colour outside the panel.
int ColouredOutsideThePanel(const ScreenshotImage& shot) {
    int coloured = 0;
    for (int y = 0; y < shot.height; ++y) {
        for (int x = 0; x < shot.width; ++x) {
            const bool panel = x < ArEnvironmentManager::kHudX + 256 && y < ArEnvironmentManager::kHudY + 40;
            coloured += !panel && !Grey(shot.At(x, y)) ? 1 : 0;
        }
    }
    return coloured;
}
} // namespace

TEST_P(RaceFrameTest, RacerCowAndGhostWithTheHeadUpPanel) {
    const auto layer = [this] {
        world->SetRacerFace(1, 0, 0);
        world->DrawHud(world->mapName, QmRaceDrawer::GoldBadge);
    };
    RaceFrame(nullptr);
    ScreenshotImage shot = RaceFrame(layer);
    EXPECT_TRUE(MatchesStoredImage(Stored("race"), shot, kTolerance, kDifferingPixels));
    if (GetParam()) {
        return;
    }
    // What must be there, where it stands in the flat view: the racer's white body, the cow's
    // white hide and pink snout, the finish's red ring, and the ghost's body at 0.3 over the
    // backdrop it covers.
    EXPECT_EQ(shot.At(170, 395), 0xFFFFFFu);
    EXPECT_EQ(shot.At(400, 410), 0xFFFFFFu);
    EXPECT_EQ(shot.At(415, 425), 0xF4A0B4u);
    EXPECT_EQ(shot.At(585, 75), 0xFE0800u);
    ghost = false;
    const ScreenshotImage bare = RaceFrame(layer);
    for (int shift : {0, 8, 16}) {
        const int expected = (Channel(bare.At(92, 282), shift) * 7 + 255 * 3) / 10;
        EXPECT_NEAR(Channel(shot.At(92, 282), shift), expected, 3) << "channel at bit " << shift;
    }
}

TEST_P(RaceFrameTest, DeathGreysTheWorldButNotThePanelOrTheText) {
    host.racer.active = false;
    ScreenshotImage shot = RaceFrame([this] {
        world->DrawHud(world->mapName, QmRaceDrawer::SilverBadge);
        world->GreyFrame();
        world->DrawText("Ouch! Press jump to try again", 480);
    });
    EXPECT_TRUE(MatchesStoredImage(Stored("death"), shot, kTolerance, kDifferingPixels));
    EXPECT_EQ(ColouredOutsideThePanel(shot), 0);
    int coloured = 0;
    EXPECT_GT(PanelStrokes(shot, coloured).size(), 100u); // the map's name
    EXPECT_GT(coloured, 100);                             // the badge and the panel's stripes
    int white = 0;
    for (int x = 0; x < shot.width; ++x) {
        white += shot.At(x, 490) == 0xFFFFFF ? 1 : 0;
    }
    EXPECT_GT(white, 40); // the text, white over the grey world
}

TEST_P(RaceFrameTest, FlipTurnsTheWorldButNotThePanel) {
    const auto hud = [this] { world->DrawRunHud("LEVEL 3", "12.34"); };
    const ScreenshotImage upright = RaceFrame(hud);
    host.flipped = true;
    const ScreenshotImage shot = RaceFrame([&] {
        world->ReversePixelOrder();
        hud();
    });
    EXPECT_TRUE(MatchesStoredImage(Stored("flip"), shot, kTolerance, kDifferingPixels));
    int uprightColoured = 0;
    const std::vector<int> uprightStrokes = PanelStrokes(upright, uprightColoured);
    ASSERT_GT(uprightStrokes.size(), 100u);
    int coloured = 0;
    EXPECT_EQ(PanelStrokes(shot, coloured), uprightStrokes); // the level and the time read as before
    EXPECT_EQ(coloured, uprightColoured);
    if (!GetParam()) {
        // The flat world is turned pixel for pixel: the racer's white body.
        EXPECT_EQ(shot.At(639 - 170, 639 - 395), 0xFFFFFFu);
    }
}

TEST_P(RaceFrameTest, TheCountdownStandsInTheMiddleOverTheIntro) {
    world->SetIntro(3.0f);
    ScreenshotImage shot = RaceFrame([this] {
        world->DrawHud(world->mapName, QmRaceDrawer::GoldBadge);
        world->DrawCountdown("2");
    });
    EXPECT_TRUE(MatchesStoredImage(Stored("countdown"), shot, kTolerance, kDifferingPixels));
    // White strokes of the number at the centre of the screen.
    int white = 0;
    for (int y = 260; y < 380; ++y) {
        for (int x = 280; x < 360; ++x) {
            white += shot.At(x, y) == 0xFFFFFF ? 1 : 0;
        }
    }
    EXPECT_GT(white, 500);
}

INSTANTIATE_TEST_SUITE_P(Views, RaceFrameTest, ::testing::Bool(),
                         [](const ::testing::TestParamInfo<bool>& info) {
                             return info.param ? std::string("ThreeD") : std::string("TwoD");
                         });

using EditorViewTest = RendererTest;

TEST_F(EditorViewTest, PickingImageFindsTheCellUnderThePixelAndShowsTheSnapshotMeanwhile) {
    host.threeD = true;
    host.editor = true;
    Open();
    BuildMap(EverythingLarge());
    world->PrepareEditorView();
    screen->threeD = true;
    // A normal frame kept as the snapshot, then the picking frame.
    world->WorldFrame(nullptr, true, false);
    world->picking = true;
    world->WorldFrame(nullptr, false, true);
    world->picking = false;
    const auto cell = [this](int x, int y) {
        int column = -1;
        int row = -1;
        return world->CellAtPixel(x, y, column, row) ? std::to_string(column) + "," + std::to_string(row)
                                                     : "none";
    };
    // The editor camera frames the whole map: the centre of the screen is the middle of the map.
    EXPECT_EQ(cell(320 + 3, 320 + 3), "10,10");
    EXPECT_EQ(cell(320 - 3, 320 - 3), "9,9");
    // The corners show the backdrop around the map: no cell.
    EXPECT_EQ(cell(2, 2), "none");
    EXPECT_EQ(cell(-1, 5), "none");
}

// The race's texts and panel in 2D, on a map whose decorations fill the lower half.
class RaceTextTest : public RendererTest {
protected:
    void SetUp() override {
        RendererTest::SetUp();
        host.race = true;
        host.racer.exists = true;
        Open();
        std::vector<std::string> rows(5, "..........");
        rows.resize(10, "mnopqrstuv");
        BuildMap(rows);
        Frame(); // the static layer is rebuilt
    }

    // The first and last columns holding the texts' white pixels in rows top to bottom - 1.
    static std::pair<int, int> WhiteSpan(const ScreenshotImage& shot, int top, int bottom) {
        int left = shot.width;
        int right = -1;
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < shot.width; ++x) {
                if (shot.At(x, y) == 0xFFFFFF) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
            }
        }
        return {left, right};
    }
};

TEST_F(RaceTextTest, TextsStandOverTheDecorationsAndLongLinesBreakBetweenWordsCentred) {
    // Drawn where the race draws it: inside the pass, before the decorations.
    const auto hint = [this](bool) { world->DrawText("REACH THE FINISH! PRESS R TO START OVER", 480); };
    const ScreenshotImage decorated = Frame(hint);
    // The same text over an empty map.
    BuildMap(std::vector<std::string>(10, ".........."));
    Frame();
    const ScreenshotImage empty = Frame(hint);

    // Two lines: the first nearly as wide as the screen, the second ("START OVER") centred under it.
    const auto [left, right] = WhiteSpan(empty, 480, 500);
    EXPECT_LT(left, 60);
    EXPECT_GT(right, 580);
    const auto [secondLeft, secondRight] = WhiteSpan(empty, 515, 545);
    ASSERT_GE(secondRight, secondLeft);
    EXPECT_NEAR((secondLeft + secondRight) / 2, 320, 3);
    EXPECT_LT(secondRight - secondLeft, 260);

    // Every stroke shows over the decorations as well.
    int strokes = 0;
    int hidden = 0;
    for (int y = 470; y < 560; ++y) {
        for (int x = 0; x < empty.width; ++x) {
            if (empty.At(x, y) == 0xFFFFFF) {
                ++strokes;
                hidden += decorated.At(x, y) != 0xFFFFFF ? 1 : 0;
            }
        }
    }
    EXPECT_GT(strokes, 1000);
    EXPECT_EQ(hidden, 0);
}

TEST_F(RaceTextTest, ThePanelFollowsTheHeadUpSwitchAndFitsALongName) {
    const ScreenshotImage plain = Frame();
    const int x = ArEnvironmentManager::kHudX + 4;
    const int y = ArEnvironmentManager::kHudY + 4;
    ScreenshotImage shot = Frame(nullptr, [this] { world->DrawHud("Meadow Run", QmRaceDrawer::GoldBadge); });
    EXPECT_NE(shot.At(x, y), plain.At(x, y));
    world->hudShown = false;
    shot = Frame(nullptr, [this] { world->DrawHud("Meadow Run", QmRaceDrawer::GoldBadge); });
    EXPECT_EQ(shot.At(x, y), plain.At(x, y));
    shot = Frame(nullptr, [this] { world->DrawRunHud("LEVEL 3", "12.34"); });
    EXPECT_EQ(shot.At(x, y), plain.At(x, y));

    // The random-level run's panel: the same panel, its time at the right end.
    world->hudShown = true;
    const ScreenshotImage hud = Frame(nullptr, [this] { world->DrawHud("LEVEL 3", QmRaceDrawer::NoBadge); });
    shot = Frame(nullptr, [this] { world->DrawRunHud("LEVEL 3", "12.34"); });
    EXPECT_EQ(shot.At(x, y), hud.At(x, y));
    const int top = ArEnvironmentManager::kHudY;
    const auto [left, right] = WhiteSpan(shot, top, top + 40);
    const auto [hudLeft, hudRight] = WhiteSpan(hud, top, top + 40);
    EXPECT_EQ(left, hudLeft);
    EXPECT_GT(right, hudRight + 60);

    // A long map name stays left of the badge, written smaller rather than cut short.
    const int badgeLeft = ArEnvironmentManager::kHudX + 216;
    shot = Frame(nullptr, [this] { world->DrawHud("Stepping Stones", QmRaceDrawer::NoBadge); });
    const auto [nameLeft, nameRight] = WhiteSpan(shot, top, top + 40);
    EXPECT_EQ(nameLeft, ArEnvironmentManager::kHudX + 14);
    EXPECT_LT(nameRight, badgeLeft);
    EXPECT_GT(nameRight, badgeLeft - 60);
}

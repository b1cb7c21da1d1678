#include "game/Environment/ClientEnvironmentManager/RendererTestSupport.h"

#include "Environment/ClientEnvironmentManager/QmWorldSpace.h"
#include "Platform/VeFiles.h"

#include "Support/HaltCapture.h"

#include <set>

using namespace renderer_test;

class EveryBlockTest : public RendererTest, public ::testing::WithParamInterface<std::tuple<bool, bool>> {};

TEST_P(EveryBlockTest, MapWithEveryBlockKindLooksAsStored) {
    const bool threeD = std::get<0>(GetParam());
    const bool large = std::get<1>(GetParam());
    host.threeD = threeD;
    Open();
    BuildMap(large ? EverythingLarge() : EverythingSmall());
    world->cameraZoom = 0.0f;
    Frame();
    ScreenshotImage shot = Frame();
    const std::string name = std::string("environment-client/every-block-") + (threeD ? "3d" : "2d") + "-" +
                             (large ? "large" : "small") + ".png";
    EXPECT_TRUE(MatchesStoredImage(name, shot, kTolerance, kDifferingPixels));
}

INSTANTIATE_TEST_SUITE_P(Views, EveryBlockTest, ::testing::Combine(::testing::Bool(), ::testing::Bool()),
                         [](const ::testing::TestParamInfo<std::tuple<bool, bool>>& info) {
                             return std::string(std::get<0>(info.param) ? "ThreeD" : "TwoD") +
                                    (std::get<1>(info.param) ? "Large" : "Small");
                         });

// The world as the game makes it at start-up: the art decoded beforehand and handed over, the
// OpenGL side made a stage at a time, and drawn before the last stages, which the first pass makes.
TEST_F(RendererTest, AWorldMadeInStepsDrawsAsOneMadeAtOnce) {
    host.threeD = true;
    Open();
    world.reset();
    SeedRand(1234); // the same flames
    auto art = std::make_unique<QmWorldArt>();
    art->Load();
    world = std::make_unique<ArEnvironmentManager>(*screen, host, nullptr, std::move(art));
    for (size_t i = 0; i < 3; ++i) {
        world->RegisterRacerImages(64 >> i, images[3 * i].get(), images[3 * i + 1].get());
        world->RegisterCowImage(64 >> i, images[3 * i + 2].get());
    }
    for (int stage = 0; stage < 3; ++stage) {
        EXPECT_TRUE(world->PrepareGraphicsStep());
    }
    EXPECT_FALSE(world->GraphicsPrepared());
    BuildMap(EverythingSmall());
    world->cameraZoom = 0.0f;
    Frame();
    EXPECT_TRUE(world->GraphicsPrepared());
    EXPECT_FALSE(world->PrepareGraphicsStep());
    EXPECT_TRUE(MatchesStoredImage("environment-client/every-block-3d-small.png", Frame(), kTolerance,
                                   kDifferingPixels));
}

// ---- The cell cache ----

class CellCacheTest : public RendererTest {
protected:
    void SetUp() override {
        RendererTest::SetUp();
        host.threeD = true;
        host.race = true;
        Open();
        BuildMap({"..........", //
                  "..J.....U.", //
                  "..........", //
                  "...111....", //
                  "..........", //
                  "....^.....", //
                  "..........", //
                  "aaaaaaaaaa", //
                  "bbbbbbbbbb", //
                  "bbbbbbbbbb"});
    }

    int64_t PlacementsInFrame() {
        const int64_t before = world->PlacementsComputed();
        Frame();
        return world->PlacementsComputed() - before;
    }
};

TEST_F(CellCacheTest, CellsArePlacedOnceAndAgainOnlyWhenTheyChangeOrTheGatesOpen) {
    const int64_t first = PlacementsInFrame();
    EXPECT_TRUE(world->CellCached(3, 3));
    EXPECT_TRUE(world->CellCached(4, 5)) << "fire is flat but cached";
    EXPECT_FALSE(world->CellCached(2, 1)) << "a spinning pickup is never cached";
    EXPECT_FALSE(world->CellCached(0, 0)) << "empty cells are not drawn";
    // Every pass places the two spinning pickups again; nothing else moved.
    const int64_t passes = world->PassCount();
    EXPECT_EQ(PlacementsInFrame(), 2 * passes - (passes - 1) * 2)
        << "pickups are flat: the shadow pass skips them";
    EXPECT_GT(first, 30 + 2);

    world->SetBlock(3, 3, Block::Finish);
    EXPECT_FALSE(world->CellCached(3, 3)) << "a changed cell forgets its placement";
    EXPECT_TRUE(world->CellCached(4, 3));
    EXPECT_EQ(PlacementsInFrame(), 2 + 1);
    EXPECT_TRUE(world->CellCached(3, 3));

    world->SetBlockSize(32);
    EXPECT_FALSE(world->CellCached(4, 3));
    world->SetBlockSize(64);
    Frame();
    world->FillMap(2);
    EXPECT_FALSE(world->CellCached(9, 9));
    Frame();
    world->ClearMap();
    EXPECT_FALSE(world->CellCached(9, 9));

    // Opening the gates forgets their cells and rebuilds the static layer.
    world->SetBlock(3, 3, 1);
    world->SetBlock(6, 6, Block::RedGate);
    Frame();
    EXPECT_TRUE(world->CellCached(6, 6));
    EXPECT_FALSE(world->StaticLayerStale());
    world->OpenGates();
    EXPECT_EQ(world->GetBlock(6, 6), Block::Blank);
    EXPECT_FALSE(world->CellCached(6, 6));
    EXPECT_TRUE(world->CellCached(3, 3));
    EXPECT_TRUE(world->StaticLayerStale());
}

// ---- What the 3D view draws ----

TEST_F(CellCacheTest, TheShadowPassDrawsOnlyCubesThatCastShadows) {
    BuildMap({"..........", //
              ".J.U.V.K.D", //
              "..........", //
              ".^..n..G..", //
              "..........", //
              "..........", //
              "..........", //
              "......F...", //
              "..1.......", //
              ".........."});
    ASSERT_EQ(world->PassCount(), 2);
    world->BeginPass(true);
    // The ring's 44 cubes, the block, the gate and the Finish; no fire, pickup or decoration. They
    // are drawn once into the kept shadow map, which the shadow pass starts from.
    EXPECT_EQ(world->MapShadowCubes(), 44 + 3);
    EXPECT_EQ(world->PendingCount(), 0u);
    world->DrawEntity(nullptr, world->CowTexture(64), 128.0f, 128.0f, 1.0f, false);
    EXPECT_EQ(world->PendingCount(), 1u) << "what moves is drawn into it every time";
    world->EndPass();
    world->BeginPass(false);
    EXPECT_EQ(world->PendingCount(), 44u + 3u) << "flat items are not cubes waiting to be drawn face by face";
    world->EndPass();
    screen->BindDefaultFramebuffer();
    world->ComposeWorld(false, false);
}

TEST_F(CellCacheTest, TheBackdropsLightIsBakedAgainOnlyWhenWhatCastsShadowsOnItChanges) {
    Frame();
    const int64_t bakes = world->BackdropBakes();
    Frame();
    EXPECT_EQ(world->BackdropBakes(), bakes);
    world->SetBlock(2, 1, Block::Blank);
    world->SetBlock(4, 5, Block::Blank);
    Frame();
    EXPECT_EQ(world->BackdropBakes(), bakes) << "a pickup taken, a fire put out: they cast no shadow";
    world->SetBlock(3, 3, Block::Blank);
    Frame();
    EXPECT_EQ(world->BackdropBakes(), bakes + 1);
    EXPECT_EQ(world->MapShadowCubes(), 44 + 2 + 10 + 10 + 10);
    world->OpenGates();
    host.shadows = false;
    Frame();
    EXPECT_EQ(world->BackdropBakes(), bakes + 2) << "lit without shadows";
    world->SetBlock(5, 3, Block::Blank);
    Frame();
    EXPECT_EQ(world->BackdropBakes(), bakes + 2) << "without shadows the blocks do not matter";
    world->SetBlockSize(32);
    Frame();
    EXPECT_EQ(world->BackdropBakes(), bakes + 3);
}

TEST_F(CellCacheTest, PickupsSpinAndWrapInTheRaceAndStandStillInTheEditorAndTheIntroZoomDecays) {
    BuildMap({"..........", "..........", "..........", "..........", "....U.....", "..........",
              "..........", "..........", "..........", ".........."});
    world->spinAngle = 0.0f;
    const ScreenshotImage raceStart = Frame();
    const ScreenshotImage raceLater = Frame();
    EXPECT_GT(world->spinAngle, 0.0f);
    EXPECT_GT(CompareScreenshots(raceStart, raceLater, 8).differingPixels, 50);

    host.race = false;
    host.editor = true;
    const ScreenshotImage editorStart = Frame();
    for (int i = 0; i < 20; ++i) {
        Frame();
    }
    const ScreenshotImage editorLater = Frame();
    EXPECT_EQ(CompareScreenshots(editorStart, editorLater, 8).differingPixels, 0);

    world->SetIntro(7.0f);
    host.frameTime = 0.1f;
    world->Update();
    EXPECT_NEAR(world->cameraZoom, 7.0f - 2.0f * 7.0f * 0.1f, 1e-4f);
    host.frameTime = 1.0f;
    world->Update();
    EXPECT_FLOAT_EQ(world->cameraZoom, 0.0f) << "never below 0";
    world->spinAngle = 6.2f;
    host.frameTime = 0.1f;
    world->Update();
    EXPECT_FLOAT_EQ(world->spinAngle, 0.0f) << "back to 0 past a full turn";
}

TEST_F(CellCacheTest, WhatMovesThrowsItsShadowOnTheBakedBackdrop) {
    BuildMap(std::vector<std::string>(10, ".........."));
    world->cameraZoom = 0.0f;
    const float x = 3.0f * 64.0f;
    const float y = 3.0f * 64.0f;
    auto cow = [&](bool) { world->DrawEntity(nullptr, world->CowTexture(64), x, y, 1.0f, false); };
    // Where the cow's cube is seen: the shadow is what darkens outside it.
    auto outsideCube = [&](int px, int py) {
        const glm::mat4 model =
            QmWorldSpace::BlockModel(3.0f, 3.0f, 10, false, false, false, false, glm::mat4(1.0f));
        float left = 640.0f, right = 0.0f, top = 640.0f, bottom = 0.0f;
        for (int corner = 0; corner < 8; ++corner) {
            const glm::vec4 p = world->cameraViewProjection * model *
                                glm::vec4(corner & 1 ? 1.0f : -1.0f, corner & 2 ? 1.0f : -1.0f,
                                          corner & 4 ? 1.0f : -1.0f, 1.0f);
            const float sx = (p.x / p.w + 1.0f) * 320.0f;
            const float sy = (1.0f - p.y / p.w) * 320.0f;
            left = std::min(left, sx);
            right = std::max(right, sx);
            top = std::min(top, sy);
            bottom = std::max(bottom, sy);
        }
        return px < left - 2 || px > right + 2 || py < top - 2 || py > bottom + 2;
    };
    auto darkened = [&](const ScreenshotImage& without, const ScreenshotImage& with) {
        int count = 0;
        for (int py = 0; py < 640; ++py) {
            for (int px = 0; px < 640; ++px) {
                const uint32_t a = without.At(px, py);
                const uint32_t b = with.At(px, py);
                const bool darker = ((a >> 16) & 0xFF) > ((b >> 16) & 0xFF) + 12 &&
                                    ((a >> 8) & 0xFF) > ((b >> 8) & 0xFF) + 12 &&
                                    (a & 0xFF) > (b & 0xFF) + 12;
                count += darker && outsideCube(px, py) ? 1 : 0;
            }
        }
        return count;
    };
    const ScreenshotImage empty = Frame();
    const ScreenshotImage withCow = Frame(cow);
    EXPECT_GT(darkened(empty, withCow), 100);
    host.shadows = false;
    const ScreenshotImage plain = Frame();
    const ScreenshotImage plainCow = Frame(cow);
    EXPECT_EQ(darkened(plain, plainCow), 0);
}

// ---- Confusion ----

TEST_F(CellCacheTest, AConfusedBackdropTakesTheColourOfTheBlockUnderTheRacer) {
    host.racer.exists = true;
    host.racer.x = 64.0f;
    host.racer.y = 64.0f;
    const ScreenshotImage plain = Frame();
    world->SetConfusion(true);
    // On a blue block, a tileset block (which keeps the last colour) and a red block.
    std::vector<ScreenshotImage> shots;
    std::vector<uint32_t> colours;
    for (BlockId ground : {2, 8, 5}) {
        host.racer.groundBlock = ground;
        shots.push_back(Frame());
        colours.push_back(world->confusionColour);
    }
    EXPECT_EQ(colours, (std::vector<uint32_t>{0x1678D6, 0x1678D6, 0xE1120C}));
    // The backdrop behind the empty top left of the map turned blue.
    EXPECT_LT((shots[0].At(150, 150) >> 16) & 0xFF, (plain.At(150, 150) >> 16) & 0xFF);

    world->Reload(0, false);
    EXPECT_FALSE(world->confusion);
    EXPECT_EQ(world->confusionColour, 0xFFFFFFu);
}

// ---- 2D ----

class FlatViewTest : public RendererTest {};

TEST_F(FlatViewTest, WithoutThreeDNothingTouchesOpenGLAndTheAnimationsStillRun) {
    Open();
    BuildMap(EverythingSmall());
    const uint32_t finishBefore = world->finishColour.colour;
    const int fireBefore = world->fireFrames.NextFrame();
    Frame();
    Frame();
    EXPECT_EQ(world->DrawCalls(), 0);
    EXPECT_EQ(world->PlacementsComputed(), 0);
    EXPECT_NE(world->finishColour.colour, finishBefore);
    EXPECT_NE(world->fireFrames.NextFrame(), fireBefore);
    // The finish art carries the current colour.
    const VeSurface& finish = *world->art.finish->Surface(64);
    bool found = false;
    for (int32_t i = 0; i < finish.pixelCount; ++i) {
        found = found || finish.GetPixel(i) == world->finishColour.colour;
    }
    EXPECT_TRUE(found);
}

TEST_F(FlatViewTest, AMapOfFireShowsSixFramesInARepeatingDiagonalPattern) {
    Open();
    BuildMap(std::vector<std::string>(10, "^^^^^^^^^^"));
    Frame();
    const VeSurface& overlay = screen->overlay;
    for (int x = 0; x < 10; ++x) {
        for (int y = 0; y < 10; ++y) {
            const VeSurface& frame =
                *world->fireFrames.Frame(QmFireAnimation::FrameForCell(10, x, y)).Surface(64);
            int same = 0;
            for (int py = 0; py < 64; ++py) {
                for (int px = 0; px < 64; ++px) {
                    const uint32_t flame = frame.GetXY(px, py);
                    same += flame == kColourKey || overlay.GetXY(x * 64 + px, y * 64 + py) == flame ? 1 : 0;
                }
            }
            EXPECT_EQ(same, 64 * 64) << x << "," << y;
        }
    }
    // The six frames differ from one another.
    std::set<std::vector<uint32_t>> frames;
    for (int i = 0; i < 6; ++i) {
        const VeSurface& frame = *world->fireFrames.Frame(i).Surface(64);
        frames.insert(std::vector<uint32_t>(frame.Pixels(), frame.Pixels() + frame.pixelCount));
    }
    EXPECT_EQ(frames.size(), 6u);
    const uint32_t* image = world->FireImage(7, 64);
    ASSERT_NE(image, nullptr);
    EXPECT_EQ(image, world->fireFrames.Frame(1).Surface(64)->Pixels());
}

TEST_F(FlatViewTest, AReloadShowsTheNewMapsBlocksFromTheNextFrame) {
    Open();
    world->SetBlock(2, 9, 3);
    world->SaveMap(false);
    world->ClearMap();
    Frame();
    EXPECT_EQ(screen->overlay.GetXY(2 * 64 + 32, 9 * 64 + 32), world->art.Background(64).GetXY(32, 32));
    world->Reload(0, false);
    EXPECT_EQ(world->GetBlock(2, 9), 3);
    Frame();
    EXPECT_EQ(screen->overlay.GetXY(2 * 64 + 32, 9 * 64 + 32),
              world->art.coloured[3]->Surface(64)->GetXY(32, 32));
}

TEST_F(FlatViewTest, EntitiesLandOnTheNearestPixelAndBlendWhenTranslucent) {
    Open();
    world->ClearMap();
    VeSurface image(4, 4);
    image.Fill(0xFF0000);
    image.SetPixel(0, kColourKey);
    world->BeginPass(false);
    world->DrawEntity(&image, nullptr, 10.5f, 20.4f, 1.0f, false);
    world->DrawEntity(&image, nullptr, 100.0f, 100.0f, 0.5f, false);
    world->EndPass();
    const VeSurface& overlay = screen->overlay;
    const uint32_t background = world->art.Background(64).GetXY(11, 20);
    EXPECT_EQ(overlay.GetXY(11, 20), background) << "the key corner is skipped";
    EXPECT_EQ(overlay.GetXY(12, 20), 0xFF0000u);
    EXPECT_EQ(overlay.GetXY(10, 21), background);
    EXPECT_EQ(overlay.GetXY(14, 23), 0xFF0000u);
    const uint32_t blended = overlay.GetXY(101, 101);
    EXPECT_GT((blended >> 16) & 0xFF, (background >> 16) & 0xFF);
    EXPECT_LT((blended >> 16) & 0xFF, 0xFFu);
}

TEST_F(FlatViewTest, TheSoftwarePathDrawsIn2DWhateverTheOption) {
    host.threeD = true;
    Open(true);
    EXPECT_FALSE(world->OpenGLAvailable());
    EXPECT_FALSE(world->ThreeDActive());
    BuildMap(EverythingSmall());
    Frame();
    const ScreenshotImage shot = Frame();
    EXPECT_EQ(world->DrawCalls(), 0);
    EXPECT_TRUE(MatchesStoredImage("environment-client/every-block-2d-small.png", shot, kTolerance,
                                   kDifferingPixels));
}

// ---- The world model's hooks ----

TEST_F(FlatViewTest, RandomColourBlocksAreColouredBlocksAndErrorsEndTheGameWithAMessage) {
    Open();
    std::set<BlockId> seen;
    for (int i = 0; i < 500; ++i) {
        seen.insert(world->RandomColourBlock());
    }
    EXPECT_EQ(seen, (std::set<BlockId>{1, 2, 3, 4, 5}));
    EXPECT_HALT(world->ReportError("Unknown Level added to tour:Maps/x.map"), "Critical Error",
                "Unknown Level added to tour:Maps/x.map");
}

TEST_F(FlatViewTest, StartingWithoutAnyTourHalts) {
    // No tour in the game folder and none shipped beside the program: the world is looked for
    // before any art is loaded.
    DeleteFolder(data.GameFolder() + "/Maps");
    std::filesystem::current_path(data.path);
    EXPECT_HALT(Open(), "Halt: Tour data not found", "Critical error: Tour data was not found.");
}

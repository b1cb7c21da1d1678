#pragma once
// Test support for the world renderer: a real screen (OpenGL under Xvfb or the offscreen driver),
// a seeded tour in a temporary game folder, a scripted host, the racer's and the cow's images
// registered as the coordinator registers them, maps built from rows of characters, and a frame
// driven like the main loop with its picture read back.
//
// Map characters: '.' Blank, '1'..'5' the coloured blocks, 'a'..'l' the tileset rows (ids 6 to
// 17), 'm'..'z' the first decorations (ids 150 to 163), 'S' Start, 'F' Finish, '^' Fire, 'C' Enemy,
// 'J' Jump Impulse, 'U' Speed Up, 'V' Flip Vision, 'K' Red Gate Key, 'G' Red Gate, 'D' Disco.
#include "Environment/ArEnvironmentManager.h"
#include "Environment/ClientEnvironmentManager/QmWorldViewHost.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/VeScreen.h"

#include "Support/LogCapture.h"
#include "Support/Screenshot.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace renderer_test {

// The software rasteriser draws the same pixels run after run; a little room for rounding only.
constexpr int kTolerance = 4;
constexpr int64_t kDifferingPixels = 0;

inline BlockId CellId(char c) {
    if (c >= '1' && c <= '5') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'l') {
        return 6 + (c - 'a');
    }
    if (c >= 'm' && c <= 'z') {
        return Block::FirstDecoration + (c - 'm');
    }
    // The specials' ids run on from Disco Confusion (246) to Start (255).
    const size_t special = std::string("DGKVUJC^FS").find(c);
    return special == std::string::npos ? Block::Blank
                                        : Block::DiscoConfusion + static_cast<BlockId>(special);
}

// A level with every kind of block on the small map.
inline std::vector<std::string> EverythingSmall() {
    return {"..........", //
            ".J....D.rF", //
            "........44", //
            "...Kv..V..", //
            "..333.....", //
            "S.....U.Gs", //
            "11mo..Caaa", //
            "aaa^^aabbb", //
            "bbbbbbcdef", //
            "ghijkl2345"};
}

// The same on the large map, with room for more of the decorations.
inline std::vector<std::string> EverythingLarge() {
    return {"....................", //
            "....................", //
            "..J...........D...F.", //
            "................4444", //
            "........V...........", //
            "....K...............", //
            "...333......U.......", //
            "...............G....", //
            "..........ot...G..pq", //
            "........ccccc..aaaaa", //
            "......D.bbbbb..bbbbb", //
            "....................", //
            "S.......mn.w..C.J.rs", //
            "11.....aaaaaaaaaaaaa", //
            "22..........bbbbbbbb", //
            "aaaa^^^^aaa.........", //
            "bbbbbbbbbbb....uv.z.", //
            "cdefghijklaaaaaaaaaa", //
            "cdefghijklbbbbbbbbbb", //
            "12345kkkkkkkkkkkkkkk"};
}

class ScriptedHost : public QmWorldViewHost {
public:
    bool ThreeDEnabled() const override { return threeD; }
    bool ShadowsEnabled() const override { return shadows; }
    bool InEditor() const override { return editor; }
    bool InRace() const override { return race; }
    bool Flipped() const override { return flipped; }
    QmRacerView Racer() const override { return racer; }
    float FrameTime() const override { return frameTime; }

    bool threeD = false;
    bool shadows = true;
    bool editor = false;
    bool race = false;
    bool flipped = false;
    QmRacerView racer;
    float frameTime = 1.0f / 60.0f;
};

class RendererTest : public ::testing::Test {
protected:
    void SetUp() override {
        previousFolder = std::filesystem::current_path();
        std::filesystem::current_path(QM_SOURCE_DIR);
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
        SetTimeSource([this] { return now; });
        SeedRand(1234);
        // A tour with no maps: the renderer's start-up adds a first, empty map to it.
        QmCoreEnvironmentManager seed;
        seed.programMapsFolder = data.path + "/NoShippedTours";
        seed.NewTour();
    }

    void TearDown() override {
        world.reset();
        screen.reset();
        VeScreen::ForceSoftwarePath(false);
        SetTimeSource(nullptr);
        std::filesystem::current_path(previousFolder);
    }

    ArEnvironmentManager& Open(bool software = false) {
        VeScreen::ForceSoftwarePath(software);
        screen = std::make_unique<VeScreen>(640, 640, false, false, true, "", "");
        screen->SetFramePacing(false);
        screen->SetFrameCapture(true);
        world = std::make_unique<ArEnvironmentManager>(*screen, host);
        for (int size : {64, 32, 16}) {
            const std::string racer =
                "Assets/Characters/Default" + (size == 64 ? "" : "_" + std::to_string(size));
            images.push_back(std::make_unique<VeImage>(racer + ".png"));
            images.push_back(std::make_unique<VeImage>(racer + "_Sides.png"));
            world->RegisterRacerImages(size, images[images.size() - 2].get(), images.back().get());
            images.push_back(
                std::make_unique<VeImage>("Assets/Characters/Cow/Cow_" + std::to_string(size) + ".png"));
            world->RegisterCowImage(size, images.back().get());
        }
        return *world;
    }

    // Fills the map from rows (row 0 on top); ten rows make a 64-pixel map, twenty a 32-pixel map.
    void BuildMap(const std::vector<std::string>& rows) {
        world->ClearMap();
        world->SetBlockSize(rows.size() > 10 ? 32 : 64);
        for (size_t r = 0; r < rows.size(); ++r) {
            for (size_t c = 0; c < rows[r].size(); ++c) {
                world->SetBlock(static_cast<int>(c), static_cast<int>(r), CellId(rows[r][c]));
            }
        }
        world->MarkStaticLayerStale();
    }

    // One frame as the main loop and the coordinator run it: clear, prepare, world update and
    // passes with the layer, composition, present; returns the presented picture.
    ScreenshotImage Frame(const std::function<void(bool shadowPass)>& layer = nullptr,
                          const std::function<void()>& afterWorld = nullptr) {
        screen->Clear();
        screen->PrepareFrame();
        screen->overlay.Fill(0);
        screen->screenDisplaySize = 1.0f;
        screen->screenColorMultiplier = 1.0f;
        screen->threeD = world->ThreeDActive();
        world->Update();
        const int passes = world->PassCount();
        for (int pass = 0; pass < passes; ++pass) {
            const bool shadow = passes == 2 && pass == 0;
            world->BeginPass(shadow);
            if (layer) {
                layer(shadow);
            }
            world->EndPass();
        }
        if (afterWorld) {
            afterWorld();
        }
        screen->BindDefaultFramebuffer();
        world->ComposeWorld(false, false);
        screen->Present(host.frameTime);
        ScreenshotImage image;
        EXPECT_TRUE(screen->ReadLastFrame(image.pixels, image.width, image.height));
        now += 17;
        return image;
    }

    LogCapture quiet;
    TempUserData data;
    ScriptedHost host;
    std::unique_ptr<VeScreen> screen;
    std::unique_ptr<ArEnvironmentManager> world;
    std::vector<std::unique_ptr<VeImage>> images;
    int64_t now = 100000;

private:
    std::filesystem::path previousFolder;
};

} // namespace renderer_test

#include "engine/Screen/PixelProbe.h"
#include "engine/Screen/ScreenTestSupport.h"

#include "Screen/Surface/VeSurface.h"
#include "Screen/VeCursor.h"
#include "Support/HaltCapture.h"
#include "Support/TempUserData.h"

#include <SDL.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace {

// A picture that exercises every kind of overlay pixel: opaque colours, the key, a key darkened
// into a translucent shade, a half-blended colour over the key, and a gradient.
void DrawKnownOverlay(VeSurface& overlay) {
    overlay.Fill(0);
    overlay.Rect(0, 0, 640, 40, 0x1678D6);
    overlay.Rect(40, 80, 200, 200, 0xE99209);
    overlay.Rect(300, 80, 300, 200, kColourKey);
    overlay.MultiplyRect(320, 100, 120, 160, 0.5f);
    overlay.Rect(460, 100, 120, 160, 0x1ADE0C, true, false, 0.5f);
    for (int x = 0; x < 640; ++x) {
        uint32_t level = static_cast<uint32_t>(x * 255 / 639);
        overlay.Line(x, 320, x, 400, level << 16 | (255 - level) << 8 | 0x40);
    }
    overlay.Rect(100, 440, 440, 160, 0xFFFFFF, false);
    overlay.Line(100, 440, 539, 599, 0xE1120C);
    overlay.Rect(0, 620, 640, 20, 0xE6D514);
}

} // namespace

// The OpenGL path, the software path, and the OpenGL path before its shaders exist (the frame is
// composed in software and copied into the window): all three show the same pictures.
enum class Path { OpenGL, Software, Copied };

class VeScreenPathTest : public ScreenTestBase, public ::testing::WithParamInterface<Path> {
protected:
    VeScreen& Open() {
        VeScreen::DeferShaders(GetParam() == Path::Copied);
        VeScreen& s = OpenScreen(GetParam() == Path::Software);
        VeScreen::DeferShaders(false);
        return s;
    }
};

TEST_P(VeScreenPathTest, PresentsTheOverlayAsStoredAndSavesItAsScreenshot) {
    VeScreen& s = Open();
    EXPECT_EQ(s.glEnabled, GetParam() != Path::Software);
    DrawKnownOverlay(s.overlay);
    ScreenshotImage shot = PresentAndRead();
    EXPECT_TRUE(MatchesStoredImage("screen/overlay.png", shot, 3));
    EXPECT_EQ(s.basicShader == nullptr, GetParam() != Path::OpenGL) << "no shader before PrepareShaders";

    // A screenshot saved as the game saves it, without frame capture, holds the same picture.
    TempUserData temp;
    s.SetFrameCapture(false);
    DrawKnownOverlay(s.overlay);
    s.Clear();
    s.PrepareFrame();
    s.Present(1.0f / 60.0f);
    ScreenshotImage saved;
    ASSERT_TRUE(s.SaveScreenshot(temp.path + "/shot.png"));
    ASSERT_TRUE(LoadScreenshot(temp.path + "/shot.png", saved));
    const ScreenshotDifference difference = CompareScreenshots(saved, shot, 0);
    EXPECT_TRUE(difference.sameSize);
    EXPECT_EQ(difference.differingPixels, 0);

    // Once the shaders are made, frames go through them with the same picture.
    while (!s.PrepareShaders()) {
    }
    DrawKnownOverlay(s.overlay);
    EXPECT_EQ(CompareScreenshots(PresentAndRead(), shot, 3).differingPixels, 0);
}

TEST_P(VeScreenPathTest, DisplaySizeColourMultiplierAndGreyChangeThePicture) {
    VeScreen& s = Open();
    DrawKnownOverlay(s.overlay);
    s.screenDisplaySize = 0.5f;
    s.screenColorMultiplier = 0.6f;
    ScreenshotImage dimmed = PresentAndRead();
    EXPECT_TRUE(MatchesStoredImage("screen/dimmed-half.png", dimmed, 3));

    DrawKnownOverlay(s.overlay);
    s.screenDisplaySize = 1.0f;
    s.screenColorMultiplier = 1.0f;
    s.greyScale = true;
    ScreenshotImage grey = PresentAndRead();
    EXPECT_TRUE(MatchesStoredImage("screen/grey.png", grey, 3));

    // Display sizes outside 0 to 1 show all or nothing.
    DrawKnownOverlay(s.overlay);
    s.greyScale = false;
    s.screenDisplaySize = 2.0f;
    EXPECT_EQ(Mismatches(PresentAndRead(), {{320, 20, 0x1678D6}, {320, 630, 0xE6D514}}), "");
    DrawKnownOverlay(s.overlay);
    s.screenDisplaySize = 0.0f;
    EXPECT_EQ(Mismatches(PresentAndRead(), {{320, 20, 0x000000}, {320, 630, 0x000000}}), "");
}

INSTANTIATE_TEST_SUITE_P(AllPaths, VeScreenPathTest,
                         ::testing::Values(Path::OpenGL, Path::Software, Path::Copied),
                         [](const ::testing::TestParamInfo<Path>& info) {
                             return std::string(info.param == Path::OpenGL     ? "OpenGL"
                                                : info.param == Path::Software ? "Software"
                                                                               : "Copied");
                         });

TEST_F(ScreenTestBase, RefusedVsyncIsLoggedOnceAndTheSoftwarePathCountsAsSynchronised) {
    VeScreen& gl = OpenScreen(false);
    gl.SetVSync();
    gl.SetVSync();
    const auto lines = std::count_if(logged.lines.begin(), logged.lines.end(), [](const std::string& text) {
        return text.find("Vertical synchronization") != std::string::npos;
    });
    EXPECT_LE(lines, 1);
    EXPECT_EQ(gl.vsync, lines == 0) << "a refused swap interval leaves vsync off";

    screen.reset();
    VeScreen& software = OpenScreen(true);
    EXPECT_TRUE(software.vsync);
}

TEST_F(ScreenTestBase, PresentingAnUnpreparedFrameIsAProgrammingError) {
    VeScreen& s = OpenScreen(true);
    EXPECT_TRUE(FailsAssertionIn("VeScreen.cpp", [&] { s.Present(0.016f); }));
    EXPECT_NE(log.find("Warning: Screen not prepared for frame!\n"), std::string::npos);
}

// Mesa reads the version override when the first context is made, so each case runs in a fresh
// process.
TEST(VeScreenOldOpenGLTest, BelowThreeThreeFallsBackToSoftwareOrHaltsWhenRequired) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    auto open = [](bool requireOpenGL) {
        setenv("MESA_GL_VERSION_OVERRIDE", "2.1", 1);
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
        std::filesystem::current_path(QM_SOURCE_DIR);
        VeScreen s(640, 640, requireOpenGL, false, true, "", "");
        s.SetFramePacing(false);
        s.overlay.Fill(0x00FF00);
        s.Clear();
        s.PrepareFrame();
        s.Present(0.016f);
        std::vector<uint32_t> pixels;
        int32_t w = 0;
        int32_t h = 0;
        bool shown = s.ReadLastFrame(pixels, w, h) && (pixels[w * 10 + 10] & 0xFFFFFF) == 0x00FF00;
        std::exit(!s.glEnabled && shown ? 3 : 4);
    };
    EXPECT_EXIT(open(false), ::testing::ExitedWithCode(3), "");
    EXPECT_EXIT(open(true), ::testing::ExitedWithCode(0),
                "OpenGL Initialization failed.*OpenGL version 2\\.1 .* detected\\..*This application "
                "requires version "
                "3\\.3 or higher\\. Try updating your graphic card driver\\.");
}

TEST_F(ScreenTestBase, LeavingTheWindowShowsTheArrowUntilTheMouseComesBack) {
    OpenScreen(false);
    VeCursor::SetMode(3);
    Push(SDL_WINDOWEVENT, SDL_WINDOWEVENT_ENTER);
    PresentAndRead();
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE) << "mode 3 hides the cursor inside the window";

    Push(SDL_WINDOWEVENT, SDL_WINDOWEVENT_LEAVE);
    EXPECT_TRUE(VeCursor::MouseOutside());
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE) << "leaving shows the arrow";
    PresentAndRead();
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE) << "no cursor updates while the mouse is outside";

    Push(SDL_MOUSEMOTION, 0);
    EXPECT_FALSE(VeCursor::MouseOutside());
    PresentAndRead();
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);

    VeCursor::SetMode(1);
    PresentAndRead();
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
    VeCursor::SetMode(0);
    SDL_FlushEvents(SDL_FIRSTEVENT, SDL_LASTEVENT);
}

// The shipped icon loads in every windowed start of the game's tests.
TEST_F(ScreenTestBase, AMissingWindowIconHalts) {
    VeScreen::ForceSoftwarePath(true);
    EXPECT_HALT(VeScreen(640, 640, false, false, true, "Assets/NoSuchIcon.png", ""),
                "Halt: Could not find image",
                "App halted when loading image: Assets/NoSuchIcon.png (VePNGFile::Load)");
}

// Full screen needs a window manager, which the test display lacks; a larger window of another
// shape letterboxes the same way.
TEST_P(VeScreenPathTest, AWiderWindowLetterboxesTheLogicalScreen) {
    VeScreen& s = Open();
    if (std::string(SDL_GetCurrentVideoDriver()) == "offscreen") {
        GTEST_SKIP() << "the offscreen driver's drawing surface keeps its first size";
    }
    SDL_SetWindowSize(s.window, 1000, 800);
    s.overlay.Fill(0xFFFFFF);
    ScreenshotImage shot;
    // The window system takes a frame or two to give the drawing surface its new size.
    for (int frame = 0; frame < 3; ++frame) {
        SDL_PumpEvents();
        s.ResetViewport();
        shot = PresentAndRead();
    }
    ASSERT_EQ(shot.width, 1000);
    ASSERT_EQ(shot.height, 800);
    VeViewportMapping mapping = s.GetViewportMapping();
    EXPECT_FLOAT_EQ(mapping.scaleX, 1.25f);
    EXPECT_FLOAT_EQ(mapping.scaleY, 1.25f);
    EXPECT_EQ(mapping.x, 80) << "(1000 / 1.25 - 640) / 2 logical pixels of bar";
    EXPECT_EQ(Mismatches(shot, {{50, 400, 0}, {97, 400, 0}, {903, 400, 0}, {950, 400, 0}}), "")
        << "the bars are black";
    EXPECT_EQ(Mismatches(shot, {{102, 2, 0xFFFFFF}, {897, 797, 0xFFFFFF}}), "")
        << "the picture fills the height";
}

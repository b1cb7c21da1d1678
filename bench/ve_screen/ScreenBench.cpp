// Surface drawing, texture upload and whole frames. The screen cases need a display:
//   xvfb-run -a build/bench/ve_screen_bench
// (or no DISPLAY at all, which uses SDL's offscreen driver). Frames are not paced here, so a
// frame's figure is the engine's own cost without any wait for the display. The screen cases
// count the CPU time of the whole process, which includes the software rasteriser's threads.
#include "Screen/Surface/VeSurface.h"
#include "Screen/VeScreen.h"

#include <GL/glew.h>
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

namespace {

VeSurface MakeSprite() {
    VeSurface sprite(64, 64);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            // A round sprite: the corners are the transparent key, as in the game's images.
            int dx = x - 32;
            int dy = y - 32;
            sprite.SetPixel(y * 64 + x,
                            dx * dx + dy * dy < 900 ? 0x1678D6u + static_cast<uint32_t>(x) : kColourKey);
        }
    }
    return sprite;
}

void BM_BlitKeyed64(benchmark::State& state) {
    VeSurface target(640, 640);
    VeSurface sprite = MakeSprite();
    int x = 0;
    for (auto _ : state) {
        target.BlitKeyed(sprite, 100 + x, 200, true);
        x = (x + 7) & 255;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_BlitKeyed64);

void BM_Fill640(benchmark::State& state) {
    VeSurface target(640, 640);
    uint32_t colour = 0x102030;
    for (auto _ : state) {
        target.Fill(colour++);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_Fill640);

void BM_MultiplyAll640(benchmark::State& state) {
    VeSurface target(640, 640);
    target.Fill(0x80C0E0);
    for (auto _ : state) {
        target.MultiplyAll(0.98f);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_MultiplyAll640);

// One screen for the whole process run; the OpenGL cases and the software frame each open theirs.
std::unique_ptr<VeScreen> OpenScreen(bool software) {
    std::filesystem::current_path(QM_SOURCE_DIR);
    setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
    VeScreen::ForceSoftwarePath(software);
    auto screen = std::make_unique<VeScreen>(640, 640, false, false, true, "", "");
    screen->SetFramePacing(false);
    return screen;
}

void BM_UploadTexture640(benchmark::State& state) {
    auto screen = OpenScreen(false);
    if (!screen->glEnabled) {
        state.SkipWithError("no OpenGL 3.3");
        return;
    }
    VeSurface overlay(640, 640);
    overlay.Fill(0x336699);
    for (auto _ : state) {
        GLuint name = overlay.UploadTexture(GL_NEAREST);
        glDeleteTextures(1, &name);
    }
    glFinish();
}
BENCHMARK(BM_UploadTexture640)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();

void RunFrames(benchmark::State& state, bool software) {
    auto screen = OpenScreen(software);
    if (screen->glEnabled == software) {
        state.SkipWithError("the path asked for is not available");
        return;
    }
    screen->overlay.Fill(0);
    for (auto _ : state) {
        // What the main loop and the game frame do around the drawing itself.
        screen->Clear();
        screen->PrepareFrame();
        screen->overlay.Fill(0);
        screen->overlay.Rect(100, 100, 200, 50, 0xE99209);
        screen->Present(1.0f / 60.0f);
    }
}

void BM_FrameOpenGL(benchmark::State& state) {
    RunFrames(state, false);
}
BENCHMARK(BM_FrameOpenGL)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

void BM_FrameSoftware(benchmark::State& state) {
    RunFrames(state, true);
}
BENCHMARK(BM_FrameSoftware)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime();

} // namespace

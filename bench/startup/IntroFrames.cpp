// The intro's frames while the rest of the start-up runs one step a frame, as the game starts
// (a quick start, with sound): the main thread's wall and CPU time of each frame, without frame
// pacing, so that a step too long for one frame shows as the frame it stretches.
//
//   startup-intro-frames [FRAMES]      (default 40: the start-up is done well before)
//
// Runs in the source tree (where the game's data lies) on the user data folder the environment
// names (QUILLMAZE_USER_DATA). Prints "frame N WALL CPU" in milliseconds for every frame, frame 0
// being the intro's first.
#include "App/VeRegistry.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaApp.h"
#include "Platform/VeLog.h"
#include "Screen/VeScreen.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>

namespace {

double ThreadCpuMs() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace

int main(int argc, char** argv) {
    const int frames = argc > 1 ? std::atoi(argv[1]) : 40;
    std::filesystem::current_path(QM_SOURCE_DIR);
    setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
    SetLogSink([](const std::string&) {});
    QmCommandLine line;
    if (line.Parse({"quillmaze"}) != QmCommandLine::Result::Run) {
        return 2;
    }
    auto app = std::make_unique<VaApp>();
    app->FillSettings();
    app->registry->SetInt("VE_DEBUG_INFO", 0);
    app->UseCommandLine(line);
    app->SetQuickStart(true);
    app->Init();
    if (app->screen == nullptr) {
        std::fprintf(stderr, "startup-intro-frames: no window\n");
        return 1;
    }
    app->screen->SetFramePacing(false);
    app->CreateManagers();
    for (int frame = 0; frame < frames && !app->ShouldQuit(); ++frame) {
        const auto wall = std::chrono::steady_clock::now();
        const double cpu = ThreadCpuMs();
        app->Frame();
        const double wallMs =
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - wall).count();
        std::printf("frame %d %.1f %.1f\n", frame, wallMs, ThreadCpuMs() - cpu);
    }
    app->Shutdown();
    app.reset();
    SetLogSink(nullptr);
    return 0;
}

// The main menu's whole frame (input, the menu's frame, composition and presentation on the
// OpenGL path, without frame pacing) with the falling-block backdrop, against the same frame with
// the backdrop still, in the same run; the ratio is the animation's cost.
// Run under Xvfb: SDL_AUDIODRIVER=dummy xvfb-run -a build/bench/qm_frontend_bench
#include "App/VeRegistry.h"
#include "Coordinator/QmCommandLine.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPages.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Screen/VeScreen.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include <unistd.h>

namespace {

class MenuGame {
public:
    MenuGame() {
        std::filesystem::current_path(QM_SOURCE_DIR);
        setenv("QUILLMAZE_NO_DIALOGS", "1", 1);
        folder =
            (std::filesystem::temp_directory_path() / ("quillmaze-menu-bench-" + std::to_string(getpid())))
                .string();
        setenv("QUILLMAZE_USER_DATA", folder.c_str(), 1);
        SetLogSink([](const std::string&) {});
        QmCommandLine line;
        if (line.Parse({"quillmaze", "--2d", "--fixed-dt", "0.016667"}) != QmCommandLine::Result::Run) {
            return;
        }
        app = std::make_unique<VaApp>();
        app->FillSettings();
        app->registry->SetInt("VE_USE_AUDIO", 0);
        app->registry->SetInt("VE_DEBUG_INFO", 0);
        app->UseCommandLine(line);
        app->Init();
        if (app->screen == nullptr) {
            app.reset();
            return;
        }
        app->screen->SetFramePacing(false);
        app->CreateManagers();
        app->coordinator->SetOption(QmOptions::kVsync, "0");
        app->coordinator->FrontEnd().MenuPages().SetPage(QmMenuPages::kMainMenu);
    }
    ~MenuGame() {
        if (app) {
            app->Shutdown();
            app.reset();
        }
        SetLogSink(nullptr);
        DeleteFolder(folder);
    }
    MenuGame(const MenuGame&) = delete;
    MenuGame& operator=(const MenuGame&) = delete;

    std::unique_ptr<VaApp> app;
    std::string folder;
};

void MenuFrames(benchmark::State& state, bool animated) {
    MenuGame game;
    if (!game.app) {
        state.SkipWithError("the game could not start (no window?)");
        return;
    }
    VaCoordinator& c = *game.app->coordinator;
    c.SetOption(QmOptions::kAnimatedMenuBackground, animated ? "1" : "0");
    for (int i = 0; i < 300; ++i) { // a stack of blocks builds up
        game.app->Frame();
    }
    for (auto _ : state) {
        game.app->Frame();
    }
    state.counters["opengl"] = game.app->screen->glEnabled ? 1.0 : 0.0;
    state.counters["page"] = c.FrontEnd().MenuPages().Page();
    state.counters["landed"] = c.FrontEnd().MenuPages().Background().LandedCount();
}

void BM_MainMenuFrameStill(benchmark::State& state) {
    MenuFrames(state, false);
}

void BM_MainMenuFrameAnimated(benchmark::State& state) {
    MenuFrames(state, true);
}

} // namespace

BENCHMARK(BM_MainMenuFrameStill)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);
BENCHMARK(BM_MainMenuFrameAnimated)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2.0);

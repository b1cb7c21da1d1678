// The main menu's whole frame (input, the menu's frame, composition and presentation on the
// OpenGL path, without frame pacing) with the falling-block backdrop, against the same frame with
// the backdrop still, in the same run; the ratio is the animation's cost.
// Run under Xvfb: SDL_AUDIODRIVER=dummy xvfb-run -a build/bench/qm_frontend_bench
#include "BenchGame.h"
#include "Coordinator/VaCoordinator.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPages.h"
#include "Screen/VeScreen.h"

#include <benchmark/benchmark.h>

namespace {

void MenuFrames(benchmark::State& state, bool animated) {
    BenchGame game("menu");
    if (!game.StartOnMainMenu()) {
        state.SkipWithError("the game could not start (no window?)");
        return;
    }
    VaApp& app = *game.App();
    VaCoordinator& c = *app.coordinator;
    c.SetOption(QmOptions::kAnimatedMenuBackground, animated ? "1" : "0");
    for (int i = 0; i < 300; ++i) { // a stack of blocks builds up
        app.Frame();
    }
    for (auto _ : state) {
        app.Frame();
    }
    state.counters["opengl"] = app.screen->glEnabled ? 1.0 : 0.0;
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

#include "Screen/Text/VeText.h"

#include <benchmark/benchmark.h>

namespace {
const std::string kForty = "BEST TIME 1:02.45 ON MAP 12 OF 20 - WELL"; // 40 characters

// Laying out and rendering a 40-character text at size 3, weight 3, as a page does when a text
// changes.
void BM_DrawText40Size3Weight3(benchmark::State& state) {
    const VeTextStyle style(3, 0xFFFFFF, 3, 3, 1);
    VeText text(kForty, &style);
    for (auto _ : state) {
        text.Draw();
        benchmark::DoNotOptimize(text.surface.Pixels());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kForty.size()));
}
BENCHMARK(BM_DrawText40Size3Weight3);

// The same text wrapped into lines of 300 pixels.
void BM_DrawText40Wrapped(benchmark::State& state) {
    const VeTextStyle style(3, 0xFFFFFF, 3, 3, 1, 300);
    VeText text(kForty, &style);
    for (auto _ : state) {
        text.Draw();
        benchmark::DoNotOptimize(text.surface.Pixels());
    }
}
BENCHMARK(BM_DrawText40Wrapped);

// The frame-rate display: a short text drawn onto the overlay with its outline, every frame.
void BM_DrawFrameRateText(benchmark::State& state) {
    VeSurface overlay(640, 640);
    const VeTextStyle style(4, 0x00FF00, 4, 1, 1);
    for (auto _ : state) {
        VeText::DrawString(overlay, "VSYNC + FPS: 60", 320, 10, style, true, 1.0f, 0x000000);
        benchmark::DoNotOptimize(overlay.Pixels());
    }
}
BENCHMARK(BM_DrawFrameRateText);
} // namespace

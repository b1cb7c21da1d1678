#include "Form/VeButton.h"
#include "Form/VeCheckbox.h"
#include "Form/VeTextInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

namespace {

// A page of elements as the options and account pages have them on the 640 x 640 overlay: three
// text inputs, six checkboxes and two buttons, one of each focused, drawn every frame.
void BM_DrawFormPage(benchmark::State& state) {
    VeSurface overlay(640, 640);
    const VeTextStyle inputStyle(2, 0x202020, 2, 1, 1);
    const VeTextStyle labelStyle(3, 0xDDDDDD, 2, 1, 1);
    VeButtonStyle buttonStyle(200, 50);
    buttonStyle.normalFillColour = 0x333333;
    buttonStyle.borderColour = 0x000000;
    buttonStyle.hoverBorderColour = 0xFF0000;
    buttonStyle.hoverBorderThickness = 4;
    VeCheckboxStyle boxStyle;
    std::vector<std::unique_ptr<VeFormElement>> elements;
    for (int i = 0; i < 3; ++i) {
        elements.push_back(std::make_unique<VeTextInput>(nullptr, 100.0f,
                                                         60.0f + 50.0f * static_cast<float>(i), 400, 36,
                                                         inputStyle, 30, "player.name@example"));
    }
    for (int i = 0; i < 6; ++i) {
        elements.push_back(std::make_unique<VeCheckbox>(&boxStyle, 100.0f,
                                                        230.0f + 40.0f * static_cast<float>(i), i % 2 == 0));
    }
    for (int i = 0; i < 2; ++i) {
        buttonStyle.x = 100.0f + 240.0f * static_cast<float>(i);
        buttonStyle.y = 500.0f;
        elements.push_back(std::make_unique<VeButton>(i == 0 ? "Save" : "Back", &buttonStyle, &labelStyle));
    }
    elements[0]->selected = true;
    elements[4]->hovered = true;
    elements[9]->selected = true;
    for (auto _ : state) {
        overlay.Fill(0x1C2A44);
        for (auto& element : elements) {
            element->Draw(overlay, true, false);
        }
        benchmark::DoNotOptimize(overlay.Pixels());
    }
}
BENCHMARK(BM_DrawFormPage);

// One change of a 30-character input's content: the text is laid out and rendered again.
void BM_TextInputContentChange(benchmark::State& state) {
    const VeTextStyle style(2, 0x202020, 2, 1, 1);
    VeTextInput field(nullptr, 10.0f, 10.0f, 400, 36, style, 30);
    const std::string content = "a name of thirty characters ok";
    for (auto _ : state) {
        field.SetText(content, 30);
        benchmark::DoNotOptimize(field.text.surface.Pixels());
    }
}
BENCHMARK(BM_TextInputContentChange);

} // namespace

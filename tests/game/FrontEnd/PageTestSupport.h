#pragma once
// Test support for a page on its own: a 640 x 640 page over a plain background, a fake
// keyboard and mouse, the language files of the repository and a standing clock.
#include "Controls/QmControls.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/QmPageContext.h"
#include "FrontEnd/QmTextBox.h"
#include "Input/VeInput.h"
#include "Platform/VeTime.h"
#include "Screen/Surface/VeSurface.h"
#include "Support/Screenshot.h"
#include "engine/Input/FakeInputSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace page_test {

constexpr uint32_t kBackground = 0x203040;
constexpr int kMargin = 6;

// Every text inside its box or button: none runs over, none is cut.
inline ::testing::AssertionResult AllFit(const QmTextBoxes& boxes) {
    for (const QmTextBox& box : boxes) {
        if (!box.Fits()) {
            return ::testing::AssertionFailure()
                   << "\"" << box.text << "\" is " << box.textWidth << " x " << box.textHeight
                   << " in a box of " << box.boxWidth << " x " << box.boxHeight;
        }
    }
    return ::testing::AssertionSuccess();
}

class PageTest : public ::testing::Test {
protected:
    PageTest() : language(std::string(QM_SOURCE_DIR) + "/Lang") {
        language.Load("English");
        SetTimeSource([] { return int64_t{0}; });
        page.Create(640, 640);
        page.Fill(kBackground);
        context.target = &page;
        context.input = &input;
        context.controls = &controls;
        context.line = [this](int number) { return language.GetLine(number); };
        context.sound = [this](const std::string& name) { sounds.push_back(name); };
    }
    ~PageTest() override { SetTimeSource(nullptr); }

    // One frame of the page with these keys going down (and every key up again afterwards).
    template <typename PageFrame> auto WithKeys(std::initializer_list<int> keys, PageFrame frame) {
        for (int key : keys) {
            devices.keys[key] = 1;
        }
        return Step(frame);
    }

    // One frame with the pointer at (x, y), the left button going down for it when click is set.
    template <typename PageFrame> auto WithPointer(int x, int y, bool click, PageFrame frame) {
        devices.mouseX = x;
        devices.mouseY = y;
        devices.buttons = click ? 1u : 0u;
        return Step(frame);
    }

    // One frame of a page that runs on the context, with these keys going down.
    template <typename Page> auto Frame(Page& runs, std::initializer_list<int> keys) {
        return WithKeys(keys, [&] { return runs.Frame(context); });
    }

    ScreenshotImage Picture() const { return ScreenshotOf(page); }

    // How many pixels of the colour lie in the rectangle.
    int Count(int x0, int y0, int w, int h, uint32_t colour) const {
        int count = 0;
        for (int y = y0; y < y0 + h; ++y) {
            for (int x = x0; x < x0 + w; ++x) {
                count += (page.GetXY(x, y) & 0xFFFFFF) == colour ? 1 : 0;
            }
        }
        return count;
    }

    FakeInputSource::Devices devices;
    VeInput input{nullptr, std::make_unique<FakeInputSource>(&devices)};
    QmControls controls{&input};
    QmLanguage language;
    VeSurface page;
    QmPageContext context;
    std::vector<std::string> sounds;

private:
    template <typename PageFrame> auto Step(PageFrame frame) {
        input.Update();
        page.Fill(kBackground);
        auto result = frame();
        input.ClearPressed();
        std::fill(std::begin(devices.keys), std::end(devices.keys), uint8_t{0});
        devices.buttons = 0;
        input.Update();
        input.ClearPressed();
        return result;
    }
};

} // namespace page_test

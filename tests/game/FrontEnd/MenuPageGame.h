#pragma once
// Test support for the menu pages: the game with its window (the tests run under Xvfb) on the
// shipped tours in a temporary game folder, without sound, with a scripted keyboard and mouse and
// a driven clock. A page runs one frame at a time over a plain background, as the menu's frame
// runs it, and its picture is the screen's overlay.
#include "FrontEnd/QmTextBox.h"
#include "Network/QmNetworkManager.h"
#include "PageTestSupport.h"
#include "Support/Screenshot.h"
#include "game/Coordinator/HeadlessGame.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <string>
#include <thread>

using page_test::AllFit;

class MenuPageGame : public HeadlessGame {
protected:
    static constexpr uint32_t kBackground = 0x203040;

    void SetUp() override {
        HeadlessGame::SetUp();
        StartInWindow({});
        if (HasFatalFailure()) {
            return;
        }
        ASSERT_NE(coordinator->environment, nullptr);
    }

    // One frame of the page with these keys going down (and up again after it).
    template <typename Page> void Keys(Page& page, std::initializer_list<int> keys) {
        for (int key : keys) {
            devices.keys[key] = 1;
        }
        Run(page);
        for (int key : keys) {
            devices.keys[key] = 0;
        }
        app->input->Update();
        app->input->ClearPressed();
    }

    // One frame of the page per key, in order.
    template <typename Page> void Presses(Page& page, std::initializer_list<int> keys) {
        for (int key : keys) {
            Keys(page, {key});
        }
    }

    // One frame with the pointer at (x, y) of the page, clicking when asked.
    template <typename Page> void Pointer(Page& page, int x, int y, bool click = false) {
        devices.mouseX = x;
        devices.mouseY = y;
        devices.buttons = click ? 1u : 0u;
        Run(page);
        devices.buttons = 0;
        app->input->Update();
        app->input->ClearPressed();
    }

    template <typename Page> void Run(Page& page) {
        now += 17;
        app->input->Update();
        app->screen->overlay.Fill(kBackground);
        page.Frame();
        app->input->ClearPressed();
    }

    // Frames of the page with the client's answers taken after each, until done() or about twenty
    // seconds. The driven clock stands still meanwhile: the threads of the connection layer run in
    // real time, however slowly.
    template <typename Page> bool Until(Page& page, const std::function<bool()>& done) {
        for (int frame = 0; frame < 4000; ++frame) {
            Run(page);
            now -= 17;
            app->network->Update();
            if (done()) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return false;
    }

    // Until no request is out.
    template <typename Page> bool Settled(Page& page) {
        return Until(page, [this] { return !app->network->IsWaiting(); });
    }

    // One of the boxes shows the language line.
    bool Shows(const QmTextBoxes& boxes, int line) {
        const std::string text = coordinator->GetLine(line);
        return std::any_of(boxes.begin(), boxes.end(),
                           [&](const QmTextBox& box) { return box.text == text; });
    }

    ScreenshotImage Picture() const { return ScreenshotOf(app->screen->overlay); }

    // Pixels of the rectangle that are not the background.
    int Drawn(int x0, int y0, int w, int h) const {
        int count = 0;
        for (int y = y0; y < y0 + h; ++y) {
            for (int x = x0; x < x0 + w; ++x) {
                count += (app->screen->overlay.GetXY(x, y) & 0xFFFFFF) != kBackground ? 1 : 0;
            }
        }
        return count;
    }
};

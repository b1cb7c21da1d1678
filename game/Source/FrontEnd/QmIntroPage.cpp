#include "FrontEnd/QmIntroPage.h"

#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Form/VeFormElement.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPages.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Platform/VeTime.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Text/VeText.h"
#include "Screen/VeCursor.h"
#include "Screen/VeScreen.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

QmIntroPage::QmIntroPage(std::function<int64_t()> clockSource) : clock(std::move(clockSource)) {
    if (!clock) {
        clock = [] { return GetTimeMs(); };
    }
    const VeScreen* screen = C()->app->screen;
    const int32_t width = screen != nullptr ? screen->width : 640;
    const int32_t height = screen != nullptr ? screen->height : 640;
    if (screen != nullptr) {
        logo = std::make_unique<VeImage>("Assets/Logo.png");
        logoX = static_cast<float>(width / 2 - logo->width / 2);
        logoY = static_cast<float>(height / 2 - logo->height / 2);
    }
    Relabel();
    promptX = static_cast<float>(width) * 0.5f - 1.0f;
    promptY = static_cast<float>(height) * 0.75f;
    startClock = -1; // the six seconds count from the first frame shown
}

QmIntroPage::~QmIntroPage() = default;

void QmIntroPage::Restart() {
    startClock = clock();
}

void QmIntroPage::Relabel() {
    const std::string text = C()->Language().GetLine(kPromptLine);
    const VeTextStyle shadowStyle(3, 0x000000, 5, 1, 1);
    const VeTextStyle promptStyle(3, 0xFFFFFF, 3, 3, 1);
    promptShadow = std::make_unique<VeText>(text, &shadowStyle);
    prompt = std::make_unique<VeText>(text, &promptStyle);
}

QmTextBoxes QmIntroPage::TextBoxes() const {
    QmTextBoxes boxes;
    if (prompt) {
        const int32_t room = 2 * std::min(static_cast<int32_t>(promptX), 640 - static_cast<int32_t>(promptX));
        boxes.emplace_back(*prompt, room - 16, 640 - static_cast<int32_t>(promptY));
    }
    return boxes;
}

void QmIntroPage::Frame() {
    if (startClock < 0) {
        Restart();
    }
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    if (screen != nullptr && logo) {
        VeSurface& overlay = screen->overlay;
        overlay.BlitKeyed(*logo, static_cast<int32_t>(logoX), static_cast<int32_t>(logoY), true);
        const int32_t x = static_cast<int32_t>(promptX);
        const int32_t y = static_cast<int32_t>(promptY);
        overlay.DrawImage(promptShadow->surface, x, y, true, kColourKey, 1.0f, c->blink, true);
        overlay.DrawImage(prompt->surface, x, y, true, kColourKey, 1.0f, c->blink, true);
    }
    const VeInput* input = c->app->input;
    const bool key =
        input != nullptr && (input->pressed[VeKey::Space] != 0 || input->pressed[VeKey::Return] != 0 ||
                             input->pressed[VeKey::KeypadEnter] != 0);
    const bool click = input != nullptr && input->mousePressed[kMouseLeft] != 0;
    // The arrow, as on every page; the hand over the prompt, which asks for the click.
    const int32_t halfWidth = prompt ? prompt->surface.width / 2 : 0;
    const int32_t height = prompt ? prompt->surface.height : 0;
    const bool overPrompt = input != nullptr &&
                            std::abs(input->mouseX - static_cast<int32_t>(promptX)) < halfWidth &&
                            input->mouseY >= static_cast<int32_t>(promptY) &&
                            input->mouseY < static_cast<int32_t>(promptY) + height;
    VeCursor::SetMode(overPrompt ? VeCursorKind::Hand : VeCursorKind::Arrow);
    if (key || click || clock() - startClock >= kTimeoutMs) {
        VeCursor::SetMode(VeCursorKind::Arrow);
        c->FrontEnd().MenuPages().SetPage(QmMenuPages::kMainMenu);
    }
}

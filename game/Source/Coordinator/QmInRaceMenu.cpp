#include "Coordinator/QmInRaceMenu.h"

#include "Controls/QmControls.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeText.h"
#include "Screen/Text/VeTextStyle.h"

#include <algorithm>

namespace {
constexpr uint32_t kPanelColour = 0x1C1A24;
constexpr uint32_t kRimColour = 0xE6D514;
constexpr uint32_t kChoiceColour = 0x2E2B3A;
constexpr uint32_t kSelectedColour = 0x1678D6;
constexpr uint32_t kTextColour = 0xFFFFFF;
constexpr uint32_t kDimTextColour = 0xA8A4B8;
constexpr uint32_t kOutlineColour = 0x000000;
constexpr int kRim = 3;
constexpr int kTitleTop = 22;
constexpr int kFirstChoiceTop = 86;
constexpr int kChoiceStep = 56;

uint32_t Brighten(uint32_t colour, float factor) {
    uint32_t result = 0;
    for (int shift : {16, 8, 0}) {
        const float channel = static_cast<float>((colour >> shift) & 0xFF) * factor;
        result |= static_cast<uint32_t>(std::clamp(channel, 0.0f, 255.0f)) << shift;
    }
    return result;
}
} // namespace

void QmInRaceMenu::Open(const std::string& titleText, const std::string& resume, const std::string& leave,
                        const std::string& command) {
    open = true;
    selection = Resume;
    title = titleText;
    resumeText = resume;
    leaveText = leave;
    leaveCommand = command;
}

void QmInRaceMenu::Close() {
    open = false;
}

void QmInRaceMenu::ChoiceArea(int choice, int screenWidth, int screenHeight, int& x, int& y, int& w, int& h) {
    const int panelTop = (screenHeight - kPanelHeight) / 2;
    w = kChoiceWidth;
    h = kChoiceHeight;
    x = (screenWidth - kChoiceWidth) / 2;
    y = panelTop + kFirstChoiceTop + choice * kChoiceStep;
}

int QmInRaceMenu::ChoiceUnder(int px, int py, int screenWidth, int screenHeight) const {
    for (int choice : {Resume, Leave}) {
        int x = 0;
        int y = 0;
        int w = 0;
        int h = 0;
        ChoiceArea(choice, screenWidth, screenHeight, x, y, w, h);
        if (px >= x && px < x + w && py >= y && py < y + h) {
            return choice;
        }
    }
    return -1;
}

std::string QmInRaceMenu::Update(QmControls& controls, const VeInput* input, int screenWidth,
                                 int screenHeight) {
    if (!open) {
        return {};
    }
    if (controls.Back()) {
        Close();
        return {};
    }
    if (controls.MenuUp()) {
        selection = Resume;
    }
    if (controls.MenuDown()) {
        selection = Leave;
    }
    bool chosen = controls.Confirm();
    if (input != nullptr) {
        chosen = chosen || input->pressed[VeKey::Space] != 0;
        const int under = ChoiceUnder(input->mouseX, input->mouseY, screenWidth, screenHeight);
        if (under >= 0 && (input->mouseMoved || input->mousePressed[kMouseLeft] != 0)) {
            selection = under;
        }
        if (under >= 0 && input->mousePressed[kMouseLeft] != 0) {
            chosen = true;
        }
    }
    if (!chosen) {
        return {};
    }
    Close();
    return selection == Leave ? leaveCommand : std::string();
}

void QmInRaceMenu::Draw(VeSurface& target, float pulse) const {
    if (!open) {
        return;
    }
    const int left = (target.width - kPanelWidth) / 2;
    const int top = (target.height - kPanelHeight) / 2;
    target.Rect(left - kRim, top - kRim, kPanelWidth + 2 * kRim, kPanelHeight + 2 * kRim, kRimColour, true,
                true);
    target.Rect(left, top, kPanelWidth, kPanelHeight, kPanelColour, true, true);

    const VeTextStyle titleStyle(5, kTextColour, 4, 2, 0);
    VeText::DrawString(target, title, target.width / 2, top + kTitleTop, titleStyle, true, 1.0f,
                       kOutlineColour);

    const std::string texts[2] = {resumeText, leaveText};
    for (int choice : {Resume, Leave}) {
        int x = 0;
        int y = 0;
        int w = 0;
        int h = 0;
        ChoiceArea(choice, target.width, target.height, x, y, w, h);
        const bool selected = choice == selection;
        target.Rect(x, y, w, h, selected ? Brighten(kSelectedColour, pulse) : kChoiceColour, true, true);
        const VeTextStyle style(3, selected ? kTextColour : kDimTextColour, 3, 2, 0);
        VeText text(texts[choice], &style);
        text.DrawOnto(target, target.width / 2, y + (h - text.Height()) / 2, true, 1.0f, kOutlineColour);
    }
}

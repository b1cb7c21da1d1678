#include "FrontEnd/QmNoticeDialog.h"

#include "Controls/QmControls.h"
#include "FrontEnd/QmPanel.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"

#include <utility>

namespace {
constexpr uint32_t kWhite = 0xFFFFFF;
constexpr int32_t kPanelExtra = 110;
constexpr int32_t kMargin = 15;
} // namespace

QmNoticeDialog::QmNoticeDialog(VeSurface* surface, VeInput* inputState, QmControls* gameControls,
                               VeAudioManager* sounds, std::function<std::string(int)> lines,
                               VeButtonRow::PadReader padReader)
    : target(surface), input(inputState), controls(gameControls), audio(sounds), line(std::move(lines)),
      pad(std::move(padReader)), titleStyle(3, kWhite, 3, 3, 1), bodyStyle(2, kWhite, 2, 2, 1),
      labelStyle(2, kWhite, 2, 1, 1) {
    buttonStyle.normalFillColour = 0x333333;
    buttonStyle.borderColour = 0x000000;
    buttonStyle.hoverBorderColour = 0xFF0000;
    buttonStyle.hoverBorderThickness = 4;
    buttonStyle.hoverLabelColourOn = true;
    buttonStyle.hoverLabelColour = kWhite;
    buttonStyle.hoverSound = "Hover";
    title = std::make_unique<VeText>();
    body = std::make_unique<VeText>();
}

QmNoticeDialog::~QmNoticeDialog() = default;

void QmNoticeDialog::Show(int kind, bool secondButton, int32_t newWidth, const std::string& newAction,
                          const std::string& bodyText, const std::string& titleText) {
    action = newAction;
    bodySource = bodyText;
    answer.clear();
    const int32_t screenWidth = target != nullptr ? target->width : 640;
    width = newWidth > 0 ? newWidth : screenWidth / 2;

    title = std::make_unique<VeText>(titleText.empty() ? line(kTitleLine) : titleText, &titleStyle);
    VeTextStyle wrapped = bodyStyle;
    wrapped.LineHeight(4).MaxWidth(width - 2 * kMargin);
    body = std::make_unique<VeText>(bodyText, &wrapped);

    buttonStyle.y = static_cast<float>(body->Height() / 2 + 20);
    row = std::make_unique<VeButtonRow>(target, input, audio, pad);
    row->SetButtonStyle(&buttonStyle);
    row->SetLabelStyle(&labelStyle);
    row->SetSpacing(10);
    if (kind == kTwoButtons) {
        row->AddButton(line(kNoLine));
        row->AddButton(line(kYesLine));
    } else {
        row->AddButton(line(kOkLine));
    }
    row->Layout();
    if (kind == kTwoButtons && secondButton) {
        row->SelectByLabel(line(kYesLine));
    }
    visible = true;
}

bool QmNoticeDialog::AnsweredLine(int number) const {
    return Answered(line(number));
}

void QmNoticeDialog::Update() {
    answer.clear();
    if (!visible || !row) {
        return;
    }
    const bool left = controls != nullptr ? controls->MenuLeft() : false;
    const bool right = !left && controls != nullptr && controls->MenuRight();
    if (left) {
        row->SelectPrevious();
    } else if (right) {
        row->SelectNext();
    } else {
        bool done = false;
        for (const int number : {kOkLine, kNoLine, kYesLine}) {
            if (row->Activated(line(number))) {
                answer = line(number);
                visible = false;
                if (number == kYesLine) {
                    row->SelectFirst();
                }
                done = true;
                break;
            }
        }
        if (!done && controls != nullptr && (controls->Back() || controls->Confirm())) {
            visible = false;
        }
    }
    if (input != nullptr) {
        const float mx = static_cast<float>(input->mouseX);
        const float my = static_cast<float>(input->mouseY);
        if (mx != lastMouseX || my != lastMouseY) {
            row->MouseMoved(mx, my);
        }
        lastMouseX = mx;
        lastMouseY = my;
    }
}

void QmNoticeDialog::PanelBox(int32_t& left, int32_t& top, int32_t& w, int32_t& h) const {
    const int32_t screenWidth = target != nullptr ? target->width : 640;
    const int32_t screenHeight = target != nullptr ? target->height : 640;
    const int32_t bodyHeight = body->Height();
    w = width;
    h = bodyHeight + kPanelExtra;
    left = screenWidth / 2 - width / 2;
    top = screenHeight / 2 - 55 - bodyHeight / 2;
}

QmTextBoxes QmNoticeDialog::TextBoxes() const {
    // The texts start at the left margin and must end inside the panel (a wrapped line's width
    // counts the space it was broken at, so the right margin is not theirs to keep).
    QmTextBoxes boxes = row ? RowTextBoxes(*row) : QmTextBoxes();
    boxes.emplace_back(*title, width - kMargin, 35); // the title stands 35 pixels above the body
    boxes.emplace_back(*body, width - kMargin, body->Height());
    return boxes;
}

void QmNoticeDialog::Draw() {
    if (!visible || target == nullptr || !row) {
        return;
    }
    int32_t left = 0;
    int32_t top = 0;
    int32_t w = 0;
    int32_t h = 0;
    PanelBox(left, top, w, h);
    const int32_t bodyHeight = body->Height();
    QmPanel::DrawQuestion(*target, left, top, w, h);
    const int32_t middle = target->height / 2;
    target->BlitKeyed(title->surface, left + kMargin, middle - 40 - bodyHeight / 2);
    target->BlitKeyed(body->surface, left + kMargin, middle - 5 - bodyHeight / 2);
    row->Draw(false);
}

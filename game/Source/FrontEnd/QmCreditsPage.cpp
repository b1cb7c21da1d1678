#include "FrontEnd/QmCreditsPage.h"

#include "Audio/VeAudioManager.h"
#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Form/VeButtonRow.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPages.h"
#include "Input/VeInput.h"
#include "Screen/Text/VeText.h"
#include "Screen/VeScreen.h"

namespace {
constexpr const char* kVersion = "1.0.6";
// The people who made the game and the language lines of their roles.
struct Credit {
    const char* name;
    int roles[2];
};
constexpr Credit kCredits[] = {
    {"MARIT VELDHUIS", {17, 0}},
    {"JONAS ELLINGSEN", {17, 20}},
    {"CLAIRE DUMONT", {18, 20}},
    {"PIETER LAMBRECHTS", {19, 0}},
};
constexpr int32_t kListX = 50;
constexpr int32_t kListY = 40;
constexpr int32_t kFooterY = 470;

GamePad::State PadState() {
    return QmControls::PadState();
}
} // namespace

QmCreditsPage::QmCreditsPage() {
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    const int32_t width = screen != nullptr ? screen->width : 640;
    listStyle = std::make_unique<VeTextStyle>(2, 0xFFFFFF, 2, 1, 10, width - 100, 0, false);
    labelStyle = std::make_unique<VeTextStyle>(3, 0xFFFFFF, 2, 1, 1);
    buttonStyle = std::make_unique<VeButtonStyle>(400, 60);
    buttonStyle->normalFillColour = 0x333333;
    buttonStyle->borderColour = 0x000000;
    buttonStyle->hoverBorderColour = 0xFF0000;
    buttonStyle->hoverBorderThickness = 4;
    buttonStyle->hoverLabelColourOn = true;
    buttonStyle->hoverLabelColour = 0xFFFFFF;
    buttonStyle->y = -10.0f;
    buttonStyle->hoverSound = "Hover";
    Relabel();
}

QmCreditsPage::~QmCreditsPage() = default;

std::vector<std::string> QmCreditsPage::Lines() const {
    const QmLanguage& language = C()->Language();
    std::vector<std::string> lines{language.GetLine(16), "", language.GetLine(kVersionLine) + ": " + kVersion,
                                   ""};
    for (const Credit& credit : kCredits) {
        lines.emplace_back(credit.name);
        for (const int role : credit.roles) {
            if (role != 0) {
                lines.push_back(" " + language.GetLine(role));
            }
        }
        lines.emplace_back("");
    }
    lines.pop_back();
    return lines;
}

void QmCreditsPage::Relabel() {
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    list.clear();
    for (const std::string& line : Lines()) {
        list.push_back(std::make_unique<VeText>(line, listStyle.get()));
    }
    const VeTextStyle footerStyle(3, 0xFFFFFF, 2, 1, 1);
    footer = std::make_unique<VeText>(c->Language().GetLine(kFooterLine), &footerStyle);
    row = std::make_unique<VeButtonRow>(screen != nullptr ? &screen->overlay : nullptr, c->app->input,
                                        c->app->audio, PadState);
    row->SetButtonStyle(buttonStyle.get());
    row->SetLabelStyle(labelStyle.get());
    row->SetSpacing(2);
    row->AddButton(c->Language().GetLine(kBackLine));
    row->Layout();
    const int32_t width = screen != nullptr ? screen->width : 640;
    row->Arrange(VeButtonRow::Direction::Vertical, static_cast<float>(width / 2), 540.0f + buttonStyle->y);
}

QmTextBoxes QmCreditsPage::TextBoxes() const {
    QmTextBoxes boxes = RowTextBoxes(*row);
    int32_t y = kListY;
    for (const auto& line : list) {
        boxes.emplace_back(*line, 640 - kListX - 8, line->LineStep());
        y += line->LineStep();
    }
    // The list must end above the footer, which must end above the Back button.
    boxes.emplace_back(*footer, 640 - 2 * kListX, 540 - kFooterY - 8);
    QmTextBox whole;
    whole.text = "the credits list";
    whole.textHeight = y - kListY;
    whole.boxHeight = kFooterY - kListY;
    boxes.push_back(whole);
    return boxes;
}

void QmCreditsPage::Frame() {
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    if (screen != nullptr) {
        VeSurface& overlay = screen->overlay;
        overlay.MultiplyAll(0.15f);
        int32_t y = kListY;
        for (const auto& line : list) {
            if (line->Width() > 0) {
                overlay.BlitKeyed(line->surface, kListX, y, true);
            }
            y += line->LineStep();
        }
        overlay.BlitKeyed(footer->surface, kListX, kFooterY, true);
    }
    row->Draw(false);
    const VeInput* input = c->app->input;
    if (input != nullptr) {
        row->MouseMoved(static_cast<float>(input->mouseX), static_cast<float>(input->mouseY));
    }
    if (row->Activated(c->Language().GetLine(kBackLine)) || c->Controls().Back()) {
        c->FrontEnd().MenuPages().ReturnToMainMenu();
    }
}

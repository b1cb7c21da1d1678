#include "FrontEnd/QmMenuPages.h"

#include "Controls/QmControls.h"
#include "Coordinator/QmResultsFlow.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Form/VeButtonRow.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmCreditsPage.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmIntroPage.h"
#include "FrontEnd/QmManagementPage.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "FrontEnd/QmOptionsPage.h"
#include "FrontEnd/QmPlayPage.h"
#include "FrontEnd/QmSharedMapsPage.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/VeScreen.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr int kComingSoonLine = 208;
// The online button's notice: sharing maps comes with a later update.
constexpr int kOnlineComingLine = 207;
constexpr float kLogoY = 30.0f;
constexpr float kRowTop = 135.0f;

GamePad::State PadState() {
    return QmControls::PadState();
}

// While the notice dialog is open the page under it is drawn but must not see this frame's
// presses: they are the dialog's. The page runs with them hidden and gets them back afterwards.
class InputHold {
public:
    InputHold(VeInput* input, QmControls& controls) : input(input), controls(controls) {
        std::copy(std::begin(controls.latch), std::end(controls.latch), std::begin(latch));
        std::fill(std::begin(controls.latch), std::end(controls.latch), true);
        if (input != nullptr) {
            std::memcpy(pressed, input->pressed, sizeof(pressed));
            std::memcpy(mousePressed, input->mousePressed, sizeof(mousePressed));
            std::memset(input->pressed, 0, sizeof(pressed));
            std::memset(input->mousePressed, 0, sizeof(mousePressed));
        }
    }
    ~InputHold() {
        std::copy(std::begin(latch), std::end(latch), std::begin(controls.latch));
        if (input != nullptr) {
            std::memcpy(input->pressed, pressed, sizeof(pressed));
            std::memcpy(input->mousePressed, mousePressed, sizeof(mousePressed));
        }
    }
    InputHold(const InputHold&) = delete;
    InputHold& operator=(const InputHold&) = delete;

private:
    VeInput* input;
    QmControls& controls;
    bool latch[QmControls::kLatchSize] = {};
    uint8_t pressed[kKeyCount] = {};
    uint8_t mousePressed[kMouseEntryCount] = {};
};
} // namespace

QmMenuPages::QmMenuPages() {
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    labelStyle = std::make_unique<VeTextStyle>(4, 0xFFFFFF, 3, 2, 1);
    buttonStyle = std::make_unique<VeButtonStyle>(400, 60);
    buttonStyle->normalFillColour = 0x333333;
    buttonStyle->borderColour = 0x000000;
    buttonStyle->hoverBorderColour = 0xFF0000;
    buttonStyle->hoverBorderThickness = 4;
    buttonStyle->hoverLabelColourOn = true;
    buttonStyle->hoverLabelColour = 0xFFFFFF;
    buttonStyle->y = -30.0f;
    buttonStyle->hoverSound = "Hover";
    if (screen != nullptr) {
        logo = std::make_unique<VeImage>("Assets/Logo.png");
        background.Prepare(screen->width, screen->height);
    }
    BuildMainRow();
    shownLanguage = c->Language().Name();
    page = kMainMenu;
    playPage = std::make_unique<QmPlayPage>();
    managementPage = std::make_unique<QmManagementPage>();
    sharedMapsPage = std::make_unique<QmSharedMapsPage>();
}

QmMenuPages::~QmMenuPages() = default;

void QmMenuPages::BuildMainRow() {
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    const int32_t selected = buttons ? buttons->Selected() : 0;
    buttons = std::make_unique<VeButtonRow>(screen != nullptr ? &screen->overlay : nullptr, c->app->input,
                                            c->app->audio, PadState);
    buttons->SetButtonStyle(buttonStyle.get());
    buttons->SetLabelStyle(labelStyle.get());
    buttons->SetSpacing(2);
    for (const int line : kMainButtonLines) {
        buttons->AddButton(c->Language().GetLine(line));
    }
    buttons->Layout();
    const int32_t width = screen != nullptr ? screen->width : 640;
    buttons->Arrange(VeButtonRow::Direction::Vertical, static_cast<float>(width / 2) + buttonStyle->x,
                     kRowTop);
    buttons->SelectByLabel(buttons->Buttons()[static_cast<size_t>(selected)]->Label());
}

void QmMenuPages::Relabel() {
    BuildMainRow();
    playPage->Relabel();
    managementPage->Relabel();
    sharedMapsPage->Relabel();
    if (optionsPage) {
        optionsPage->Relabel();
    }
    if (creditsPage) {
        creditsPage->Relabel();
    }
    VaCoordinator* c = C();
    c->FrontEnd().Intro().Relabel();
    c->Results().Relabel();
}

void QmMenuPages::MenuFrame() {
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    QmNoticeDialog& dialog = c->FrontEnd().Dialog();
    if (c->Language().Name() != shownLanguage) {
        shownLanguage = c->Language().Name();
        Relabel();
    }
    if (!pendingNotice.empty()) {
        dialog.Show(QmNoticeDialog::kOneButton, false, 0, "", pendingNotice, "");
        pendingNotice.clear();
    }
    if (screen != nullptr) {
        background.DrawStatic(screen->overlay);
        if (c->OptionOn(QmOptions::kAnimatedMenuBackground)) {
            const VeInput* input = c->app->input;
            const bool f12 = input != nullptr && input->pressed[VeKey::F12] != 0;
            background.Step(c->app->frameDelta, f12, &screen->overlay);
        }
    }
    if (c->app->scene == SceneAfterRace) {
        return;
    }
    const bool dialogOpen = dialog.Visible();
    {
        std::unique_ptr<InputHold> hold;
        if (dialogOpen) {
            hold = std::make_unique<InputHold>(c->app->input, c->Controls());
        }
        if (page == kIntro) {
            c->FrontEnd().Intro().Frame();
        } else if (page == kMainMenu) {
            MainMenuFrame();
        } else if (c->OptionOn(QmOptions::kUi)) {
            OtherPageFrame();
        }
    }
    dialog.Draw();
    if (dialogOpen) {
        dialog.Update();
    }
}

void QmMenuPages::MainMenuFrame() {
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    QmNoticeDialog& dialog = c->FrontEnd().Dialog();
    if (updateAvailableNotice) {
        dialog.Show(QmNoticeDialog::kTwoButtons, true, 0, "UPDATE_AVAILABLE",
                    c->Language().GetLine(kUpdateAvailableLine), c->Language().GetLine(kUpdateTitleLine));
        updateAvailableNotice = false;
    }
    if (screen != nullptr && logo) {
        screen->overlay.BlitKeyed(*logo, screen->width / 2 - logo->width / 2, static_cast<int32_t>(kLogoY),
                                  true);
    }
    if (!c->OptionOn(QmOptions::kUi)) {
        return;
    }
    buttons->SetActive(!dialog.Visible());
    buttons->Draw(false);
    if (!dialog.Visible()) {
        UpdateMainMenu();
    }
}

void QmMenuPages::UpdateMainMenu() {
    VaCoordinator* c = C();
    QmLanguage& language = c->Language();
    VeButtonRow& row = *buttons;
    if (row.Activated(language.GetLine(27))) {
        OpenPlayPage();
    } else if (row.Activated(language.GetLine(167))) {
        StartRandomRun();
    } else if (row.Activated(language.GetLine(38))) {
        playPage->RefreshTitle();
        playPage->ResetMouseAndSelection();
        c->Results().OpenParty();
    } else if (row.Activated(language.GetLine(141))) {
        ComingSoon(141, kOnlineComingLine); // the account pages
    } else if (row.Activated(language.GetLine(65))) {
        c->Results().OpenCharacter();
    } else if (row.Activated(language.GetLine(79))) {
        optionsPage.reset();
        optionsPage = std::make_unique<QmOptionsPage>();
        page = kOptions;
    } else if (row.Activated(language.GetLine(16))) {
        if (!creditsPage) {
            creditsPage = std::make_unique<QmCreditsPage>();
        }
        page = kCredits;
    } else if (row.Activated(language.GetLine(kQuitLine))) {
        c->app->quitRequested = true;
    }
    if (page != kMainMenu || c->app->scene != SceneMenu) {
        return;
    }

    QmControls& controls = c->Controls();
    if (controls.MenuUp()) {
        mouseActive = false;
        row.SetActive(true);
        row.SelectPrevious();
    } else if (controls.MenuDown()) {
        mouseActive = false;
        row.SetActive(true);
        row.SelectNext();
    } else if (controls.Back()) {
        mouseActive = false;
        if (row.SelectedLabel() != language.GetLine(kQuitLine)) {
            row.SelectLast();
        } else {
            c->app->quitRequested = true;
        }
    }
    const VeInput* input = c->app->input;
    if (input == nullptr) {
        return;
    }
    const float mx = static_cast<float>(input->mouseX);
    const float my = static_cast<float>(input->mouseY);
    if (mouseActive) {
        row.MouseMoved(mx, my);
    }
    if ((mx != lastMouseX || my != lastMouseY) && !(lastMouseX == -1.0f && lastMouseY == -1.0f)) {
        mouseActive = true;
    }
    lastMouseX = mx;
    lastMouseY = my;
}

void QmMenuPages::OtherPageFrame() {
    VaCoordinator* c = C();
    switch (page) {
    case kPlay:
        playPage->Frame();
        break;
    case kManagement:
        managementPage->Frame();
        break;
    case kSharedMaps:
        sharedMapsPage->Frame();
        break;
    case kParty:
    case kPartyResults:
    case kHighscores:
    case kCharacter:
        c->Results().PageFrame(page);
        break;
    case kOptions:
        if (!optionsPage) {
            optionsPage = std::make_unique<QmOptionsPage>();
        }
        optionsPage->Frame();
        break;
    case kCredits:
        if (!creditsPage) {
            creditsPage = std::make_unique<QmCreditsPage>();
        }
        creditsPage->Frame();
        break;
    default:
        // The account, registration, rules and shared-maps pages come with the online service.
        ComingSoon(141, kComingSoonLine);
        break;
    }
}

void QmMenuPages::ComingSoon(int titleLine, int textLine) {
    VaCoordinator* c = C();
    c->FrontEnd().Dialog().Show(QmNoticeDialog::kOneButton, false, 0, "", c->Language().GetLine(textLine),
                                c->Language().GetLine(titleLine));
    page = kMainMenu;
}

void QmMenuPages::ReturnToMainMenu() {
    lastMouseX = -1.0f;
    lastMouseY = -1.0f;
    mouseActive = false;
    buttons->MouseMoved(0.0f, 0.0f);
    page = kMainMenu;
}

void QmMenuPages::OpenPlayPage() {
    VaCoordinator* c = C();
    c->raceFromEditor = false;
    c->ReturnToMenu();
    page = kPlay;
    c->playMode = VaCoordinator::PlayTour;
    playPage->RefreshTitle();
    playPage->ResetMouseAndSelection();
    playPage->RebuildLists();
    managementPage->RebuildLists();
}

void QmMenuPages::StartRandomRun() {
    VaCoordinator* c = C();
    c->playMode = VaCoordinator::PlayRandomRun;
    c->randomRunLevels = 0;
    c->randomRunTime = 0;
    playPage->RefreshTitle();
    playPage->ResetMouseAndSelection();
    playPage->RebuildLists();
    managementPage->RebuildLists();
    c->StartPlay(false);
}

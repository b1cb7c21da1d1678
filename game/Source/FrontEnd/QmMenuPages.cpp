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
#include "FrontEnd/QmLoginPage.h"
#include "FrontEnd/QmManagementPage.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "FrontEnd/QmOptionsPage.h"
#include "FrontEnd/QmPanel.h"
#include "FrontEnd/QmPlayPage.h"
#include "FrontEnd/QmRegistrationPage.h"
#include "FrontEnd/QmRulesPage.h"
#include "FrontEnd/QmSharedMapsPage.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Network/QmNetworkManager.h"
#include "Network/QmUpdateDownload.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Text/VeText.h"
#include "Screen/VeScreen.h"

#include <algorithm>
#include <cstring>

namespace {
constexpr int kComingSoonLine = 208;
constexpr float kLogoY = 30.0f;
constexpr float kRowTop = 135.0f;
constexpr const char* kUpdateAction = "UPDATE_AVAILABLE";
constexpr int kUpdateWaitingLine = 210;
constexpr int kUpdateDownloadedLine = 211;
constexpr int kUpdateInstallLine = 212;
constexpr int kUpdateNoticeWidth = 560;
constexpr int kWaitingY = 606;

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
    updateDownload = std::make_unique<QmUpdateDownload>();
    waitingStyle = std::make_unique<VeTextStyle>(2, 0xE8E0A0, 2, 1, 1);
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
    if (loginPage) {
        loginPage->Relabel();
        registrationPage->Relabel();
    }
    if (rulesPage) {
        rulesPage->Relabel();
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
    UpdateFrame(dialogOpen && dialog.AnsweredLine(QmNoticeDialog::kYesLine) &&
                dialog.Action() == kUpdateAction);
}

bool QmMenuPages::UpdateDownloading() const {
    return updateDownload->Running();
}

void QmMenuPages::UpdateFrame(bool confirmed) {
    VaCoordinator* c = C();
    const QmNetworkManager* network = c->app->network;
    if (confirmed && network != nullptr) {
        updateDownload->Start(network->GetServiceUrl());
    }
    std::string path;
    int32_t failureLine = 0;
    if (updateDownload->TakeResult(path, failureLine)) {
        QmLanguage& language = c->Language();
        const std::string body = path.empty() ? language.GetLine(failureLine)
                                              : language.GetLine(kUpdateDownloadedLine) + ": " + path + " " +
                                                    language.GetLine(kUpdateInstallLine);
        c->FrontEnd().Dialog().Show(QmNoticeDialog::kOneButton, false, kUpdateNoticeWidth, "", body,
                                    language.GetLine(kUpdateTitleLine));
    }
    VeScreen* screen = c->app->screen;
    if (updateDownload->Running() && screen != nullptr) {
        const VeText waiting(c->Language().GetLine(kUpdateWaitingLine), waitingStyle.get());
        QmPanel::Draw(screen->overlay, 0, kWaitingY - 8, screen->overlay.width, waiting.Height() + 16);
        screen->overlay.BlitKeyed(waiting.surface, (screen->overlay.width - waiting.Width()) / 2, kWaitingY);
    }
}

void QmMenuPages::MainMenuFrame() {
    VaCoordinator* c = C();
    VeScreen* screen = c->app->screen;
    QmNoticeDialog& dialog = c->FrontEnd().Dialog();
    if (c->app->network != nullptr && c->app->network->TakeUpdateAvailable()) {
        updateAvailableNotice = true;
    }
    if (updateAvailableNotice && !updateDownload->Running()) {
        dialog.Show(QmNoticeDialog::kTwoButtons, true, 0, kUpdateAction,
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
        OpenAccount();
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
    case kLogin:
    case kRegistration:
    case kRules:
        AccountPageFrame();
        break;
    case kCredits:
        if (!creditsPage) {
            creditsPage = std::make_unique<QmCreditsPage>();
        }
        creditsPage->Frame();
        break;
    default:
        // A page this game does not have yet.
        ComingSoon(141, kComingSoonLine);
        break;
    }
}

void QmMenuPages::OpenAccount() {
    VaCoordinator* c = C();
    if (c->app->network != nullptr && c->app->network->IsLoggedIn()) {
        page = kSharedMaps;
        return;
    }
    if (!loginPage) {
        loginPage = std::make_unique<QmLoginPage>();
        registrationPage = std::make_unique<QmRegistrationPage>();
    }
    loginPage->Open();
    page = kLogin;
}

void QmMenuPages::AccountPageFrame() {
    VaCoordinator* c = C();
    if (!loginPage) {
        loginPage = std::make_unique<QmLoginPage>();
        registrationPage = std::make_unique<QmRegistrationPage>();
    }
    if (page == kRules) {
        if (!rulesPage) {
            rulesPage = std::make_unique<QmRulesPage>();
        }
        rulesPage->Frame();
    } else if (page == kRegistration) {
        registrationPage->Frame();
    } else if (c->app->network != nullptr && c->app->network->IsLoggedIn()) {
        page = kSharedMaps;
    } else {
        loginPage->Frame();
    }
    QmNoticeDialog& dialog = c->FrontEnd().Dialog();
    if (page == kLogin && updateRequiredNotice && !dialog.Visible()) {
        dialog.Show(QmNoticeDialog::kTwoButtons, true, 0, kUpdateAction,
                    c->Language().GetLine(kUpdateRequiredLine), c->Language().GetLine(kUpdateTitleLine));
        updateRequiredNotice = false;
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

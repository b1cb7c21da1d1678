#pragma once
// The menu pages and their frame. MenuFrame runs once per frame in the menu scene: it shows a
// pending notice, draws the tiled background and (with the option "AnimatedMenuBackground") the
// falling blocks that stack up and clear away (F12 clears them at once), then runs the current
// page: 0 the intro, 1 the main menu, 2 play, 3 management, 4 to 6 the login, registration and
// rules pages, 8 to 11 the party, results, highscores and character pages, 12 options, 13
// credits; pages not built yet answer with a notice saying what is coming. The notice dialog is
// drawn over every page and, while it is open, has the keys, the pad and the mouse to itself.
//
// Updates: when the service announces a newer game, the main menu asks whether to fetch it (and
// the login page does when the service refuses this game as too old). Yes downloads the package
// while a waiting line shows at the bottom of every page; a notice then says where the package
// is and how to install it, or why it could not be had.
//
// The main menu is a column of eight buttons: Up and Down (keys or pad) walk it, the mouse selects
// what it points at, Back moves to Quit and Back again quits.
#include "FrontEnd/QmMenuBackground.h"
#include "FrontEnd/QmMenuPage.h"

#include <cstdint>
#include <memory>
#include <string>

class QmCreditsPage;
class QmSharedMapsPage;
class QmLoginPage;
class QmRegistrationPage;
class QmRulesPage;
class QmUpdateDownload;
class QmManagementPage;
class QmOptionsPage;
class QmPlayPage;
class VeButtonRow;
class VeButtonStyle;
class VeImage;
class VeTextStyle;

class QmMenuPages : public QmMenuPage {
public:
    enum PageIndex : int32_t {
        kIntro = 0,
        kMainMenu = 1,
        kPlay = 2,
        kManagement = 3,
        kLogin = 4,
        kRegistration = 5,
        kRules = 6,
        kSharedMaps = 7,
        kParty = 8,
        kPartyResults = 9,
        kHighscores = 10,
        kCharacter = 11,
        kOptions = 12,
        kCredits = 13,
    };
    // The main menu's buttons, top to bottom, as language lines.
    static constexpr int kMainButtonLines[8] = {27, 167, 38, 141, 65, 79, 16, 68};
    static constexpr int kQuitLine = 68;
    static constexpr int kUpdateTitleLine = 120;
    static constexpr int kUpdateAvailableLine = 139;
    static constexpr int kUpdateRequiredLine = 158;

    QmMenuPages();
    ~QmMenuPages() override;
    QmMenuPages(const QmMenuPages&) = delete;
    QmMenuPages& operator=(const QmMenuPages&) = delete;

    // One frame of the menu scene (and of the after-race scene, which stops after the background).
    void MenuFrame();
    void Frame() override { MenuFrame(); }
    // The language changed: every page's texts again.
    void Relabel() override;

    int32_t Page() const { return page; }
    void SetPage(int32_t value) { page = value; }
    // Tour play on the play page, from the menu scene with a fresh race.
    void OpenPlayPage();
    // The random-level run from its first level.
    void StartRandomRun();
    // Back on the main menu with the mouse forgotten (a page's Back or its back button).
    void ReturnToMainMenu();
    // Shown once, in a one-button notice at the next frame.
    void SetPendingNotice(const std::string& text) { pendingNotice = text; }
    const std::string& PendingNotice() const { return pendingNotice; }
    void SetUpdateAvailableNotice(bool on) { updateAvailableNotice = on; }
    void SetUpdateRequiredNotice(bool on) { updateRequiredNotice = on; }

    QmPlayPage& PlayPage() { return *playPage; }
    QmManagementPage& ManagementPage() { return *managementPage; }
    QmSharedMapsPage& SharedMapsPage() { return *sharedMapsPage; }
    // Made when the main menu first opens it (null before).
    QmCreditsPage* CreditsPage() { return creditsPage.get(); }
    QmOptionsPage* OptionsPage() { return optionsPage.get(); }
    QmLoginPage* LoginPage() { return loginPage.get(); }
    QmRegistrationPage* RegistrationPage() { return registrationPage.get(); }
    QmRulesPage* RulesPage() { return rulesPage.get(); }
    // The update package is being downloaded.
    bool UpdateDownloading() const;
    const VeButtonRow& MainRow() const { return *buttons; }
    QmMenuBackground& Background() { return background; }

private:
    void MainMenuFrame();
    void UpdateMainMenu();
    void OtherPageFrame();
    // A page whose building is still to come: a one-button notice and the main menu.
    void ComingSoon(int titleLine, int textLine);
    // The Online button: the shared maps when logged in, else the login page.
    void OpenAccount();
    void AccountPageFrame();
    // The update download: started by Yes on the update notice, its waiting line and its outcome.
    void UpdateFrame(bool confirmed);
    void BuildMainRow();

    std::unique_ptr<VeImage> logo;
    std::unique_ptr<VeTextStyle> labelStyle;
    std::unique_ptr<VeButtonStyle> buttonStyle;
    std::unique_ptr<VeButtonRow> buttons;
    int32_t page = kMainMenu;
    std::unique_ptr<QmOptionsPage> optionsPage;
    std::unique_ptr<QmCreditsPage> creditsPage;
    std::unique_ptr<QmPlayPage> playPage;
    std::unique_ptr<QmManagementPage> managementPage;
    std::unique_ptr<QmSharedMapsPage> sharedMapsPage;
    std::unique_ptr<QmLoginPage> loginPage;
    std::unique_ptr<QmRegistrationPage> registrationPage;
    std::unique_ptr<QmRulesPage> rulesPage;
    std::unique_ptr<QmUpdateDownload> updateDownload;
    std::unique_ptr<VeTextStyle> waitingStyle;
    bool mouseActive = false;
    float lastMouseX = -1.0f;
    float lastMouseY = -1.0f;
    std::string pendingNotice;
    bool updateAvailableNotice = false;
    bool updateRequiredNotice = false;
    QmMenuBackground background;
    // The language the pages show; a change reaches every page at the next frame.
    std::string shownLanguage;
};

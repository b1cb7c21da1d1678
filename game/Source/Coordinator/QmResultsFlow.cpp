#include "Coordinator/QmResultsFlow.h"

#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Environment/ArEnvironmentManager.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/QmCharacterPage.h"
#include "FrontEnd/QmHighscoresManager.h"
#include "FrontEnd/QmPartyPage.h"
#include "FrontEnd/QmPartyResultsPage.h"
#include "Gameplay/QmClientGameplayManager.h"
#include "Gameplay/QmHighscores.h"
#include "Gameplay/QmProfile.h"
#include "Input/VeInput.h"
#include "Platform/VeLog.h"
#include "Platform/VeTime.h"
#include "Screen/VeScreen.h"

QmResultsFlow::QmResultsFlow(VaCoordinator& coordinator) : c(coordinator) {}

QmResultsFlow::~QmResultsFlow() = default;

QmPageContext QmResultsFlow::Context() const {
    QmPageContext context;
    context.target = c.app->screen != nullptr ? &c.app->screen->overlay : nullptr;
    context.input = c.app->input;
    context.controls = &c.Controls();
    context.line = [this](int number) { return c.Language().GetLine(number); };
    context.sound = [this](const std::string& name) { c.PlaySound(name, 1.0f); };
    context.now = GetTimeMs();
    return context;
}

QmHighscoresManager& QmResultsFlow::Highscores() {
    if (!highscores) {
        highscores = std::make_unique<QmHighscoresManager>(
            [this](int number) { return c.Language().GetLine(number); },
            [this](const std::string& name) { c.PlaySound(name, 1.0f); });
    }
    return *highscores;
}

QmPartyPage& QmResultsFlow::PartyPage() {
    if (!partyPage) {
        partyPage = std::make_unique<QmPartyPage>(Context());
    }
    return *partyPage;
}

QmParty& QmResultsFlow::Party() {
    return PartyPage().Party();
}

QmPartyResultsPage& QmResultsFlow::PartyResultsPage() {
    if (!partyResults) {
        partyResults = std::make_unique<QmPartyResultsPage>(Context());
    }
    return *partyResults;
}

QmCharacterPage& QmResultsFlow::CharacterPage() {
    if (!characterPage) {
        characterPage = std::make_unique<QmCharacterPage>(Context());
    }
    return *characterPage;
}

void QmResultsFlow::Relabel() {
    const QmPageContext context = Context();
    if (partyPage) {
        partyPage->Relabel(context);
    }
    if (partyResults) {
        partyResults->Relabel(context);
    }
    if (characterPage) {
        characterPage->Relabel(context);
    }
    highscores.reset(); // made again in the new language when next shown
}

int QmResultsFlow::PageAfterLeavingParty() const {
    return c.partyType == VaCoordinator::PartyMarathon ? kPartyPage : kPlayPage;
}

void QmResultsFlow::ToMenu(int page) {
    c.ReturnToMenu();
    if (c.app->scene == SceneEditor) {
        return; // a test run from the editor goes back to the editor
    }
    c.app->SwitchScene(SceneMenu);
    c.SetMenuPage(page);
}

void QmResultsFlow::ApplyCharacter(int character) {
    if (c.gameplay && c.gameplay->Racer() != nullptr) {
        c.gameplay->Racer()->direction = character;
    }
    if (c.environment) {
        c.environment->SetCharacter(character);
    }
}

// ---- The finish ----

void QmResultsFlow::CompleteFinish(int64_t finalTime, int rank) {
    if (!c.environment || !c.gameplay) {
        return;
    }
    lastFinalTime = finalTime;
    c.environment->UnlockNext();
    if (c.playMode == VaCoordinator::PlayParty) {
        PartyFinish(finalTime, rank);
    } else {
        TourFinish(finalTime, rank);
    }
}

void QmResultsFlow::TourFinish(int64_t finalTime, int rank) {
    QmHighscoresManager& page = Highscores();
    page.SetDefaultName(c.PlayerName());
    const int width = c.app->screen != nullptr ? c.app->screen->overlay.width : 640;
    page.AfterRace(
        c.gameplay->Highscores().List(), finalTime, rank, c.app->input,
        [this, rank](const std::string& name) {
            c.gameplay->SaveScores(rank == 1, false, name, true);
            return c.gameplay->Highscores().List();
        },
        width);
    if (c.app->input != nullptr) {
        c.app->input->BlockRepeats(); // a key held at the finish types nothing
    }
    c.app->SwitchScene(SceneAfterRace);
}

void QmResultsFlow::PartyFinish(int64_t finalTime, int rank) {
    QmParty& party = Party();
    const QmPartyPlayer* player = party.Current();
    if (rank >= 0 && player != nullptr) {
        c.gameplay->SaveScores(rank == 1, false, player->name, true);
    }
    const QmParty::RunOutcome outcome = party.RunFinished(finalTime);
    if (outcome.nextMap) {
        c.StartPlay(false); // the Marathon's next map for the same player
        return;
    }
    const QmPartyPlayer* next = outcome.morePlayers ? party.Current() : nullptr;
    PartyResultsPage().Build(party.ShownResults(), outcome.rank, outcome.rankedTime,
                             next != nullptr ? next->name : std::string());
    if (c.partyType == VaCoordinator::PartyMarathon) {
        ToMenu(kPartyResultsPage);
    } else {
        c.app->SwitchScene(SceneAfterRace);
    }
}

bool QmResultsFlow::StartPartyRace(bool retry) {
    QmParty& party = Party();
    const bool marathon = party.PartyType() == QmParty::Marathon;
    if (!marathon || party.LevelsPlayed() == 0) {
        if (!party.PrepareParty(retry, false, *c.environment, static_cast<uint32_t>(GetTimeMs()))) {
            return false;
        }
    }
    if (marathon) {
        const size_t index = static_cast<size_t>(party.LevelsPlayed());
        if (index >= party.Draw().size()) {
            return false;
        }
        const QmPartyMap& map = party.Draw()[index];
        c.environment->tourIndex = map.tour;
        c.environment->Reload(map.level, false);
    }
    c.MakeGameplay();
    const QmPartyPlayer* player = party.Current();
    if (player != nullptr) {
        ApplyCharacter(player->character);
    }
    c.environment->SetIntro(7.0f);
    if (!marathon || party.LevelsPlayed() == 0) {
        c.gameplay->PrepareRace();
        waiting.Set([this](int number) { return c.Language().GetLine(number); },
                    player != nullptr ? player->name : std::string(), marathon ? 1 : 0,
                    QmParty::kMarathonMaps);
        turnWaiting = true;
    } else {
        c.gameplay->StartRace(true, true);
        turnWaiting = false;
    }
    return true;
}

void QmResultsFlow::DrawRaceOverlay() {
    if (!turnWaiting || !c.gameplay || c.playMode != VaCoordinator::PlayParty) {
        turnWaiting = false;
        return;
    }
    if (c.gameplay->countingDown || c.gameplay->running || !c.gameplay->raceOver) {
        turnWaiting = false; // the player confirmed
        return;
    }
    if (waiting.Update(c.Controls()) == QmWaitingScreen::Outcome::LeaveParty) {
        // The race's pause menu, opened by the same key in this frame, closes with the race.
        turnWaiting = false;
        ToMenu(kPartyPage);
        PartyPage().Reset();
        if (c.app->input != nullptr) {
            c.app->input->BlockRepeats(); // a held Escape does not leave the party page too
        }
        return;
    }
    if (c.app->screen != nullptr) {
        waiting.Draw(c.app->screen->overlay);
    }
}

// ---- The pages ----

void QmResultsFlow::AfterRaceFrame() {
    const QmPageContext context = Context();
    if (context.target == nullptr) {
        return;
    }
    if (c.playMode == VaCoordinator::PlayParty) {
        switch (PartyResultsPage().Frame(context)) {
        case QmPartyResultsPage::Outcome::NextPlayer:
            c.ReturnToMenu();
            if (!c.StartPlay(false)) {
                ToMenu(kPartyPage);
            }
            break;
        case QmPartyResultsPage::Outcome::MainMenu:
            Party().NewGame();
            c.playMode = VaCoordinator::PlayTour;
            ToMenu(kMainMenuPage);
            break;
        case QmPartyResultsPage::Outcome::None:
            break;
        }
        return;
    }
    switch (Highscores().Frame(*context.target, context.input, *context.controls)) {
    case QmHighscoresManager::Outcome::Back:
        ToMenu(kPlayPage);
        break;
    case QmHighscoresManager::Outcome::RaceAgain:
        c.ReturnToMenu();
        c.StartPlay(true);
        break;
    case QmHighscoresManager::Outcome::None:
        break;
    }
}

void QmResultsFlow::OpenHighscores(int tour, int map) {
    if (!c.environment || tour < 0 || tour >= static_cast<int>(c.environment->tourLevels.size()) || map < 0 ||
        map >= static_cast<int>(c.environment->tourLevels[static_cast<size_t>(tour)].size())) {
        return;
    }
    c.environment->tourIndex = tour;
    c.environment->Reload(map, false);
    QmHighscores scores(*c.environment);
    scores.LoadScores();
    Highscores().ShowList(scores.List(), c.environment->mapName);
    c.SetMenuPage(kHighscoresPage);
}

void QmResultsFlow::OpenParty() {
    PartyPage().Reset();
    c.playMode = VaCoordinator::PlayParty;
    c.SetMenuPage(kPartyPage);
}

void QmResultsFlow::OpenCharacter() {
    const int character = c.gameplay && c.gameplay->Racer() != nullptr ? c.gameplay->Racer()->direction
                                                                       : QmProfile::LoadProfile();
    CharacterPage().Reset(character);
    c.SetMenuPage(kCharacterPage);
}

bool QmResultsFlow::PageFrame(int page) {
    const QmPageContext context = Context();
    if (context.target == nullptr || page < kPartyPage || page > kCharacterPage) {
        return false;
    }
    switch (page) {
    case kPartyPage:
        switch (PartyPage().Frame(context)) {
        case QmPartyPage::Outcome::Start:
            c.playMode = VaCoordinator::PlayParty;
            c.partyType = Party().PartyType() == QmParty::Marathon ? VaCoordinator::PartyMarathon
                                                                   : VaCoordinator::PartyVersus;
            if (c.partyType == VaCoordinator::PartyVersus) {
                c.SetMenuPage(kPlayPage); // the play page picks the map they all race
            } else if (!c.StartPlay(false)) {
                ToMenu(kPartyPage);
                c.ShowNotice(c.Language().GetLine(kNoticeTitleLine), c.Language().GetLine(kNoMarathonLine));
            }
            break;
        case QmPartyPage::Outcome::Back:
            c.playMode = VaCoordinator::PlayTour;
            c.SetMenuPage(kMainMenuPage);
            break;
        case QmPartyPage::Outcome::None:
            break;
        }
        break;
    case kPartyResultsPage:
        AfterRaceFrame();
        break;
    case kHighscoresPage:
        if (Highscores().Frame(*context.target, context.input, *context.controls) ==
            QmHighscoresManager::Outcome::Back) {
            c.SetMenuPage(kPlayPage);
        }
        break;
    case kCharacterPage:
        switch (CharacterPage().Frame(context)) {
        case QmCharacterPage::Outcome::SaveFailed:
            c.ShowNotice(c.Language().GetLine(kNoticeTitleLine),
                         c.Language().GetLine(QmCharacterPage::kSaveFailedLine));
            [[fallthrough]];
        case QmCharacterPage::Outcome::Chosen:
            ApplyCharacter(CharacterPage().Chosen());
            c.SetMenuPage(kMainMenuPage);
            break;
        case QmCharacterPage::Outcome::Back:
            c.SetMenuPage(kMainMenuPage);
            break;
        case QmCharacterPage::Outcome::None:
            break;
        }
        break;
    default:
        break;
    }
    return true;
}

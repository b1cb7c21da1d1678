#pragma once
// What follows a race and what leads into party play: the after-race scene (the map's top ten with
// the name entry in tour play, the party's ranking in Versus), the highscores of any map, the
// character page, the party page and its results page, the Marathon's next map, and the screen
// that names the next party player while the race waits for them.
//
// The coordinator owns one and calls it: CompleteFinish at the end of a frame whose race reached
// the finish, AfterRaceFrame in the after-race scene, PageFrame for the menu pages 8 to 11,
// StartPartyRace from StartPlay in party play, DrawRaceOverlay after the race's frame.
#include "FrontEnd/QmPageContext.h"
#include "FrontEnd/QmWaitingScreen.h"

#include <cstdint>
#include <memory>
#include <string>

class QmCharacterPage;
class QmHighscoresManager;
class QmParty;
class QmPartyPage;
class QmPartyResultsPage;
class VaCoordinator;

class QmResultsFlow {
public:
    static constexpr int kPartyPage = 8;
    static constexpr int kPartyResultsPage = 9;
    static constexpr int kHighscoresPage = 10;
    static constexpr int kCharacterPage = 11;
    static constexpr int kPlayPage = 2;
    static constexpr int kMainMenuPage = 1;
    static constexpr int kNoMarathonLine = 57;
    static constexpr int kNoticeTitleLine = 75;

    explicit QmResultsFlow(VaCoordinator& coordinator);
    ~QmResultsFlow();
    QmResultsFlow(const QmResultsFlow&) = delete;
    QmResultsFlow& operator=(const QmResultsFlow&) = delete;

    // A tour or party run reached the finish in finalTime ms with HighscoreRank's rank.
    void CompleteFinish(int64_t finalTime, int rank);
    // One frame of the after-race scene.
    void AfterRaceFrame();
    // One frame of menu page 8, 9, 10 or 11; false for any other page.
    bool PageFrame(int page);

    // The highscores page for map `map` of tour `tour` (that map becomes the current one).
    void OpenHighscores(int tour, int map);
    void OpenParty();
    void OpenCharacter();
    // Begins the current party player's race on a fresh race (made by the coordinator): the
    // preparation, the Marathon's next map, the player's character and the wait for the player.
    // False when the Marathon draw found no maps.
    bool StartPartyRace(bool retry);
    // While a party turn waits for its player the screen names them; Back leaves the party for the
    // party page.
    void DrawRaceOverlay();
    // Every page shows the current language again.
    void Relabel();

    QmHighscoresManager& Highscores();
    QmPartyPage& PartyPage();
    QmCharacterPage& CharacterPage();
    QmPartyResultsPage& PartyResultsPage();
    QmParty& Party();
    // The page a party race left through the in-race menu goes back to.
    int PageAfterLeavingParty() const;

private:
    QmPageContext Context() const;
    void TourFinish(int64_t finalTime, int rank);
    void PartyFinish(int64_t finalTime, int rank);
    // Leaves for the menu scene on the page, with a fresh race on the reloaded map.
    void ToMenu(int page);
    void ApplyCharacter(int character);

    VaCoordinator& c;
    std::unique_ptr<QmHighscoresManager> highscores;
    std::unique_ptr<QmPartyPage> partyPage;
    std::unique_ptr<QmPartyResultsPage> partyResults;
    std::unique_ptr<QmCharacterPage> characterPage;
    QmWaitingScreen waiting;
    bool turnWaiting = false;
    int64_t lastFinalTime = 0;
};

#pragma once
// Party play: two to eight people share the machine. Each player has a name and a character;
// in Versus all race the same map in turn, in Marathon all race the same three randomly drawn
// maps and their times add up. The party's own ranking is a top-ten list ordered like a map's,
// so equal times keep the earlier player first.
//
// Contract:
// - PrepareParty before the first turn (and again before each Marathon player); NextPartyPlayer
//   after each player's last run. After the last player the party is over: the ranking is
//   emptied and the next PrepareParty starts afresh (the table last built stays readable through
//   ShownResults).
// - The Marathon draw picks three maps with different map indices, each within 501 attempts of a
//   random tour and map; a map is allowed by its size as the two size options say.
#include "Gameplay/QmHighscoreList.h"

#include <cstdint>
#include <string>
#include <vector>

class QmCoreEnvironmentManager;

struct QmPartyPlayer {
    std::string name;
    int character = 0;
};

struct QmPartyMap {
    int tour = 0;
    int level = 0;
};

class QmParty {
public:
    enum Type : int { Versus = 0, Marathon = 1 };
    static constexpr size_t kMinPlayers = 2;
    static constexpr size_t kMaxPlayers = 8;
    static constexpr int kMarathonMaps = 3;
    static constexpr int kDrawAttempts = 501;

    // What a finished run leads to.
    struct RunOutcome {
        // Marathon before its third map: the next map of the draw follows for the same player.
        bool nextMap = false;
        // The time ranked in the party's list (the run's, or the Marathon's total).
        int64_t rankedTime = 0;
        // The rank it took there (1-based).
        int rank = -1;
        // Another player follows (false: the party is over).
        bool morePlayers = false;
    };

    // ---- Players ----
    // False when eight players are already in.
    bool AddPlayer(const std::string& name, int character);
    // Removes player index; false when there is no such player.
    bool RemovePlayer(size_t index);
    void ClearPlayers() { players.clear(); }
    void SetPlayerName(size_t index, const std::string& name);
    void SetPlayerCharacter(size_t index, int character);
    const std::vector<QmPartyPlayer>& Players() const { return players; }
    bool CanStart() const { return players.size() >= kMinPlayers; }

    // ---- Settings of the set-up page ----
    void SetType(int partyType) { type = partyType == Marathon ? Marathon : Versus; }
    int PartyType() const { return type; }
    // The Marathon draw's map sizes: small is 10 x 10 (64-pixel blocks), large 20 x 20.
    void SetAllowedSizes(bool small, bool large);
    bool SmallAllowed() const { return allowSmall; }
    bool LargeAllowed() const { return allowLarge; }

    // ---- The game ----
    // Forgets a game in progress: the next PrepareParty starts with the first player.
    void NewGame();
    // Prepares Versus or Marathon; for a Marathon's first player (unless keepDraw) seeds the
    // random generator with seed and draws three maps from the world's tours (the current tour
    // follows the draw). False when no valid draw was found; the maps drawn so far stay.
    bool PrepareParty(bool keepDraw, bool reset, QmCoreEnvironmentManager& world, uint32_t seed);
    // A run of the current player finished in finalTime milliseconds.
    RunOutcome RunFinished(int64_t finalTime);
    // The next player's turn; after the last one the party is over. True when a player follows.
    bool NextPartyPlayer();

    size_t CurrentPlayer() const { return currentPlayer; }
    const QmPartyPlayer* Current() const;
    bool Prepared() const { return prepared != 0; }
    const std::vector<QmHighscoreEntry>& PartyResults() const { return partyResults; }
    // The ranking as it stood after the last ranked run (kept when the party ends).
    const std::vector<QmHighscoreEntry>& ShownResults() const { return shownResults; }
    const std::vector<QmPartyMap>& Draw() const { return draw; }
    int LevelsPlayed() const { return levelsPlayed; }
    int64_t TotalTime() const { return totalTime; }

private:
    bool DrawMap(QmCoreEnvironmentManager& world);
    bool MapAllowed(QmCoreEnvironmentManager& world, const std::string& file) const;

    std::vector<QmPartyPlayer> players;
    int type = Versus;
    bool allowSmall = true;
    bool allowLarge = true;
    size_t currentPlayer = 0;
    uint8_t prepared = 0;
    std::vector<QmHighscoreEntry> partyResults;
    std::vector<QmHighscoreEntry> shownResults;
    std::vector<QmPartyMap> draw;
    int levelsPlayed = 0;
    int64_t totalTime = 0;
};

#include "Gameplay/QmParty.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Platform/VeLog.h"
#include "Platform/VeRandom.h"

#include <algorithm>

bool QmParty::AddPlayer(const std::string& name, int character) {
    if (players.size() >= kMaxPlayers) {
        return false;
    }
    players.push_back({name, character});
    return true;
}

bool QmParty::RemovePlayer(size_t index) {
    if (index >= players.size()) {
        return false;
    }
    players.erase(players.begin() + static_cast<std::ptrdiff_t>(index));
    if (currentPlayer >= players.size()) {
        currentPlayer = 0;
    }
    return true;
}

void QmParty::SetPlayerName(size_t index, const std::string& name) {
    if (index < players.size()) {
        players[index].name = name;
    }
}

void QmParty::SetPlayerCharacter(size_t index, int character) {
    if (index < players.size()) {
        players[index].character = character;
    }
}

void QmParty::SetAllowedSizes(bool small, bool large) {
    allowSmall = small;
    allowLarge = large;
}

const QmPartyPlayer* QmParty::Current() const {
    return currentPlayer < players.size() ? &players[currentPlayer] : nullptr;
}

void QmParty::NewGame() {
    prepared = 0;
    currentPlayer = 0;
    partyResults.clear();
    levelsPlayed = 0;
    totalTime = 0;
}

bool QmParty::PrepareParty(bool keepDraw, bool reset, QmCoreEnvironmentManager& world, uint32_t seed) {
    if (type == Versus) {
        if (!prepared || reset) {
            partyResults.clear();
            currentPlayer = 0;
        }
        prepared = 1;
        return true;
    }
    levelsPlayed = 0;
    totalTime = 0;
    if (!prepared || reset) {
        partyResults.clear();
        currentPlayer = 0;
    }
    if (currentPlayer == 0 && !keepDraw) {
        SeedRand(VeRandomStream::Race, seed);
        draw.clear();
        for (int i = 0; i < kMarathonMaps; ++i) {
            if (!DrawMap(world)) {
                return false;
            }
        }
    }
    prepared = 1;
    return true;
}

bool QmParty::MapAllowed(QmCoreEnvironmentManager& world, const std::string& file) const {
    if (allowSmall && allowLarge) {
        return true;
    }
    const int blockSize = world.GetMapField('i', file) == "32" ? QmCoreEnvironmentManager::kSmallBlockSize
                                                               : QmCoreEnvironmentManager::kLargeBlockSize;
    if (blockSize == QmCoreEnvironmentManager::kSmallBlockSize) {
        const bool locked = world.GetMapField('l', file) == "1";
        return locked || allowLarge;
    }
    return allowSmall;
}

bool QmParty::DrawMap(QmCoreEnvironmentManager& world) {
    const int tourCount = static_cast<int>(std::min(world.tours.size(), world.tourLevels.size()));
    if (tourCount == 0) {
        return false;
    }
    for (int attempt = 0; attempt < kDrawAttempts; ++attempt) {
        const int tour = Rand() % tourCount;
        world.tourIndex = tour;
        const std::vector<std::string>& maps = world.tourLevels[static_cast<size_t>(tour)];
        if (maps.empty()) {
            continue;
        }
        const int level = Rand() % static_cast<int>(maps.size());
        if (!MapAllowed(world, maps[static_cast<size_t>(level)])) {
            continue;
        }
        const bool taken = std::any_of(draw.begin(), draw.end(),
                                       [level](const QmPartyMap& map) { return map.level == level; });
        if (taken) {
            continue;
        }
        draw.push_back({tour, level});
        Log("Random Level added: %i\n", level);
        return true;
    }
    return false;
}

QmParty::RunOutcome QmParty::RunFinished(int64_t finalTime) {
    RunOutcome outcome;
    int64_t time = finalTime;
    if (type == Marathon) {
        totalTime += finalTime;
        levelsPlayed += 1;
        if (levelsPlayed <= 2) {
            outcome.nextMap = true;
            outcome.morePlayers = true;
            return outcome;
        }
        time = totalTime;
    }
    const QmPartyPlayer* player = Current();
    const std::string name = player != nullptr ? player->name : std::string();
    outcome.rankedTime = time;
    outcome.rank = QmHighscoreList::HighscoreRank(partyResults, time);
    partyResults = QmHighscoreList::InsertHighscore(partyResults, time, name);
    shownResults = partyResults;
    outcome.morePlayers = NextPartyPlayer();
    return outcome;
}

bool QmParty::NextPartyPlayer() {
    levelsPlayed = 0;
    if (currentPlayer + 1 < players.size()) {
        currentPlayer += 1;
        return true;
    }
    partyResults.clear();
    prepared = 0;
    return false;
}

#include "Gameplay/QmResultsTable.h"

#include "Gameplay/QmFormatTime.h"

#include <cstdio>
#include <utility>

QmResultsTable::QmResultsTable(std::function<std::string(int)> languageLine) : line(std::move(languageLine)) {
    Clear();
}

void QmResultsTable::Clear() {
    rows.assign(kRows, QmResultsRow());
    header.clear();
    filled = 0;
}

void QmResultsTable::BuildResults(const std::vector<QmHighscoreEntry>& list, int newRank, bool afterRace,
                                  int64_t finalTime) {
    Clear();
    const auto text = [this](int number) { return line ? line(number) : std::string(); };
    if (afterRace) {
        char buffer[256];
        std::snprintf(buffer, sizeof(buffer), "%s %.3f %s", text(kYourTimeLine).c_str(),
                      static_cast<double>(finalTime) / 1000.0, text(kSecondsUnitLine).c_str());
        header = buffer;
    }
    static constexpr uint32_t kPlaces[3] = {kGold, kSilver, kBronze};
    for (size_t i = 0; i < list.size() && i < kRows; ++i) {
        QmResultsRow& row = rows[i];
        const int rank = static_cast<int>(i) + 1;
        row.rank = std::to_string(rank);
        row.name = list[i].name;
        row.time = FormatTime(static_cast<double>(QmHighscoreList::TimeValue(list[i].time)) / 1000.0, text);
        row.colour = i < 3 ? kPlaces[i] : kOther;
        if (afterRace && rank == newRank) {
            row.colour = kNewEntry;
        }
        ++filled;
    }
}

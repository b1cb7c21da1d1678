#pragma once
// The results table's contents: ten rows of rank, name and time text with the row's colour, built
// from a top-ten list, and in the after-race scene the header with the run's time. Ranks 1 to 3
// are gold, silver and bronze, the others white; in the after-race scene the row of the entry
// just made is green instead. Rows past the list are empty. Drawing is the pages' part: the first
// row at y = 121 and 40 pixels from row to row.
#include "Gameplay/QmHighscoreList.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

struct QmResultsRow {
    std::string rank;
    std::string name;
    std::string time;
    uint32_t colour = 0xFFFFFF;
};

class QmResultsTable {
public:
    static constexpr size_t kRows = 10;
    static constexpr int kFirstRowY = 121;
    static constexpr int kRowStep = 40;
    static constexpr uint32_t kGold = 0xFFD700;
    static constexpr uint32_t kSilver = 0xAAAAAA;
    static constexpr uint32_t kBronze = 0xA67D3D;
    static constexpr uint32_t kOther = 0xFFFFFF;
    static constexpr uint32_t kNewEntry = 0x00FF00;
    static constexpr int kYourTimeLine = 78;

    explicit QmResultsTable(std::function<std::string(int)> languageLine);

    // Rebuilds the rows from the list; newRank (1-based, or -1 for none) is highlighted when
    // afterRace is set, and the header then names finalTime (milliseconds).
    void BuildResults(const std::vector<QmHighscoreEntry>& list, int newRank, bool afterRace,
                      int64_t finalTime);
    // Empty rows and no header.
    void Clear();

    const std::vector<QmResultsRow>& Rows() const { return rows; }
    const std::string& Header() const { return header; }
    // How many rows hold an entry.
    size_t Filled() const { return filled; }

private:
    std::function<std::string(int)> line;
    std::vector<QmResultsRow> rows;
    std::string header;
    size_t filled = 0;
};

#pragma once
// The party results page: the party's ranking in the results table with the row of the run just
// ranked in green and the run's (or the Marathon's total) time above it, the next player's name
// (or the winner's once everyone has raced), and the buttons Next player and Main menu.
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmPageContext.h"
#include "FrontEnd/QmResultsView.h"
#include "Gameplay/QmResultsTable.h"
#include "Screen/Text/VeText.h"

#include <cstdint>
#include <string>
#include <vector>

class QmPartyResultsPage {
public:
    enum class Outcome { None, NextPlayer, MainMenu };
    static constexpr int kTitleLine = 53;
    static constexpr int kNextUpLine = 52;
    static constexpr int kWinnerLine = 58;
    static constexpr int kNextPlayerLine = 50;
    static constexpr int kMainMenuLine = 51;
    static constexpr int kNextY = 530;
    static constexpr int kButtonsY = 580;
    // The title band reaches down to kBandBottom, the panel of the rows (and the line under them)
    // spans kPanelTop to kPanelBottom.
    static constexpr int kBandBottom = QmResultsTable::kFirstRowY - 8;
    static constexpr int kPanelTop = kBandBottom + 6;
    static constexpr int kPanelBottom = 560;

    explicit QmPartyResultsPage(const QmPageContext& context);

    // The ranking after a run: rank is the row to highlight, time the ranked time; nextPlayer is
    // the name of who follows, empty when the party is over.
    void Build(const std::vector<QmHighscoreEntry>& results, int rank, int64_t rankedTime,
               const std::string& nextPlayer);
    void Relabel(const QmPageContext& context);
    Outcome Frame(const QmPageContext& context);
    const QmResultsTable& Table() const { return table; }
    bool PartyOver() const { return next.empty(); }

private:
    std::string Line(int number) const { return line ? line(number) : std::string(); }

    std::function<std::string(int)> line;
    QmResultsTable table;
    QmResultsView view;
    QmButtonGrid buttons;
    std::vector<QmHighscoreEntry> results;
    int rank = -1;
    int64_t rankedTime = 0;
    std::string next;
    VeText title;
    VeText nextLine;
};

#pragma once
// Draws a results table on a page: the header with the run's time (when the table has one), the
// column headings, and the ten rows of rank, name and time in their colours with a black rim, the
// first row at y = 121 and 40 pixels from row to row. The texts are laid out once per Set, not
// every frame; a name too wide for its column is cut.
#include "Gameplay/QmResultsTable.h"
#include "Screen/Text/VeText.h"

#include <functional>
#include <string>
#include <vector>

class VeSurface;

class QmResultsView {
public:
    static constexpr int kRankX = 60;
    static constexpr int kNameX = 120;
    static constexpr int kTimeX = 380;
    static constexpr int kNameWidth = 250;
    static constexpr int kHeaderY = 50;
    static constexpr int kHeadingsY = 94;
    static constexpr uint32_t kHeadingColour = 0xC8C4D8;
    static constexpr int kRankLine = 59;
    static constexpr int kNameLine = 60;
    static constexpr int kTimeLine = 61;

    explicit QmResultsView(std::function<std::string(int)> languageLine);

    // Lays out the table's texts (and the headings in the current language).
    void Set(const QmResultsTable& table);
    // Draws the header, the headings (when asked) and the rows.
    void Draw(VeSurface& target, bool headings) const;

private:
    struct Row {
        VeText rank;
        VeText name;
        VeText time;
    };

    std::function<std::string(int)> line;
    VeText header;
    VeText rankHeading;
    VeText nameHeading;
    VeText timeHeading;
    std::vector<Row> rows;
};

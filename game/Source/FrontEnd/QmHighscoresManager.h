#pragma once
// The highscores page: a map's top ten in the results table. Opened two ways: from the play page
// to look at a map's list, or after a run in tour play with the run's time in the header, where a
// time that entered the top ten first asks for a name (QmNameEntry, pre-filled with the name
// remembered from the last entry). Confirming stores the run through the save function given by
// the owner and shows the new list with the new row in green; declining leaves without storing
// anything.
//
// Frame draws the page onto the overlay and returns what the player asked for; the owner (the
// menu pages and the coordinator) carries it out.
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmNameEntry.h"
#include "FrontEnd/QmResultsView.h"
#include "Gameplay/QmHighscoreList.h"
#include "Gameplay/QmResultsTable.h"
#include "Screen/Text/VeText.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class QmControls;
class VeInput;
class VeSurface;

class QmHighscoresManager {
public:
    enum class Outcome { None, Back, RaceAgain };
    enum class Mode { Browse, AfterRace };
    static constexpr int kTitleLine = 32;
    static constexpr int kPromptLine = 62;
    static constexpr int kNoTimesLine = 63;
    static constexpr int kRaceAgainLine = 64;
    static constexpr int kTitleY = 12;
    static constexpr int kHintY = 530;
    // The title band reaches down to kBandBottom, the panel of the rows (and the line under them)
    // spans kPanelTop to kPanelBottom.
    static constexpr int kBandBottom = QmResultsTable::kFirstRowY - 8;
    static constexpr int kPanelTop = kBandBottom + 6;
    static constexpr int kPanelBottom = 560;
    static constexpr int kButtonsY = 580;
    static constexpr int kSaveLine = 205;
    static constexpr int kDontSaveLine = 204;
    static constexpr int kBackLine = 22;

    // Stores a run under the name and gives back the map's list afterwards.
    using SaveFunction = std::function<std::vector<QmHighscoreEntry>(const std::string& name)>;

    explicit QmHighscoresManager(std::function<std::string(int)> languageLine,
                                 std::function<void(const std::string&)> playSound = nullptr);

    // Looking at a map's list (from the play page).
    void ShowList(const std::vector<QmHighscoreEntry>& list, const std::string& mapName);
    // After a tour run of finalTime ms whose rank is HighscoreRank's: a rank of 0 or more opens the
    // name entry, whose confirmation calls save.
    void AfterRace(const std::vector<QmHighscoreEntry>& list, int64_t finalTime, int rank, VeInput* input,
                   SaveFunction save, int screenWidth);

    Outcome Frame(VeSurface& target, VeInput* input, QmControls& controls);
    void Draw(VeSurface& target);

    // The name offered in the next name entry (the last one confirmed, else this default).
    void SetDefaultName(const std::string& name);
    const std::string& RememberedName() const { return remembered; }
    bool NameEntryOpen() const { return nameEntry.IsOpen(); }
    Mode CurrentMode() const { return mode; }
    const QmResultsTable& Table() const { return table; }

private:
    void SetButtons(bool entry);
    void Rebuild(const std::vector<QmHighscoreEntry>& list, int newRank, bool afterRace, int64_t time);
    std::string Line(int number) const { return line ? line(number) : std::string(); }

    std::function<std::string(int)> line;
    QmResultsTable table;
    QmResultsView view;
    QmNameEntry nameEntry;
    QmButtonGrid buttons;
    SaveFunction save;
    Mode mode = Mode::Browse;
    int64_t finalTime = 0;
    int rank = -1;
    std::string remembered;
    VeText title;
    VeText subtitle;
    VeText empty;
    VeText hint;
};

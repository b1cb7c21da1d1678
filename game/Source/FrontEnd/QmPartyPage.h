#pragma once
// The party page: up to eight players, each a name (the text input "ipt_name") and a character
// (the character boxes, for the selected player); the choice between Versus and Marathon with
// what each means; for Marathon the two map sizes the draw may take; the buttons Add player,
// Remove player, Start (enabled from two players on) and Back.
//
// Up and Down move the focus from row to row (the players, the characters, the game type, the
// size boxes, the two button rows); left and right change the character or the game type where
// those have the focus; typing edits the focused player's name; Escape or the pad's B goes back.
// Start hands the players, the game type and the sizes to the party (QmParty) the page keeps.
#include "Form/VeTextInput.h"
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmCharacterBoxes.h"
#include "FrontEnd/QmPageContext.h"
#include "FrontEnd/QmTextBox.h"
#include "Gameplay/QmParty.h"
#include "Screen/Text/VeText.h"

#include <memory>
#include <string>
#include <vector>

class QmPartyPage {
public:
    enum class Outcome { None, Start, Back };
    enum Focus { FocusPlayers, FocusCharacters, FocusType, FocusSmall, FocusLarge, FocusEdit, FocusGo };
    static constexpr int kPlayerLine = 40;
    static constexpr int kPlayersLine = 39;
    static constexpr int kTitleLine = 38;
    static constexpr int kAddLine = 41;
    static constexpr int kRemoveLine = 42;
    static constexpr int kStartLine = 43;
    static constexpr int kTypeLine = 44;
    static constexpr int kVersusInfoLine = 45;
    static constexpr int kMarathonInfoLine = 46;
    static constexpr int kSmallLine = 47;
    static constexpr int kLargeLine = 48;
    static constexpr int kTooFewLine = 49;
    static constexpr int kVersusLine = 28;
    static constexpr int kMarathonLine = 29;
    static constexpr int kBackLine = 22;
    static constexpr int kFirstRowY = 70;
    static constexpr int kRowStep = 28;
    static constexpr int kBoxesTop = 300;
    static constexpr int kTypeY = 378;
    static constexpr int kSizesY = 458;
    static constexpr int kEditButtonsY = 526;
    static constexpr int kGoButtonsY = 570;

    explicit QmPartyPage(const QmPageContext& context);
    ~QmPartyPage();
    QmPartyPage(const QmPartyPage&) = delete;
    QmPartyPage& operator=(const QmPartyPage&) = delete;

    // Opening the page: the players stay, the focus goes to the first player.
    void Reset();
    void Relabel(const QmPageContext& context);
    Outcome Frame(const QmPageContext& context);

    // A player more, named with the default name and its number; false with eight.
    bool AddPlayer();
    bool RemoveSelectedPlayer();
    // Hands the page's players, type and sizes to the party.
    void Commit();
    void SetType(int type);
    void SetFocus(Focus focus) { this->focus = focus; }
    void SelectPlayer(size_t index);

    QmParty& Party() { return party; }
    size_t PlayerCount() const { return names.size(); }
    size_t SelectedPlayer() const { return selectedPlayer; }
    const VeTextInput& NameInput(size_t index) const { return *names[index]; }
    VeTextInput& NameInput(size_t index) { return *names[index]; }
    Focus CurrentFocus() const { return focus; }
    // The page's texts with the room the layout gives each (the check that none runs over).
    QmTextBoxes TextBoxes() const;

private:
    void MakeNameInput(const std::string& name);
    void PlaceNameInputs();
    void RefreshButtons();
    void MoveFocus(int step);
    bool FocusAvailable(Focus candidate) const;
    void HandleMouse(const QmPageContext& context);
    void Draw(const QmPageContext& context);
    std::string Line(int number) const { return line ? line(number) : std::string(); }

    std::function<std::string(int)> line;
    std::function<void(const std::string&)> sound;
    QmParty party;
    QmCharacterBoxes boxes;
    QmButtonGrid editButtons;
    QmButtonGrid goButtons;
    VeTextStyle nameStyle{2, 0x000000, 2, 1, 0};
    std::vector<std::unique_ptr<VeTextInput>> names;
    std::vector<int> characters;
    size_t selectedPlayer = 0;
    int type = QmParty::Versus;
    bool allowSmall = true;
    bool allowLarge = true;
    Focus focus = FocusPlayers;
    VeInput* lastInput = nullptr;
    VeText title;
    VeText playersHeading;
    VeText typeHeading;
    VeText versus;
    VeText marathon;
    VeText versusInfo;
    VeText marathonInfo;
    VeText smallLabel;
    VeText largeLabel;
    VeText tooFew;
};

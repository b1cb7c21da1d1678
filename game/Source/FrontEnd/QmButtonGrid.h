#pragma once
// A block of buttons in the menu's look laid out in rows, for the pages that have more commands than
// one row holds. The page places each button (row, position within the row) and asks every frame
// which one was activated. Keys and pad move the selection while the grid has the focus: Left and
// Right within a row, Up and Down between rows (leaving the grid at its top or bottom edge, which
// the page reads as a move of the focus). The mouse selects what it is over and a left click
// activates; a disabled button answers with "Disabled", a moving selection with "Hover" and an
// activation with "Select". Buttons may carry an on/off mark drawn at their left end (switches).
#include "Form/VeButton.h"
#include "Form/VeButtonStyle.h"
#include "FrontEnd/QmTextBox.h"
#include "Screen/Text/VeTextStyle.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QmControls;
class VeInput;
class VeSurface;

class QmButtonGrid {
public:
    enum class Exit { None, Up, Down };
    static constexpr int kHeight = 30;
    static constexpr int kGap = 8;
    static constexpr int kPadding = 12;
    static constexpr int kMarkSize = 10;
    static constexpr int kLargeHeight = 34;
    static constexpr int kLargeGap = 10;
    static constexpr int kLargePadding = 24;

    explicit QmButtonGrid(std::function<void(const std::string&)> playSound = nullptr);

    // Replaces the buttons: rows of labels, the first row's top at y, rows kHeight + kGap apart,
    // each row centred on a page of pageWidth. With cellWidth above 0 every button is that wide,
    // otherwise each is as wide as its label needs.
    void Set(const std::vector<std::vector<std::string>>& rows, int y, int pageWidth, int cellWidth = 0);
    // Keeps the positions and renames the buttons (a language change); the counts must match.
    void Relabel(const std::vector<std::vector<std::string>>& rows);
    size_t Size() const { return buttons.size(); }
    const VeButton& Button(size_t index) const { return *buttons[index]; }
    void SetEnabled(size_t index, bool enabled);
    bool Enabled(size_t index) const { return index < buttons.size() && buttons[index]->enabled; }
    // Gives a button a switch mark (on or off), drawn at its left end.
    void SetSwitch(size_t index, bool on);
    // Narrower labels for pages with many commands (applies at the next Set).
    void SetLetterSpacing(int spacing) { labelStyle.LetterSpacing(spacing); }
    // The look of pages with a few commands at their foot: taller buttons with wider margins and
    // heavier labels (applies at the next Set).
    void SetLarge(bool on);
    void Select(size_t index);
    int Selected() const { return selected; }
    // Whether Left and Right move the selection (off where the page uses them itself).
    void SetArrowKeys(bool on) { arrowKeys = on; }

    // One frame: the index activated in this frame or -1. Keys act only with the focus; exit tells
    // whether Up or Down left the grid at its edge.
    int Update(QmControls& controls, VeInput* input, bool focused, Exit* exit = nullptr);
    void Draw(VeSurface& target, bool focused);
    bool MouseOver(const VeInput& input) const;
    // Each label with the room inside its button (within the focus border, beside a switch mark).
    QmTextBoxes Texts() const;

private:
    struct Place {
        int row = 0;
        int column = 0;
        int mark = -1; // -1 no switch, 0 off, 1 on
    };

    void Play(const std::string& name) const;
    void MoveInRow(int step);
    bool MoveRow(int step);
    void Layout(int pageWidth);

    std::function<void(const std::string&)> playSound;
    VeButtonStyle style{0, kHeight};
    VeTextStyle labelStyle;
    std::vector<std::unique_ptr<VeButtonStyle>> styles;
    std::vector<std::unique_ptr<VeButton>> buttons;
    std::vector<Place> places;
    int rowCount = 0;
    int top = 0;
    int width = 0;
    int fixedWidth = 0;
    int selected = 0;
    bool arrowKeys = true;
    int gap = kGap;
    int padding = kPadding;
};

#pragma once
// The character page: the character boxes 130 pixels down, the chosen one framed with its racer's
// animation, and the buttons Choose and Back. Choosing (the button, Confirm, or a click on the
// chosen box) writes profile.dat; the owner then gives the racer the new character, or tells the
// player when the profile could not be written.
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmCharacterBoxes.h"
#include "FrontEnd/QmPageContext.h"
#include "Screen/Text/VeText.h"

class QmCharacterPage {
public:
    enum class Outcome { None, Chosen, SaveFailed, Back };
    static constexpr int kTitleLine = 65;
    static constexpr int kInstructionLine = 66;
    static constexpr int kChooseLine = 67;
    static constexpr int kBackLine = 22;
    static constexpr int kSaveFailedLine = 206;
    static constexpr int kBoxesTop = 130;
    static constexpr int kButtonsY = 580;

    explicit QmCharacterPage(const QmPageContext& context);

    // Back to the racer's current character, with the Choose button selected.
    void Reset(int character);
    // Texts in the current language.
    void Relabel(const QmPageContext& context);
    Outcome Frame(const QmPageContext& context);
    int Chosen() const { return boxes.Chosen(); }
    int BoxesLeft(int pageWidth) const { return (pageWidth - boxes.Width()) / 2; }

private:
    QmCharacterBoxes boxes;
    QmButtonGrid buttons;
    VeText title;
    VeText instruction;
};

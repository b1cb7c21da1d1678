#include "FrontEnd/QmCharacterPage.h"

#include "Controls/QmControls.h"
#include "FrontEnd/QmPanel.h"
#include "Gameplay/QmProfile.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

namespace {
const VeTextStyle kTitleStyle(6, 0xFFFFFF, 4, 2, 0);
const VeTextStyle kInstructionStyle(3, 0xFFFFFF, 3, 2, 0);
constexpr int kTitleY = 12;
constexpr int kInstructionY = 70;
constexpr int kPanelRoom = 20; // the panel's room above and below the boxes
} // namespace

QmCharacterPage::QmCharacterPage(const QmPageContext& context) : buttons(context.sound) {
    buttons.SetLarge(true);
    buttons.SetArrowKeys(false); // left and right move between the characters
    Relabel(context);
}

void QmCharacterPage::Relabel(const QmPageContext& context) {
    const auto line = [&context](int number) { return context.line ? context.line(number) : std::string(); };
    title = VeText(line(kTitleLine), &kTitleStyle);
    instruction = VeText(line(kInstructionLine), &kInstructionStyle);
    const int width = context.target != nullptr ? context.target->width : 640;
    buttons.Set({{line(kChooseLine), line(kBackLine)}}, kButtonsY, width);
}

void QmCharacterPage::Reset(int character) {
    boxes.Choose(character);
    buttons.Select(0);
}

QmCharacterPage::Outcome QmCharacterPage::Frame(const QmPageContext& context) {
    VeSurface& target = *context.target;
    QmControls& controls = *context.controls;
    const int left = BoxesLeft(target.width);
    Outcome outcome = Outcome::None;
    const int chosenBefore = boxes.Chosen();
    const bool clickedChosen =
        context.input != nullptr && context.input->mousePressed[kMouseLeft] != 0 &&
        boxes.BoxAt(context.input->mouseX, context.input->mouseY, left, kBoxesTop) == chosenBefore;
    if (controls.Back()) {
        outcome = Outcome::Back;
    } else if (boxes.Update(controls, context.input, left, kBoxesTop)) {
        if (context.sound) {
            context.sound("Hover");
        }
    }
    const int pressed = outcome == Outcome::None ? buttons.Update(controls, context.input, true) : -1;
    if (pressed == 1) {
        outcome = Outcome::Back;
    } else if (pressed == 0 || clickedChosen) {
        outcome = QmProfile::SaveProfile(boxes.Chosen()) ? Outcome::Chosen : Outcome::SaveFailed;
    }

    QmPanel::DrawTitleBand(target, kTitleY, kInstructionY + instruction.Height() - kTitleY);
    QmPanel::DrawAcross(target, kBoxesTop - kPanelRoom, kBoxesTop + QmCharacterBoxes::kBox + kPanelRoom);
    title.DrawOnto(target, target.width / 2, kTitleY, true, 1.0f, 0x000000);
    instruction.DrawOnto(target, target.width / 2, kInstructionY, true, 1.0f, 0x000000);
    boxes.Draw(target, left, kBoxesTop, context.now);
    buttons.Draw(target, true);
    return outcome;
}

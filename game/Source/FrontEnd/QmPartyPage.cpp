#include "FrontEnd/QmPartyPage.h"

#include "Controls/QmControls.h"
#include "FrontEnd/QmNameEntry.h"
#include "FrontEnd/QmPanel.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

#include <algorithm>

namespace {
const VeTextStyle kTitleStyle(6, 0xFFFFFF, 4, 2, 0);
const VeTextStyle kHeadingStyle(2, 0xC8C4D8, 2, 2, 0);
const VeTextStyle kChoiceStyle(3, 0xFFFFFF, 3, 2, 0, 0, 0, false);
const VeTextStyle kInfoStyle(2, 0xFFFFFF, 2, 1, 4, 580, 0, false);
const VeTextStyle kLabelStyle(2, 0xFFFFFF, 2, 1, 0);
const VeTextStyle kWarningStyle(2, 0xFF6060, 2, 1, 0);
constexpr uint32_t kOutline = 0x000000;
constexpr uint32_t kFocusColour = 0xFF0000;
constexpr uint32_t kChosenColour = 0xE6D514;
constexpr uint32_t kRowColour = 0x1678D6;
constexpr int kTitleY = 12;
constexpr int kNumberX = 40;
constexpr int kNameX = 64;
constexpr int kNameWidth = 300;
constexpr int kNameHeight = 24;
constexpr int kFaceX = 380;
constexpr int kSizesX = 150;
constexpr int kSizeStep = 24;
constexpr int kCheckSize = 20;
constexpr int kWarningY = 506;
constexpr int kPanelTop = QmPartyPage::kFirstRowY - 2;

// A frame of the given thickness just outside the box.
void FrameBox(VeSurface& target, int x, int y, int w, int h, uint32_t colour, int thickness) {
    for (int i = 1; i <= thickness; ++i) {
        target.Rect(x - i, y - i, w + 2 * i, h + 2 * i, colour, false, true);
    }
}

bool Inside(const VeInput& input, int x, int y, int w, int h) {
    return input.mouseX >= x && input.mouseX < x + w && input.mouseY >= y && input.mouseY < y + h;
}
} // namespace

QmPartyPage::QmPartyPage(const QmPageContext& context)
    : line(context.line), sound(context.sound), editButtons(context.sound), goButtons(context.sound) {
    lastInput = context.input;
    editButtons.SetLarge(true);
    goButtons.SetLarge(true);
    Relabel(context);
    AddPlayer();
    AddPlayer();
    Reset();
}

QmPartyPage::~QmPartyPage() = default;

void QmPartyPage::Relabel(const QmPageContext& context) {
    line = context.line;
    title = VeText(Line(kTitleLine), &kTitleStyle);
    playersHeading = VeText(Line(kPlayersLine), &kHeadingStyle);
    typeHeading = VeText(Line(kTypeLine), &kHeadingStyle);
    versus = VeText(Line(kVersusLine), &kChoiceStyle);
    marathon = VeText(Line(kMarathonLine), &kChoiceStyle);
    versusInfo = VeText(Line(kVersusInfoLine), &kInfoStyle);
    marathonInfo = VeText(Line(kMarathonInfoLine), &kInfoStyle);
    smallLabel = VeText(Line(kSmallLine), &kLabelStyle);
    largeLabel = VeText(Line(kLargeLine), &kLabelStyle);
    tooFew = VeText(Line(kTooFewLine), &kWarningStyle);
    const int width = context.target != nullptr ? context.target->width : 640;
    editButtons.Set({{Line(kAddLine), Line(kRemoveLine)}}, kEditButtonsY, width);
    goButtons.Set({{Line(kStartLine), Line(kBackLine)}}, kGoButtonsY, width);
    RefreshButtons();
}

void QmPartyPage::Reset() {
    focus = FocusPlayers;
    SelectPlayer(0);
    goButtons.Select(0);
    editButtons.Select(0);
}

void QmPartyPage::MakeNameInput(const std::string& name) {
    auto input = std::make_unique<VeTextInput>(lastInput, static_cast<float>(kNameX), 0.0f, kNameWidth,
                                               kNameHeight, nameStyle, QmNameEntry::kMaxNameLength, name);
    input->name = QmNameEntry::kInputName;
    input->paddingY = (kNameHeight - input->text.Height()) / 2;
    names.push_back(std::move(input));
    PlaceNameInputs();
}

void QmPartyPage::PlaceNameInputs() {
    for (size_t i = 0; i < names.size(); ++i) {
        names[i]->y = static_cast<float>(kFirstRowY + kRowStep * static_cast<int>(i));
    }
}

bool QmPartyPage::AddPlayer() {
    if (names.size() >= QmParty::kMaxPlayers) {
        return false;
    }
    MakeNameInput(Line(kPlayerLine) + " " + std::to_string(names.size() + 1));
    characters.push_back(0);
    SelectPlayer(names.size() - 1);
    RefreshButtons();
    return true;
}

bool QmPartyPage::RemoveSelectedPlayer() {
    if (names.empty()) {
        return false;
    }
    names[selectedPlayer]->selected = false;
    if (lastInput != nullptr) {
        names[selectedPlayer]->Update(*lastInput, false); // gives the key repeat timing back
    }
    names.erase(names.begin() + static_cast<std::ptrdiff_t>(selectedPlayer));
    characters.erase(characters.begin() + static_cast<std::ptrdiff_t>(selectedPlayer));
    PlaceNameInputs();
    SelectPlayer(std::min(selectedPlayer, names.empty() ? 0 : names.size() - 1));
    RefreshButtons();
    return true;
}

void QmPartyPage::SelectPlayer(size_t index) {
    selectedPlayer = index;
    if (selectedPlayer < characters.size()) {
        boxes.Choose(characters[selectedPlayer]);
    }
}

void QmPartyPage::SetType(int partyType) {
    type = partyType == QmParty::Marathon ? QmParty::Marathon : QmParty::Versus;
}

void QmPartyPage::RefreshButtons() {
    editButtons.SetEnabled(0, names.size() < QmParty::kMaxPlayers);
    editButtons.SetEnabled(1, !names.empty());
    goButtons.SetEnabled(0, names.size() >= QmParty::kMinPlayers);
}

void QmPartyPage::Commit() {
    party.ClearPlayers();
    for (size_t i = 0; i < names.size(); ++i) {
        std::string name = QmNameEntry::DrawableName(names[i]->Content());
        if (name.empty()) {
            name = QmNameEntry::DrawableName(Line(kPlayerLine) + " " + std::to_string(i + 1));
        }
        names[i]->SetText(name, static_cast<int32_t>(name.size()));
        party.AddPlayer(name, characters[i]);
    }
    party.SetType(type);
    party.SetAllowedSizes(allowSmall, allowLarge);
    party.NewGame();
}

bool QmPartyPage::FocusAvailable(Focus candidate) const {
    if (candidate == FocusSmall || candidate == FocusLarge) {
        return type == QmParty::Marathon;
    }
    if (candidate == FocusPlayers || candidate == FocusCharacters) {
        return !names.empty();
    }
    return true;
}

void QmPartyPage::MoveFocus(int step) {
    if (focus == FocusPlayers && step < 0 && selectedPlayer > 0) {
        SelectPlayer(selectedPlayer - 1);
        return;
    }
    if (focus == FocusPlayers && step > 0 && selectedPlayer + 1 < names.size()) {
        SelectPlayer(selectedPlayer + 1);
        return;
    }
    int next = static_cast<int>(focus);
    do {
        next += step;
    } while (next >= FocusPlayers && next <= FocusGo && !FocusAvailable(static_cast<Focus>(next)));
    if (next >= FocusPlayers && next <= FocusGo) {
        focus = static_cast<Focus>(next);
        if (sound) {
            sound("Hover");
        }
    }
}

void QmPartyPage::HandleMouse(const QmPageContext& context) {
    VeInput* input = context.input;
    if (input == nullptr || input->mousePressed[kMouseLeft] == 0) {
        return;
    }
    const int width = context.target->width;
    for (size_t i = 0; i < names.size(); ++i) {
        if (names[i]->MouseOver(*input)) {
            focus = FocusPlayers;
            SelectPlayer(i);
        }
    }
    const int left = (width - boxes.Width()) / 2;
    const int box = boxes.BoxAt(input->mouseX, input->mouseY, left, kBoxesTop);
    if (box >= 0 && selectedPlayer < characters.size()) {
        focus = FocusCharacters;
        boxes.Choose(box);
        characters[selectedPlayer] = boxes.Chosen();
    }
    if (Inside(*input, width / 4 - versus.Width() / 2 - 8, kTypeY + 14, versus.Width() + 16,
               versus.Height() + 12)) {
        focus = FocusType;
        SetType(QmParty::Versus);
    }
    if (Inside(*input, 3 * width / 4 - marathon.Width() / 2 - 8, kTypeY + 14, marathon.Width() + 16,
               marathon.Height() + 12)) {
        focus = FocusType;
        SetType(QmParty::Marathon);
    }
    if (type == QmParty::Marathon) {
        if (Inside(*input, kSizesX, kSizesY, kCheckSize + 10 + smallLabel.Width(), kCheckSize)) {
            focus = FocusSmall;
            allowSmall = !allowSmall || !allowLarge;
        }
        if (Inside(*input, kSizesX, kSizesY + kSizeStep, kCheckSize + 10 + largeLabel.Width(), kCheckSize)) {
            focus = FocusLarge;
            allowLarge = !allowLarge || !allowSmall;
        }
    }
}

QmPartyPage::Outcome QmPartyPage::Frame(const QmPageContext& context) {
    QmControls& controls = *context.controls;
    VeInput* input = context.input;
    lastInput = input;
    Outcome outcome = Outcome::None;
    if (controls.Back()) {
        outcome = Outcome::Back;
    } else if (controls.MenuUp()) {
        MoveFocus(-1);
    } else if (controls.MenuDown() || (focus == FocusPlayers && controls.Confirm())) {
        MoveFocus(1);
    } else {
        const bool left = focus != FocusPlayers && controls.MenuLeft();
        const bool right = focus != FocusPlayers && controls.MenuRight();
        const bool toggle = controls.Confirm() || (input != nullptr && input->pressed[VeKey::Space] != 0);
        if (focus == FocusCharacters && (left || right) && selectedPlayer < characters.size()) {
            boxes.Choose(boxes.Chosen() + (right ? 1 : -1));
            characters[selectedPlayer] = boxes.Chosen();
        } else if (focus == FocusType && (left || right || toggle)) {
            SetType(type == QmParty::Versus ? QmParty::Marathon : QmParty::Versus);
        } else if (focus == FocusSmall && (left || right || toggle)) {
            allowSmall = !allowSmall || !allowLarge; // one size always stays allowed
        } else if (focus == FocusLarge && (left || right || toggle)) {
            allowLarge = !allowLarge || !allowSmall;
        }
        HandleMouse(context);
    }
    for (size_t i = 0; i < names.size(); ++i) {
        names[i]->selected = focus == FocusPlayers && i == selectedPlayer;
        if (input != nullptr) {
            names[i]->Update(*input, names[i]->MouseOver(*input));
        }
    }
    if (outcome == Outcome::None) {
        const int edit = editButtons.Update(controls, input, focus == FocusEdit);
        if (edit >= 0) {
            focus = FocusEdit;
        }
        if (edit == 0) {
            AddPlayer();
        } else if (edit == 1) {
            RemoveSelectedPlayer();
        }
        const int go = goButtons.Update(controls, input, focus == FocusGo);
        if (go >= 0) {
            focus = FocusGo;
        }
        if (go == 0 && names.size() >= QmParty::kMinPlayers) {
            Commit();
            outcome = Outcome::Start;
        } else if (go == 1) {
            outcome = Outcome::Back;
        }
    }
    if (!FocusAvailable(focus)) {
        focus = FocusEdit;
    }
    Draw(context);
    return outcome;
}

void QmPartyPage::Draw(const QmPageContext& context) {
    VeSurface& target = *context.target;
    const int width = target.width;
    // The title and the players' heading on the band, everything down to the buttons on the panel.
    QmPanel::DrawTitleBand(target, kTitleY, kPanelTop - QmPanel::kBandPadding - kTitleY);
    QmPanel::DrawAcross(target, kPanelTop, kEditButtonsY - 4);
    title.DrawOnto(target, width / 2, kTitleY, true, 1.0f, kOutline);
    playersHeading.DrawOnto(target, kNameX, kFirstRowY - 18, false, 1.0f, kOutline);
    for (size_t i = 0; i < names.size(); ++i) {
        VeTextInput& name = *names[i];
        const int y = static_cast<int>(name.y);
        if (i == selectedPlayer) {
            target.Rect(kNumberX - 8, y - 2, kFaceX + 40 - kNumberX, kNameHeight + 4, kRowColour, true, true,
                        0.6f);
        }
        VeText::DrawString(target, std::to_string(i + 1), kNumberX, y + 7, kLabelStyle, false, 1.0f,
                           kOutline);
        name.Draw(target, false, false);
        if (focus == FocusPlayers && i == selectedPlayer) {
            FrameBox(target, kNameX, y, kNameWidth, kNameHeight, kFocusColour, 2);
        }
        boxes.DrawFace(target, characters[i], kFaceX, y - 4);
    }
    const int left = (width - boxes.Width()) / 2;
    if (focus == FocusCharacters) {
        FrameBox(target, left - 6, kBoxesTop - 6, boxes.Width() + 12, QmCharacterBoxes::kBox + 12,
                 kFocusColour, 2);
    }
    if (!names.empty()) {
        boxes.Draw(target, left, kBoxesTop, context.now);
    }

    typeHeading.DrawOnto(target, width / 2, kTypeY, true, 1.0f, kOutline);
    const VeText* choices[2] = {&versus, &marathon};
    for (int t = 0; t < 2; ++t) {
        const VeText& choice = *choices[t];
        const int cx = (t == 0 ? width / 4 : 3 * width / 4);
        const int x = cx - choice.Width() / 2;
        const int y = kTypeY + 20;
        if (t == type) {
            target.Rect(x - 8, y - 6, choice.Width() + 16, choice.Height() + 12, kChosenColour, false, true);
            target.Rect(x - 7, y - 5, choice.Width() + 14, choice.Height() + 10, kChosenColour, false, true);
        }
        if (focus == FocusType && t == type) {
            FrameBox(target, x - 8, y - 6, choice.Width() + 16, choice.Height() + 12, kFocusColour, 2);
        }
        choice.DrawOnto(target, x, y, false, 1.0f, kOutline);
    }
    const VeText& info = type == QmParty::Versus ? versusInfo : marathonInfo;
    info.DrawOnto(target, width / 2, kTypeY + 48, true, 1.0f, kOutline);

    if (type == QmParty::Marathon) {
        const struct {
            int y;
            bool on;
            Focus focus;
            const VeText* label;
        } checks[2] = {{kSizesY, allowSmall, FocusSmall, &smallLabel},
                       {kSizesY + kSizeStep, allowLarge, FocusLarge, &largeLabel}};
        for (const auto& check : checks) {
            target.Rect(kSizesX, check.y, kCheckSize, kCheckSize, 0xFFFFFF, true, true);
            target.Rect(kSizesX, check.y, kCheckSize, kCheckSize, 0x000000, false, true);
            if (check.on) {
                target.Rect(kSizesX + 5, check.y + 5, kCheckSize - 10, kCheckSize - 10, 0x1ADE0C, true, true);
            }
            if (focus == check.focus) {
                FrameBox(target, kSizesX, check.y, kCheckSize, kCheckSize, kFocusColour, 2);
            }
            check.label->DrawOnto(target, kSizesX + kCheckSize + 10,
                                  check.y + (kCheckSize - check.label->Height()) / 2, false, 1.0f, kOutline);
        }
    }
    if (names.size() < QmParty::kMinPlayers) {
        tooFew.DrawOnto(target, width / 2, kWarningY, true, 1.0f, kOutline);
    }
    editButtons.Draw(target, focus == FocusEdit);
    goButtons.Draw(target, focus == FocusGo);
}

QmTextBoxes QmPartyPage::TextBoxes() const {
    const int sizeRoom = 640 - kSizesX - kCheckSize - 10 - 6;
    return {QmTextBox(title, 640 - 12, 60), // capitals only: the small letters' lower room stays empty
            QmTextBox(playersHeading, kNameWidth, 20),
            QmTextBox(versus, 640 / 2 - 16, 20),
            QmTextBox(marathon, 640 / 2 - 16, 20),
            QmTextBox(versusInfo, 600, kSizesY - (kTypeY + 48) - 2),
            QmTextBox(marathonInfo, 600, kSizesY - (kTypeY + 48) - 2),
            QmTextBox(smallLabel, sizeRoom, kSizeStep),
            QmTextBox(largeLabel, sizeRoom, kSizeStep),
            QmTextBox(tooFew, 640 - 12, kEditButtonsY - kWarningY)};
}

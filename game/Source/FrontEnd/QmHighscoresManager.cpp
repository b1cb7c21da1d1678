#include "FrontEnd/QmHighscoresManager.h"

#include "Controls/QmControls.h"
#include "FrontEnd/QmPanel.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

#include <utility>

namespace {
constexpr uint32_t kOutline = 0x000000;
const VeTextStyle kTitleStyle(6, 0xFFFFFF, 4, 2, 0);
const VeTextStyle kSubtitleStyle(3, 0xFFFFFF, 3, 2, 0);
const VeTextStyle kHintStyle(2, 0xE6D514, 2, 2, 0);
} // namespace

QmHighscoresManager::QmHighscoresManager(std::function<std::string(int)> languageLine,
                                         std::function<void(const std::string&)> playSound)
    : line(languageLine), table(languageLine), view(std::move(languageLine)), buttons(std::move(playSound)) {
    buttons.SetLarge(true);
    SetButtons(false);
}

void QmHighscoresManager::SetButtons(bool entry) {
    if (entry) {
        buttons.Set({{Line(kSaveLine), Line(kDontSaveLine)}}, kButtonsY, 640);
    } else {
        buttons.Set({{Line(kBackLine)}}, kButtonsY, 640);
    }
}

void QmHighscoresManager::SetDefaultName(const std::string& name) {
    if (remembered.empty()) {
        remembered = name;
    }
}

void QmHighscoresManager::Rebuild(const std::vector<QmHighscoreEntry>& list, int newRank, bool afterRace,
                                  int64_t time) {
    table.BuildResults(list, newRank, afterRace, time);
    view.Set(table);
    title = VeText(Line(kTitleLine), &kTitleStyle);
    empty = VeText(list.empty() ? Line(kNoTimesLine) : std::string(), &kSubtitleStyle);
    hint = VeText(mode == Mode::AfterRace ? Line(kRaceAgainLine) : std::string(), &kHintStyle);
}

void QmHighscoresManager::ShowList(const std::vector<QmHighscoreEntry>& list, const std::string& mapName) {
    nameEntry.Close();
    mode = Mode::Browse;
    rank = -1;
    Rebuild(list, -1, false, 0);
    SetButtons(false);
    subtitle = VeText(mapName, &kSubtitleStyle, true);
}

void QmHighscoresManager::AfterRace(const std::vector<QmHighscoreEntry>& list, int64_t time, int newRank,
                                    VeInput* input, SaveFunction saveRun, int screenWidth) {
    nameEntry.Close();
    mode = Mode::AfterRace;
    finalTime = time;
    rank = newRank;
    save = std::move(saveRun);
    subtitle = VeText();
    Rebuild(list, -1, true, time);
    if (rank >= 0) {
        nameEntry.Open(input, Line(kPromptLine), remembered, screenWidth);
    }
    SetButtons(nameEntry.IsOpen());
}

QmHighscoresManager::Outcome QmHighscoresManager::Frame(VeSurface& target, VeInput* input,
                                                        QmControls& controls) {
    Outcome outcome = Outcome::None;
    if (nameEntry.IsOpen()) {
        QmNameEntry::Result result = nameEntry.Update(input, controls);
        if (result == QmNameEntry::Result::None) {
            // The buttons answer the mouse only: the keys belong to the name.
            const int pressed = input != nullptr && input->mousePressed[kMouseLeft] != 0
                                    ? buttons.Update(controls, input, false)
                                    : -1;
            result = pressed == 0   ? nameEntry.Confirm()
                     : pressed == 1 ? nameEntry.Decline()
                                    : QmNameEntry::Result::None;
        }
        if (result == QmNameEntry::Result::Confirmed) {
            const std::string name = nameEntry.TakenName(remembered);
            remembered = name;
            const std::vector<QmHighscoreEntry> list = save ? save(name) : std::vector<QmHighscoreEntry>();
            Rebuild(list, rank, true, finalTime);
            SetButtons(false);
        } else if (result == QmNameEntry::Result::Declined) {
            outcome = Outcome::Back;
        }
    } else if (controls.Back() || buttons.Update(controls, input, true) == 0) {
        outcome = Outcome::Back;
    } else if (mode == Mode::AfterRace && input != nullptr && input->pressed[VeKey::R] != 0) {
        outcome = Outcome::RaceAgain;
    }
    Draw(target);
    return outcome;
}

void QmHighscoresManager::Draw(VeSurface& target) {
    // The title with the run's time (or the map's name) and the column headings (or the name
    // entry) on the band, the ten rows and the hint on the panel below it.
    QmPanel::DrawTitleBand(target, kTitleY, kBandBottom - QmPanel::kBandPadding - kTitleY);
    QmPanel::DrawAcross(target, kPanelTop, kPanelBottom);
    title.DrawOnto(target, target.width / 2, kTitleY, true, 1.0f, kOutline);
    if (!subtitle.text.empty()) {
        subtitle.DrawOnto(target, target.width / 2, QmResultsView::kHeaderY, true, 1.0f, kOutline);
    }
    if (nameEntry.IsOpen()) {
        view.Draw(target, false);
        nameEntry.Draw(target);
    } else {
        view.Draw(target, true);
    }
    if (table.Filled() == 0 && !empty.text.empty()) {
        empty.DrawOnto(target, target.width / 2, QmResultsTable::kFirstRowY, true, 1.0f, kOutline);
    }
    if (!hint.text.empty() && !nameEntry.IsOpen()) {
        hint.DrawOnto(target, target.width / 2, kHintY, true, 1.0f, kOutline);
    }
    buttons.Draw(target, !nameEntry.IsOpen());
}

#include "FrontEnd/QmPartyResultsPage.h"

#include "Controls/QmControls.h"
#include "FrontEnd/QmPanel.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

namespace {
const VeTextStyle kTitleStyle(6, 0xFFFFFF, 4, 2, 0);
const VeTextStyle kNextStyle(3, 0xE6D514, 3, 2, 0);
constexpr int kTitleY = 12;
} // namespace

QmPartyResultsPage::QmPartyResultsPage(const QmPageContext& context)
    : line(context.line), table(context.line), view(context.line), buttons(context.sound) {
    buttons.SetLarge(true);
    Relabel(context);
}

void QmPartyResultsPage::Relabel(const QmPageContext& context) {
    line = context.line;
    table = QmResultsTable(context.line);
    view = QmResultsView(context.line);
    title = VeText(Line(kTitleLine), &kTitleStyle);
    const int width = context.target != nullptr ? context.target->width : 640;
    buttons.Set({{Line(kNextPlayerLine), Line(kMainMenuLine)}}, kButtonsY, width);
    Build(results, rank, rankedTime, next);
}

void QmPartyResultsPage::Build(const std::vector<QmHighscoreEntry>& ranking, int newRank, int64_t time,
                               const std::string& nextPlayer) {
    results = ranking;
    rank = newRank;
    rankedTime = time;
    next = nextPlayer;
    table.BuildResults(results, rank, true, rankedTime);
    view.Set(table);
    std::string text;
    if (!next.empty()) {
        text = Line(kNextUpLine) + ": " + next;
    } else if (!results.empty()) {
        text = Line(kWinnerLine) + ": " + results.front().name;
    }
    nextLine = VeText(text, &kNextStyle);
    buttons.SetEnabled(0, !next.empty());
    buttons.Select(next.empty() ? 1 : 0);
}

QmPartyResultsPage::Outcome QmPartyResultsPage::Frame(const QmPageContext& context) {
    VeSurface& target = *context.target;
    Outcome outcome = Outcome::None;
    const int pressed = buttons.Update(*context.controls, context.input, true);
    if (pressed == 0) {
        outcome = Outcome::NextPlayer;
    } else if (pressed == 1 || context.controls->Back()) {
        outcome = Outcome::MainMenu;
    }
    // The title, the run's time and the column headings on the band; the ranking and who is next
    // on the panel below it.
    QmPanel::DrawTitleBand(target, kTitleY, kBandBottom - QmPanel::kBandPadding - kTitleY);
    QmPanel::DrawAcross(target, kPanelTop, kPanelBottom);
    title.DrawOnto(target, target.width / 2, kTitleY, true, 1.0f, 0x000000);
    view.Draw(target, true);
    nextLine.DrawOnto(target, target.width / 2, kNextY, true, 1.0f, 0x000000);
    buttons.Draw(target, true);
    return outcome;
}

#include "FrontEnd/QmResultsView.h"

#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

#include <utility>

namespace {
constexpr uint32_t kOutline = 0x000000;

VeTextStyle RowStyle(uint32_t colour, int32_t maxWidth) {
    VeTextStyle style(3, colour, 3, 1, 0, maxWidth);
    if (maxWidth > 0) {
        style.MaxHeight(4 * 3 + 3); // one line: a longer name is cut
    }
    return style;
}
} // namespace

QmResultsView::QmResultsView(std::function<std::string(int)> languageLine)
    : line(std::move(languageLine)), rows(QmResultsTable::kRows) {}

void QmResultsView::Set(const QmResultsTable& table) {
    const auto text = [this](int number) { return line ? line(number) : std::string(); };
    const VeTextStyle headerStyle(3, 0xFFFFFF, 3, 2, 0);
    header = VeText(table.Header(), &headerStyle);
    const VeTextStyle headingStyle(2, kHeadingColour, 2, 2, 0);
    rankHeading = VeText(text(kRankLine), &headingStyle);
    nameHeading = VeText(text(kNameLine), &headingStyle);
    timeHeading = VeText(text(kTimeLine), &headingStyle);
    for (size_t i = 0; i < rows.size(); ++i) {
        const QmResultsRow& source = table.Rows()[i];
        const VeTextStyle plain = RowStyle(source.colour, 0);
        const VeTextStyle cut = RowStyle(source.colour, kNameWidth);
        rows[i].rank = VeText(source.rank, &plain);
        rows[i].name = VeText(source.name, &cut, true);
        rows[i].time = VeText(source.time, &plain);
    }
}

void QmResultsView::Draw(VeSurface& target, bool headings) const {
    if (!header.text.empty()) {
        header.DrawOnto(target, target.width / 2, kHeaderY, true, 1.0f, kOutline);
    }
    if (headings) {
        rankHeading.DrawOnto(target, kRankX - rankHeading.Width() / 2, kHeadingsY, false, 1.0f, kOutline);
        nameHeading.DrawOnto(target, kNameX, kHeadingsY, false, 1.0f, kOutline);
        timeHeading.DrawOnto(target, kTimeX, kHeadingsY, false, 1.0f, kOutline);
    }
    for (size_t i = 0; i < rows.size(); ++i) {
        const int y = QmResultsTable::kFirstRowY + QmResultsTable::kRowStep * static_cast<int>(i);
        const Row& row = rows[i];
        if (!row.rank.text.empty()) {
            row.rank.DrawOnto(target, kRankX - row.rank.Width() / 2, y, false, 1.0f, kOutline);
        }
        if (!row.name.text.empty()) {
            row.name.DrawOnto(target, kNameX, y, false, 1.0f, kOutline);
        }
        if (!row.time.text.empty()) {
            row.time.DrawOnto(target, kTimeX, y, false, 1.0f, kOutline);
        }
    }
}

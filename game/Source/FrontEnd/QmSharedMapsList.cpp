#include "FrontEnd/QmSharedMapsList.h"

#include "FrontEnd/QmPanel.h"
#include "Screen/Surface/VeSurface.h"

#include <algorithm>

namespace {
constexpr uint32_t kHeadingColour = 0xFFD860;
constexpr uint32_t kRowColour = 0xFFFFFF;
constexpr uint32_t kNoteColour = 0x9A96A8;
constexpr int kInset = 8;

// One line of the text; a text wider than room loses its end to "..".
std::unique_ptr<VeText> MakeText(const std::string& text, const VeTextStyle& style, int room) {
    auto made = std::make_unique<VeText>(text, &style);
    for (size_t keep = text.size(); made->Width() > room && keep > 0; --keep) {
        made->SetText(text.substr(0, keep - 1) + "..");
        made->Draw();
    }
    return made;
}

int Room(int column) {
    const int starts[] = {kInset, QmSharedMapsList::kSecondX, QmSharedMapsList::kThirdX,
                          QmSharedMapsList::kWidth};
    return starts[column + 1] - starts[column] - kInset;
}
} // namespace

QmSharedMapsList::QmSharedMapsList() {
    headingStyle.Size(2).Weight(2).LetterSpacing(1).LineHeight(1).Colour(kHeadingColour);
    rowStyle.Size(2).Weight(1).LetterSpacing(1).LineHeight(1).Colour(kRowColour);
    noteStyle = rowStyle;
    noteStyle.Colour(kNoteColour);
}

void QmSharedMapsList::Set(const std::vector<std::string>& headingTexts, const std::vector<Row>& newRows,
                           const std::string& empty) {
    headings.clear();
    for (size_t column = 0; column < headingTexts.size() && column < 3; ++column) {
        headings.push_back(MakeText(headingTexts[column], headingStyle, Room(static_cast<int>(column))));
    }
    rows.clear();
    for (const Row& row : newRows) {
        rows.push_back({MakeText(row.first, rowStyle, Room(0)), MakeText(row.second, rowStyle, Room(1)),
                        MakeText(row.third, rowStyle, Room(2))});
    }
    emptyNote = VeText(empty, &noteStyle);
    Select(selected);
}

void QmSharedMapsList::Select(int index) {
    selected = std::clamp(index, 0, std::max(0, static_cast<int>(rows.size()) - 1));
    Scroll();
}

bool QmSharedMapsList::Move(int step) {
    const int next = selected + step;
    if (next < 0 || next >= static_cast<int>(rows.size())) {
        return false;
    }
    Select(next);
    return true;
}

void QmSharedMapsList::Scroll() {
    if (selected < top) {
        top = selected;
    } else if (selected >= top + kVisibleRows) {
        top = selected - kVisibleRows + 1;
    }
    top = std::clamp(top, 0, std::max(0, static_cast<int>(rows.size()) - kVisibleRows));
}

int QmSharedMapsList::RowAt(int x, int y) const {
    if (x < kX || x >= kX + kWidth || y < kRowsY) {
        return -1;
    }
    const int row = (y - kRowsY) / kRowHeight;
    const int index = top + row;
    return row < kVisibleRows && index < static_cast<int>(rows.size()) ? index : -1;
}

void QmSharedMapsList::Draw(VeSurface& target, bool focused) const {
    QmPanel::Draw(target, kX, kHeadingY - 6, kWidth, kRowsY - kHeadingY + 6 + kVisibleRows * kRowHeight);
    const int columnX[] = {kX + kInset, kX + kSecondX, kX + kThirdX};
    for (size_t column = 0; column < headings.size(); ++column) {
        target.BlitKeyed(headings[column]->surface, columnX[column], kHeadingY);
    }
    if (rows.empty()) {
        target.BlitKeyed(emptyNote.surface, kX + kInset, kRowsY + 8);
        return;
    }
    for (int r = 0; r < kVisibleRows && top + r < static_cast<int>(rows.size()); ++r) {
        const Texts3& row = rows[static_cast<size_t>(top + r)];
        const int y = kRowsY + r * kRowHeight;
        if (top + r == selected) {
            target.MultiplyRect(kX, y, kWidth, kRowHeight - 2, 0.45f);
            target.Rect(kX, y, kWidth, kRowHeight - 2, focused ? 0xFF0000 : 0x777777, false);
            if (focused) {
                target.Rect(kX + 1, y + 1, kWidth - 2, kRowHeight - 4, 0xFF0000, false);
            }
        }
        const VeText* texts[] = {row.first.get(), row.second.get(), row.third.get()};
        for (int column = 0; column < 3; ++column) {
            target.BlitKeyed(texts[column]->surface, columnX[column],
                             y + (kRowHeight - 2 - texts[column]->Height()) / 2);
        }
    }
}

QmTextBoxes QmSharedMapsList::Texts() const {
    QmTextBoxes boxes;
    for (size_t column = 0; column < headings.size(); ++column) {
        boxes.emplace_back(*headings[column], Room(static_cast<int>(column)), kRowsY - kHeadingY);
    }
    for (const Texts3& row : rows) {
        boxes.emplace_back(*row.first, Room(0), kRowHeight - 2);
        boxes.emplace_back(*row.second, Room(1), kRowHeight - 2);
        boxes.emplace_back(*row.third, Room(2), kRowHeight - 2);
    }
    boxes.emplace_back(emptyNote, kWidth - 2 * kInset, kRowHeight);
    return boxes;
}

#include "FrontEnd/QmButtonGrid.h"

#include "Controls/QmControls.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeText.h"

#include <cstdlib>
#include <utility>

QmButtonGrid::QmButtonGrid(std::function<void(const std::string&)> sound) : playSound(std::move(sound)) {
    style.normalFillColour = 0x333333;
    style.disabledFillColour = 0x222222;
    style.borderColour = 0x000000;
    style.borderThickness = 2;
    style.hoverBorderColour = 0xFF0000;
    style.hoverBorderThickness = 4;
    style.hoverLabelColourOn = true;
    style.hoverLabelColour = 0xFFFFFF;
    style.disabledLabelColour = 0x777777;
    labelStyle.Size(2).Weight(1).LetterSpacing(1).LineHeight(1).Colour(0xD8D4E8);
}

void QmButtonGrid::SetLarge(bool on) {
    style.height = on ? kLargeHeight : kHeight;
    gap = on ? kLargeGap : kGap;
    padding = on ? kLargePadding : kPadding;
    labelStyle.Weight(on ? 2 : 1).LineHeight(on ? 0 : 1);
}

void QmButtonGrid::Play(const std::string& name) const {
    if (playSound) {
        playSound(name);
    }
}

void QmButtonGrid::Set(const std::vector<std::vector<std::string>>& rows, int y, int pageWidth,
                       int cellWidth) {
    buttons.clear();
    places.clear();
    top = y;
    width = pageWidth;
    fixedWidth = cellWidth;
    rowCount = static_cast<int>(rows.size());
    for (size_t r = 0; r < rows.size(); ++r) {
        for (size_t c = 0; c < rows[r].size(); ++c) {
            buttons.push_back(std::make_unique<VeButton>(rows[r][c]));
            places.push_back({static_cast<int>(r), static_cast<int>(c), -1});
        }
    }
    Layout(pageWidth);
    selected = 0;
}

void QmButtonGrid::Relabel(const std::vector<std::vector<std::string>>& rows) {
    size_t index = 0;
    for (const auto& row : rows) {
        for (const std::string& label : row) {
            if (index < buttons.size()) {
                buttons[index++]->SetLabel(label);
            }
        }
    }
    Layout(width);
}

void QmButtonGrid::Layout(int pageWidth) {
    styles.clear();
    std::vector<int> widths(buttons.size());
    std::vector<int> rowWidths(static_cast<size_t>(rowCount), 0);
    std::vector<int> rowCounts(static_cast<size_t>(rowCount), 0);
    for (size_t i = 0; i < buttons.size(); ++i) {
        const VeText measure(buttons[i]->Label(), &labelStyle);
        const int markRoom = places[i].mark >= 0 ? kMarkSize + 6 : 0;
        widths[i] = fixedWidth > 0 ? fixedWidth : measure.Width() + 2 * padding + markRoom;
        const auto row = static_cast<size_t>(places[i].row);
        rowWidths[row] += widths[i] + (rowCounts[row] > 0 ? gap : 0);
        ++rowCounts[row];
    }
    std::vector<int> nextX(static_cast<size_t>(rowCount));
    for (size_t r = 0; r < nextX.size(); ++r) {
        nextX[r] = (pageWidth - rowWidths[r]) / 2;
    }
    for (size_t i = 0; i < buttons.size(); ++i) {
        const auto row = static_cast<size_t>(places[i].row);
        auto own = std::make_unique<VeButtonStyle>(style);
        own->width = widths[i];
        own->x = static_cast<float>(nextX[row]);
        own->y = static_cast<float>(top + places[i].row * (style.height + gap));
        own->labelOffsetX = places[i].mark >= 0 ? (kMarkSize + 6) / 2 : 0;
        nextX[row] += widths[i] + gap;
        const bool enabled = buttons[i]->enabled;
        buttons[i]->SetStyle(own.get());
        buttons[i]->SetLabelStyle(labelStyle);
        buttons[i]->enabled = enabled;
        styles.push_back(std::move(own));
    }
}

void QmButtonGrid::SetEnabled(size_t index, bool enabled) {
    if (index < buttons.size()) {
        buttons[index]->enabled = enabled;
    }
}

void QmButtonGrid::SetSwitch(size_t index, bool on) {
    if (index >= places.size()) {
        return;
    }
    const bool relayout = places[index].mark < 0;
    places[index].mark = on ? 1 : 0;
    if (relayout) {
        Layout(width);
    }
}

void QmButtonGrid::Select(size_t index) {
    if (index < buttons.size()) {
        selected = static_cast<int>(index);
    }
}

void QmButtonGrid::MoveInRow(int step) {
    const int row = places[static_cast<size_t>(selected)].row;
    std::vector<int> inRow;
    for (size_t i = 0; i < places.size(); ++i) {
        if (places[i].row == row && buttons[i]->enabled) {
            inRow.push_back(static_cast<int>(i));
        }
    }
    if (inRow.size() < 2) {
        return;
    }
    size_t at = 0;
    while (at < inRow.size() && inRow[at] != selected) {
        ++at;
    }
    const int count = static_cast<int>(inRow.size());
    const int next = ((static_cast<int>(at) + step) % count + count) % count;
    selected = inRow[static_cast<size_t>(next)];
    Play("Hover");
}

bool QmButtonGrid::MoveRow(int step) {
    const Place& from = places[static_cast<size_t>(selected)];
    const float centre =
        buttons[static_cast<size_t>(selected)]->x + buttons[static_cast<size_t>(selected)]->width / 2.0f;
    for (int row = from.row + step; row >= 0 && row < rowCount; row += step) {
        int best = -1;
        float bestDistance = 0.0f;
        for (size_t i = 0; i < places.size(); ++i) {
            if (places[i].row != row || !buttons[i]->enabled) {
                continue;
            }
            const float distance = std::abs(buttons[i]->x + buttons[i]->width / 2.0f - centre);
            if (best < 0 || distance < bestDistance) {
                best = static_cast<int>(i);
                bestDistance = distance;
            }
        }
        if (best >= 0) {
            selected = best;
            Play("Hover");
            return true;
        }
    }
    return false;
}

bool QmButtonGrid::MouseOver(const VeInput& input) const {
    for (const auto& button : buttons) {
        if (button->MouseOver(input)) {
            return true;
        }
    }
    return false;
}

int QmButtonGrid::Update(QmControls& controls, VeInput* input, bool focused, Exit* exit) {
    if (exit != nullptr) {
        *exit = Exit::None;
    }
    if (buttons.empty()) {
        return -1;
    }
    if (input != nullptr) {
        for (size_t i = 0; i < buttons.size(); ++i) {
            VeButton& button = *buttons[i];
            const bool over = button.MouseOver(*input);
            button.Update(*input, over);
            if (!over) {
                continue;
            }
            if (input->mouseMoved && button.enabled && selected != static_cast<int>(i)) {
                selected = static_cast<int>(i);
                Play("Hover");
            }
            if (input->mousePressed[kMouseLeft] != 0) {
                if (!button.enabled) {
                    Play("Disabled");
                    return -1;
                }
                selected = static_cast<int>(i);
                Play("Select");
                return selected;
            }
        }
    }
    if (!focused) {
        return -1;
    }
    if (!buttons[static_cast<size_t>(selected)]->enabled) {
        MoveInRow(1);
    }
    if (arrowKeys && controls.MenuLeft()) {
        MoveInRow(-1);
    } else if (arrowKeys && controls.MenuRight()) {
        MoveInRow(1);
    } else if (controls.MenuUp()) {
        if (!MoveRow(-1) && exit != nullptr) {
            *exit = Exit::Up;
        }
    } else if (controls.MenuDown()) {
        if (!MoveRow(1) && exit != nullptr) {
            *exit = Exit::Down;
        }
    }
    const bool space = input != nullptr && input->pressed[VeKey::Space] != 0;
    if ((controls.Confirm() || space) && buttons[static_cast<size_t>(selected)]->enabled) {
        Play("Select");
        return selected;
    }
    return -1;
}

void QmButtonGrid::Draw(VeSurface& target, bool focused) {
    for (size_t i = 0; i < buttons.size(); ++i) {
        VeButton& button = *buttons[i];
        button.selected = focused && static_cast<int>(i) == selected;
        button.Draw(target, false, false);
        if (places[i].mark >= 0) {
            const int x = static_cast<int>(button.x) + padding / 2;
            const int y = static_cast<int>(button.y) + (button.height - kMarkSize) / 2;
            target.Rect(x, y, kMarkSize, kMarkSize, 0xD8D4E8, false);
            if (places[i].mark == 1) {
                target.Rect(x + 2, y + 2, kMarkSize - 4, kMarkSize - 4, 0x40E040, true);
            }
        }
    }
}

QmTextBoxes QmButtonGrid::Texts() const {
    QmTextBoxes boxes;
    for (size_t i = 0; i < buttons.size(); ++i) {
        const VeButton& button = *buttons[i];
        const int markRoom = places[i].mark >= 0 ? kMarkSize + 6 : 0;
        const int border = style.hoverBorderThickness;
        boxes.emplace_back(button.LabelText(), button.width - 2 * border - markRoom,
                           button.height - 2 * border);
    }
    return boxes;
}

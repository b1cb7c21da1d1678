#include "FrontEnd/QmPageButtons.h"

#include "Controls/QmControls.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeText.h"

#include <utility>

QmPageButtons::QmPageButtons(std::function<void(const std::string&)> sound) : playSound(std::move(sound)) {
    style.normalFillColour = 0x333333;
    style.disabledFillColour = 0x222222;
    style.borderColour = 0x000000;
    style.borderThickness = 2;
    style.hoverBorderColour = 0xFF0000;
    style.hoverBorderThickness = 4;
    style.hoverLabelColourOn = true;
    style.hoverLabelColour = 0xFFFFFF;
    style.disabledLabelColour = 0x777777;
    labelStyle.Colour(0xD8D4E8);
}

void QmPageButtons::Play(const std::string& name) const {
    if (playSound) {
        playSound(name);
    }
}

void QmPageButtons::Set(const std::vector<std::string>& labels, int y, int pageWidth) {
    buttons.clear();
    styles.clear();
    std::vector<int> widths;
    int total = 0;
    for (const std::string& label : labels) {
        const VeText measure(label, &labelStyle);
        widths.push_back(measure.Width() + 2 * kPadding);
        total += widths.back();
    }
    total += kGap * (labels.empty() ? 0 : static_cast<int>(labels.size()) - 1);
    int x = (pageWidth - total) / 2;
    for (size_t i = 0; i < labels.size(); ++i) {
        auto own = std::make_unique<VeButtonStyle>(style);
        own->width = widths[i];
        own->x = static_cast<float>(x);
        own->y = static_cast<float>(y);
        auto button = std::make_unique<VeButton>(labels[i], own.get(), &labelStyle);
        x += widths[i] + kGap;
        styles.push_back(std::move(own));
        buttons.push_back(std::move(button));
    }
    selected = 0;
}

void QmPageButtons::SetEnabled(size_t index, bool enabled) {
    if (index < buttons.size()) {
        buttons[index]->enabled = enabled;
    }
}

void QmPageButtons::Select(size_t index) {
    if (index < buttons.size()) {
        selected = static_cast<int>(index);
    }
}

void QmPageButtons::Move(int step) {
    const int count = static_cast<int>(buttons.size());
    for (int tried = 1; tried < count; ++tried) {
        const int next = ((selected + step * tried) % count + count) % count;
        if (buttons[static_cast<size_t>(next)]->enabled) {
            selected = next;
            Play("Hover");
            return;
        }
    }
}

bool QmPageButtons::MouseOver(const VeInput& input) const {
    for (const auto& button : buttons) {
        if (button->MouseOver(input)) {
            return true;
        }
    }
    return false;
}

int QmPageButtons::Update(QmControls& controls, VeInput* input, bool focused) {
    if (buttons.empty()) {
        return -1;
    }
    if (focused && arrowKeys) {
        if (controls.MenuLeft()) {
            Move(-1);
        }
        if (controls.MenuRight()) {
            Move(1);
        }
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
    if (!buttons[static_cast<size_t>(selected)]->enabled) {
        Move(1);
    }
    const bool space = input != nullptr && input->pressed[VeKey::Space] != 0;
    if (focused && (controls.Confirm() || space) && buttons[static_cast<size_t>(selected)]->enabled) {
        Play("Select");
        return selected;
    }
    return -1;
}

void QmPageButtons::Draw(VeSurface& target, bool focused) {
    for (size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->selected = focused && static_cast<int>(i) == selected;
        buttons[i]->Draw(target, false, false);
    }
}

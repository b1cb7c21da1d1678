#include "Form/VeButtonRow.h"

#include "Audio/VeAudioManager.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/VeCursor.h"

#include <algorithm>

namespace {
// Set again whenever no pad input is active; an activation by A clears it, so a held A counts once.
bool padArmed = true;
constexpr float kStickThreshold = 0.5f;

GamePad::State ReadProcessPad() {
    GamePad* reader = GamePad::Instance();
    return reader != nullptr ? reader->GetState(0, GamePad::IndependentAxes) : GamePad::State{};
}
} // namespace

VeButtonRow::VeButtonRow(VeSurface* surface, VeInput* inputState, VeAudioManager* sounds, PadReader padReader)
    : target(surface), input(inputState), audio(sounds), pad(std::move(padReader)) {
    if (!pad) {
        pad = ReadProcessPad;
    }
}

VeButtonRow::~VeButtonRow() = default;

void VeButtonRow::ResetPadLatch() {
    padArmed = true;
}

void VeButtonRow::Play(const std::string& sound) const {
    if (soundPlayer && !sound.empty()) {
        soundPlayer(sound);
        return;
    }
    if (audio != nullptr && !sound.empty()) {
        audio->Play(sound);
    }
}

void VeButtonRow::AddButton(const std::string& label) {
    auto button = std::make_unique<VeButton>(label);
    button->name = label;
    buttons.push_back(std::move(button));
}

void VeButtonRow::Clear() {
    buttons.clear();
    selected = 0;
    previousSelected = 0;
}

void VeButtonRow::Layout() {
    if (labelStyle == nullptr) {
        ownLabelStyle = std::make_unique<VeTextStyle>(1, 0x000000, 1, 1, 1);
        labelStyle = ownLabelStyle.get();
    }
    for (auto& button : buttons) {
        if (!button->LabelStyled()) {
            button->SetLabelStyle(*labelStyle);
        }
    }
    if (buttonStyle == nullptr) {
        int32_t widest = 0;
        int32_t tallest = 0;
        for (const auto& button : buttons) {
            widest = std::max(widest, button->LabelText().Width());
            tallest = std::max(tallest, button->LabelText().Height());
        }
        ownButtonStyle = std::make_unique<VeButtonStyle>(widest + 10, tallest + 10);
        buttonStyle = ownButtonStyle.get();
    }
    for (auto& button : buttons) {
        if (!button->HasStyle()) {
            button->SetStyle(buttonStyle);
        }
    }
    if (!arranged) {
        PlaceDefault();
    }
}

void VeButtonRow::PlaceDefault() {
    if (target == nullptr || buttonStyle == nullptr) {
        return;
    }
    const float centreX = static_cast<float>(target->width / 2) + buttonStyle->x;
    const float top = static_cast<float>(target->height / 2) + buttonStyle->y;
    Arrange(direction, centreX, top);
    arranged = false; // follows later style changes (the dialog moves its buttons with the body)
}

void VeButtonRow::Arrange(Direction how, float centreX, float top) {
    direction = how;
    arranged = true;
    if (buttons.empty()) {
        return;
    }
    if (how == Direction::Horizontal) {
        int32_t total = spacing * static_cast<int32_t>(buttons.size() - 1);
        for (const auto& button : buttons) {
            total += button->width;
        }
        float x = centreX - static_cast<float>(total / 2);
        for (auto& button : buttons) {
            button->x = static_cast<float>(static_cast<int32_t>(x));
            button->y = static_cast<float>(static_cast<int32_t>(top));
            x += static_cast<float>(button->width + spacing);
        }
        return;
    }
    float y = top;
    for (auto& button : buttons) {
        button->x = static_cast<float>(static_cast<int32_t>(centreX) - button->width / 2);
        button->y = static_cast<float>(static_cast<int32_t>(y));
        y += static_cast<float>(button->height + spacing);
    }
}

void VeButtonRow::Draw(bool checkBounds) {
    if (mouseMoved) {
        for (size_t i = 0; i < buttons.size(); ++i) {
            if (buttons[i]->enabled &&
                buttons[i]->Contains(static_cast<int32_t>(mouseX), static_cast<int32_t>(mouseY))) {
                selected = static_cast<int32_t>(i);
                active = true;
            }
        }
    }
    for (size_t i = 0; i < buttons.size(); ++i) {
        buttons[i]->selected = active && static_cast<int32_t>(i) == selected;
        if (target != nullptr) {
            buttons[i]->Draw(*target, checkBounds, false);
        }
    }
    if (selected != previousSelected && buttonStyle != nullptr) {
        Play(buttonStyle->hoverSound);
    }
    previousSelected = selected;
    mouseMoved = false;
    if (input != nullptr) {
        VeCursor::SetMode(MouseOverButton() ? VeCursorKind::Hand : VeCursorKind::Arrow);
    }
}

bool VeButtonRow::MouseOverButton() const {
    if (input == nullptr) {
        return false;
    }
    return std::any_of(buttons.begin(), buttons.end(),
                       [this](const auto& button) { return button->Contains(input->mouseX, input->mouseY); });
}

void VeButtonRow::SelectNext() {
    const int32_t count = static_cast<int32_t>(buttons.size());
    for (int32_t step = 1; step < count; ++step) {
        const int32_t index = (selected + step) % count;
        if (buttons[static_cast<size_t>(index)]->enabled) {
            selected = index;
            return;
        }
    }
}

void VeButtonRow::SelectPrevious() {
    const int32_t count = static_cast<int32_t>(buttons.size());
    for (int32_t step = 1; step < count; ++step) {
        const int32_t index = ((selected - step) % count + count) % count;
        if (buttons[static_cast<size_t>(index)]->enabled) {
            selected = index;
            return;
        }
    }
}

void VeButtonRow::SelectFirst() {
    if (!buttons.empty() && buttons.front()->enabled) {
        selected = 0;
    }
}

void VeButtonRow::SelectLast() {
    if (!buttons.empty() && buttons.back()->enabled) {
        selected = static_cast<int32_t>(buttons.size()) - 1;
    }
}

void VeButtonRow::SelectByLabel(const std::string& label) {
    const int32_t index = IndexOf(label);
    if (index >= 0 && buttons[static_cast<size_t>(index)]->enabled) {
        selected = index;
    }
}

int32_t VeButtonRow::IndexOf(const std::string& label) const {
    for (size_t i = 0; i < buttons.size(); ++i) {
        if (buttons[i]->Label() == label) {
            return static_cast<int32_t>(i);
        }
    }
    return -1;
}

const std::string& VeButtonRow::SelectedLabel() const {
    static const std::string none;
    return buttons.empty() ? none : buttons[static_cast<size_t>(selected)]->Label();
}

bool VeButtonRow::PadIdle(const GamePad::State& state) const {
    return state.leftX >= -kStickThreshold && state.leftX <= kStickThreshold &&
           state.leftY >= -kStickThreshold && state.leftY <= kStickThreshold && !state.dpadUp &&
           !state.dpadDown && !state.dpadLeft && !state.dpadRight && !state.a && !state.b && !state.x &&
           !state.y && !state.start;
}

bool VeButtonRow::Activated(const std::string& label) {
    const int32_t index = IndexOf(label);
    if (index < 0) {
        return false;
    }
    const GamePad::State state = pad();
    if (PadIdle(state)) {
        padArmed = true;
    }
    VeButton& button = *buttons[static_cast<size_t>(index)];
    if (padArmed && state.a && active && selected == index && button.enabled) {
        padArmed = false;
        Play("Select");
        return true;
    }
    if (input == nullptr) {
        return false;
    }
    if (input->mousePressed[kMouseLeft] != 0 && button.MouseOver(*input)) {
        if (!button.enabled) {
            Play("Disabled");
            return false;
        }
        Play("Select");
        return true;
    }
    const bool confirm = input->pressed[VeKey::Space] != 0 || input->pressed[VeKey::Return] != 0 ||
                         input->pressed[VeKey::KeypadEnter] != 0;
    if (confirm && selected == index && button.enabled) {
        Play("Select");
        return true;
    }
    return false;
}

void VeButtonRow::MouseMoved(float x, float y) {
    if (x != mouseX || y != mouseY) {
        mouseMoved = true;
    }
    mouseX = x;
    mouseY = y;
}

void VeButtonRow::SetEnabled(const std::string& label, bool enabled) {
    const int32_t index = IndexOf(label);
    if (index < 0) {
        return;
    }
    buttons[static_cast<size_t>(index)]->enabled = enabled;
    if (!enabled && index == selected) {
        SelectNext();
    }
}

VeButton* VeButtonRow::Button(const std::string& label) {
    const int32_t index = IndexOf(label);
    return index < 0 ? nullptr : buttons[static_cast<size_t>(index)].get();
}

const VeButton* VeButtonRow::Button(const std::string& label) const {
    const int32_t index = IndexOf(label);
    return index < 0 ? nullptr : buttons[static_cast<size_t>(index)].get();
}

#include "Form/VeButton.h"

#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

namespace {
constexpr float kDisabledShade = 0.5f;
} // namespace

VeButton::VeButton(const std::string& labelText, const VeButtonStyle* newStyle, const VeTextStyle* labelStyle)
    : label(labelText, labelStyle) {
    hoverCursor = VeCursorKind::Hand;
    if (labelStyle != nullptr) {
        normalLabelColour = labelStyle->colour;
    }
    if (newStyle != nullptr) {
        SetStyle(newStyle);
    } else {
        width = look.width;
        height = look.height;
    }
}

void VeButton::SetStyle(const VeButtonStyle* newStyle) {
    if (newStyle == nullptr) {
        return;
    }
    style = newStyle;
    look = *newStyle;
    width = look.width;
    height = look.height;
    x = static_cast<float>(static_cast<int32_t>(look.x));
    y = static_cast<float>(static_cast<int32_t>(look.y));
}

void VeButton::SetLabelStyle(const VeTextStyle& labelStyle) {
    normalLabelColour = labelStyle.colour;
    label.SetStyle(labelStyle);
}

void VeButton::SetLabel(const std::string& text) {
    label.SetText(text);
    label.Draw();
}

void VeButton::SetLabelColour(uint32_t colour) {
    if (label.style.colour != colour) {
        label.style.colour = colour;
        label.Draw();
    }
}

void VeButton::Draw(VeSurface& target, bool checkBounds, bool /*mouseOver*/) {
    const int32_t left = Left();
    const int32_t top = Top();
    if (!enabled) {
        if (look.disabledImage != nullptr) {
            target.BlitKeyed(*look.disabledImage, left, top, checkBounds);
        } else {
            target.Rect(left, top, width, height, look.disabledFillColour, true, checkBounds);
        }
        SetLabelColour(look.disabledLabelColour);
        target.MultiplyRect(left, top, width, height, kDisabledShade, checkBounds);
    } else if (look.normalImage != nullptr) {
        target.BlitKeyed(*look.normalImage, left, top, checkBounds);
    } else {
        target.Rect(left, top, width, height, look.normalFillColour, true, checkBounds);
    }
    DrawRings(target, look.borderThickness, look.borderColour, checkBounds);
    if (enabled && selected) {
        SetLabelColour(look.hoverLabelColourOn ? look.hoverLabelColour : normalLabelColour);
        if (look.hoverImage != nullptr) {
            target.BlitKeyed(*look.hoverImage, left, top, checkBounds);
        }
        if (look.hoverFill) {
            target.Rect(left, top, width, height, look.hoverFillColour, true, checkBounds);
        } else {
            DrawRings(target, look.hoverBorderThickness, look.hoverBorderColour, checkBounds);
        }
    } else if (enabled) {
        SetLabelColour(normalLabelColour);
    }
    if (look.showLabel) {
        const int32_t labelX = left + width / 2 - label.Width() / 2 + look.labelOffsetX;
        const int32_t labelY = top + height / 2 - label.Height() / 2 + look.labelOffsetY;
        target.BlitKeyed(label.surface, labelX, labelY, checkBounds);
    }
}

void VeButton::Update(VeInput& /*input*/, bool mouseOver) {
    ShowHoverCursor(mouseOver);
}

bool VeButton::Clicked(const VeInput& input, bool mouseOver) const {
    return enabled && mouseOver && input.mousePressed[kMouseLeft] != 0;
}

bool VeButton::Confirmed(const VeInput& input) const {
    return enabled && selected &&
           (input.pressed[VeKey::Space] != 0 || input.pressed[VeKey::Return] != 0 ||
            input.pressed[VeKey::KeypadEnter] != 0);
}

bool VeButton::Pressed(const VeInput& input, bool mouseOver) const {
    return Clicked(input, mouseOver) || Confirmed(input);
}

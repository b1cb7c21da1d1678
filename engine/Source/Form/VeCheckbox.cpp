#include "Form/VeCheckbox.h"

#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

#include <algorithm>

namespace {
constexpr float kDisabledShade = 0.5f;
} // namespace

VeCheckbox::VeCheckbox(const VeCheckboxStyle* style, float atX, float atY, bool startChecked)
    : checked(startChecked), markText("V") {
    if (style != nullptr) {
        backgroundColour = style->backgroundColour;
        borderColour = style->borderColour;
        hoverBackgroundColour = style->hoverBackgroundColour;
        hoverBorderColour = style->hoverBorderColour;
        borderThickness = style->borderThickness;
        markTextStyle = style->markTextStyle;
        markKind = style->markKind;
        markColour = style->markColour;
        width = style->width;
        height = style->height;
    }
    x = atX;
    y = atY;
    hoverCursor = VeCursorKind::Hand;
    MakeMarkText();
}

void VeCheckbox::MakeMarkText() {
    VeTextStyle markStyle;
    if (markTextStyle != nullptr) {
        markStyle = *markTextStyle;
    } else {
        // A "V" that fills about half the inside of the box.
        const int32_t inside = std::max(1, std::min(width, height) - 2 * borderThickness);
        const int32_t size = std::clamp(inside / 8, 1, 100);
        markStyle.Size(size).Weight(std::clamp(size, 1, 100)).LetterSpacing(0).SmallLetters(false);
    }
    markStyle.Colour(markColour);
    markText.SetStyle(markStyle);
}

void VeCheckbox::Draw(VeSurface& target, bool checkBounds, bool mouseOver) {
    const int32_t left = Left();
    const int32_t top = Top();
    const bool hot = hovered || mouseOver || selected;
    target.Rect(left, top, width, height, hot ? hoverBackgroundColour : backgroundColour, true, checkBounds);
    DrawRings(target, borderThickness, hot ? hoverBorderColour : borderColour, checkBounds);
    if (checked) {
        const int32_t t = borderThickness;
        switch (markKind) {
        case MarkCross:
            target.Line(left + t, top + t, left + t + width - 2 * t, top + t + width - 2 * t, markColour,
                        checkBounds);
            target.Line(left + t + width - 2 * t, top + t, left + t, top + t + height - 2 * t, markColour,
                        checkBounds);
            break;
        case MarkSquare:
            target.Rect(left + t, top + t, width - 2 * t, height - 2 * t, markColour, true, checkBounds);
            break;
        case MarkGlyph: {
            const auto markX = static_cast<int32_t>(x + static_cast<float>(width) / 2.0f -
                                                    static_cast<float>(markText.Width()) / 2.0f);
            const auto markY = static_cast<int32_t>(y + static_cast<float>(height) / 2.0f -
                                                    static_cast<float>(markText.Height()) / 2.0f);
            target.BlitKeyed(markText.surface, markX, markY, checkBounds);
            break;
        }
        default:
            break;
        }
    }
    if (!enabled) {
        target.MultiplyRect(left, top, width, height, kDisabledShade, checkBounds);
    }
}

void VeCheckbox::Update(VeInput& input, bool mouseOver) {
    if (!enabled) {
        return;
    }
    ShowHoverCursor(mouseOver);
    if (selected && input.pressed[VeKey::Space] != 0) {
        checked = !checked;
    }
}

void VeCheckbox::Activate() {
    if (enabled && selected) {
        checked = !checked;
    }
}

void VeCheckbox::StoreValue() {
    value.assign(1, checked ? '1' : '0');
}

#include "Form/VeFormElement.h"

#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/VeCursor.h"

bool VeFormElement::Contains(int32_t pointX, int32_t pointY) const {
    const int32_t left = Left();
    const int32_t top = Top();
    return pointX >= left && pointY >= top && pointX <= left + width && pointY <= top + height;
}

bool VeFormElement::MouseOver(const VeInput& input) const {
    return Contains(input.mouseX, input.mouseY);
}

void VeFormElement::ShowHoverCursor(bool mouseOver) const {
    if (enabled && mouseOver && hoverCursor >= 0) {
        VeCursor::SetMode(hoverCursor);
    }
}

void VeFormElement::DrawRings(VeSurface& target, int32_t thickness, uint32_t colour, bool checkBounds) const {
    const int32_t left = Left();
    const int32_t top = Top();
    for (int32_t i = 0; i < thickness; ++i) {
        const int32_t w = width - 2 * i;
        const int32_t h = height - 2 * i;
        if (w <= 0 || h <= 0) {
            break;
        }
        target.Rect(left + i, top + i, w, h, colour, false, checkBounds);
    }
}

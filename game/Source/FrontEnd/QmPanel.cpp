#include "FrontEnd/QmPanel.h"

#include "Screen/Surface/VeSurface.h"

void QmPanel::DrawTitleBand(VeSurface& target, int y, int height) {
    DrawBand(target, y - kBandPadding, y + height + kBandPadding);
}

void QmPanel::DrawBand(VeSurface& target, int top, int bottom) {
    target.MultiplyRect(0, top, target.width, bottom - top, kTitleShade);
}

void QmPanel::Draw(VeSurface& target, int x, int y, int width, int height) {
    target.MultiplyRect(x, y, width, height, kShade);
}

void QmPanel::DrawAcross(VeSurface& target, int top, int bottom) {
    Draw(target, kLeft, top, kRight - kLeft, bottom - top);
}

void QmPanel::DrawQuestion(VeSurface& target, int x, int y, int width, int height) {
    target.Rect(x - 1, y - 1, width + 2, height + 2, 0xFFFFFF, false);
    target.MultiplyRect(x, y, width, height, kQuestionShade);
}

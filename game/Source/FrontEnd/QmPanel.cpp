#include "FrontEnd/QmPanel.h"

#include "Screen/Surface/VeSurface.h"

void QmPanel::DrawTitleBand(VeSurface& target, int y, int height) {
    target.MultiplyRect(0, y - kBandPadding, target.width, height + 2 * kBandPadding, kTitleShade);
}

void QmPanel::Draw(VeSurface& target, int x, int y, int width, int height) {
    target.MultiplyRect(x, y, width, height, kShade);
}

void QmPanel::DrawAcross(VeSurface& target, int top, int bottom) {
    Draw(target, kLeft, top, kRight - kLeft, bottom - top);
}

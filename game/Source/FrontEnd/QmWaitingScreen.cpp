#include "FrontEnd/QmWaitingScreen.h"

#include "Controls/QmControls.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"

void QmWaitingScreen::Set(const std::function<std::string(int)>& line, const std::string& player, int map,
                          int maps) {
    const auto text = [&line](int number) { return line ? line(number) : std::string(); };
    const VeTextStyle nameStyle(5, 0xFFFFFF, 4, 2, 8, 600);
    const VeTextStyle mapStyle(3, 0xE6D514, 3, 2, 0);
    name = VeText(text(kNextUpLine) + ": " + player, &nameStyle);
    mapCount = VeText(map > 0 ? text(kMapLine) + " " + std::to_string(map) + " " + text(kOfLine) + " " +
                                    std::to_string(maps)
                              : std::string(),
                      &mapStyle);
}

void QmWaitingScreen::Draw(VeSurface& target) const {
    const int top = target.height / 2 - name.Height() / 2 - 40;
    const int bottom = top + name.Height() + (mapCount.text.empty() ? 0 : 24 + mapCount.Height());
    const int left = kPanelMargin;
    const int width = target.width - 2 * kPanelMargin;
    target.Rect(left - kRim, top - kPanelPadding - kRim, width + 2 * kRim,
                bottom - top + 2 * (kPanelPadding + kRim), kRimColour, true, true);
    target.Rect(left, top - kPanelPadding, width, bottom - top + 2 * kPanelPadding, kPanelColour, true, true);
    name.DrawOnto(target, target.width / 2, top, true, 1.0f, 0x000000);
    if (!mapCount.text.empty()) {
        mapCount.DrawOnto(target, target.width / 2, top + name.Height() + 24, true, 1.0f, 0x000000);
    }
}

QmWaitingScreen::Outcome QmWaitingScreen::Update(QmControls& controls) const {
    return controls.Back() ? Outcome::LeaveParty : Outcome::None;
}

#include "FrontEnd/QmWaitingScreen.h"

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
    target.MultiplyAll(kDarken);
    const int top = target.height / 2 - name.Height() / 2 - 40;
    name.DrawOnto(target, target.width / 2, top, true, 1.0f, 0x000000);
    if (!mapCount.text.empty()) {
        mapCount.DrawOnto(target, target.width / 2, top + name.Height() + 24, true, 1.0f, 0x000000);
    }
}

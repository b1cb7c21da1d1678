#pragma once
// A row of buttons at the foot of one of the results and party pages, centred on the page, in
// the menu's look: dark fill, black border, red border and white label on the selected one.
// Left and right (keys or pad) move the selection while the row has the focus; the mouse selects
// what it is over; Return, keypad Enter, Space, the pad's A or a left click activate. A disabled
// button cannot be selected by keys and answers a click with the sound "Disabled". "Hover" plays
// when the selection moves and "Select" on an activation.
#include "Form/VeButton.h"
#include "Form/VeButtonStyle.h"
#include "Screen/Text/VeTextStyle.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QmControls;
class VeInput;
class VeSurface;

class QmPageButtons {
public:
    static constexpr int kHeight = 34;
    static constexpr int kGap = 10;
    static constexpr int kPadding = 24;

    explicit QmPageButtons(std::function<void(const std::string&)> playSound = nullptr);

    // Replaces the buttons by these labels, centred at height y on a page of the given width.
    void Set(const std::vector<std::string>& labels, int y, int pageWidth);
    void SetEnabled(size_t index, bool enabled);
    void Select(size_t index);
    // Whether left and right move the selection (off where the page uses them itself).
    void SetArrowKeys(bool on) { arrowKeys = on; }
    int Selected() const { return selected; }
    size_t Size() const { return buttons.size(); }
    const VeButton& Button(size_t index) const { return *buttons[index]; }

    // One frame: returns the index activated in this frame, or -1. Keys act only with the focus.
    int Update(QmControls& controls, VeInput* input, bool focused);
    void Draw(VeSurface& target, bool focused);
    // The mouse is over one of the buttons.
    bool MouseOver(const VeInput& input) const;

private:
    void Play(const std::string& name) const;
    void Move(int step);

    std::function<void(const std::string&)> playSound;
    VeButtonStyle style{0, kHeight};
    VeTextStyle labelStyle{2, 0xFFFFFF, 2, 1, 0};
    std::vector<std::unique_ptr<VeButtonStyle>> styles;
    std::vector<std::unique_ptr<VeButton>> buttons;
    int selected = 0;
    bool arrowKeys = true;
};

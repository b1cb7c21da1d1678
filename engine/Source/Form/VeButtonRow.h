#pragma once
// A row of push buttons that the player walks with the keyboard, the game pad or the mouse. Each
// button is known by its label; a page asks every frame whether the button with a given label
// was activated (Activated) and draws the row (Draw), which also follows the mouse: the enabled
// button under a moving mouse becomes selected, the hover sound plays when the selection moves,
// and the cursor becomes a hand over any button.
//
// Activation: the pad's A (once per press: every pad input must be released before A counts
// again), a left click on an enabled button (a disabled one answers with the sound "Disabled"),
// or Space, Return or keypad Enter on the selected button. Every activation plays "Select".
//
// The row draws on its target surface and reads the input, the sounds and game pad 0 it is given
// (each may be absent; without a pad reader the process's pad reader is asked, if there is one). Buttons are
// placed as a horizontal row or a vertical column (Arrange), or by the page itself through Button(label).
#include "Form/VeButton.h"
#include "Form/VeButtonStyle.h"
#include "Input/GamePad.h"
#include "Screen/Text/VeTextStyle.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

class VeAudioManager;
class VeInput;
class VeSurface;

class VeButtonRow {
public:
    enum class Direction { Horizontal = 1, Vertical = 2 };
    using PadReader = std::function<GamePad::State()>;

    VeButtonRow(VeSurface* target, VeInput* input, VeAudioManager* audio, PadReader pad = nullptr);
    ~VeButtonRow();
    VeButtonRow(const VeButtonRow&) = delete;
    VeButtonRow& operator=(const VeButtonRow&) = delete;

    // Styles are kept by the page (not owned); absent ones are made by Layout.
    void SetButtonStyle(const VeButtonStyle* style) { buttonStyle = style; }
    void SetLabelStyle(const VeTextStyle* style) { labelStyle = style; }
    // Where the row's sounds go instead of the audio manager (tools and tests).
    void SetSoundPlayer(std::function<void(const std::string&)> player) { soundPlayer = std::move(player); }
    // Pixels between neighbouring buttons (5 by default).
    void SetSpacing(int32_t pixels) { spacing = pixels; }

    void AddButton(const std::string& label);
    // Removes every button.
    void Clear();
    // Completes missing styles, styles the unstyled buttons and labels, and places the buttons
    // (until an Arrange, a horizontal row centred on the target at the button style's offset).
    void Layout();
    // Places the buttons with their left-right or top-down run centred on centreX, starting at top
    // (Horizontal: every button's top; Vertical: the first button's top).
    void Arrange(Direction how, float centreX, float top);
    // Draws every button (the selected one in its hover look while the row is active).
    void Draw(bool checkBounds);

    void SelectNext();
    void SelectPrevious();
    void SelectFirst();
    void SelectLast();
    void SelectByLabel(const std::string& label);
    // True in the frame in which the button with this label is activated.
    bool Activated(const std::string& label);
    // Where the mouse is now; a position that differs from the last one moves the selection.
    void MouseMoved(float x, float y);

    void SetActive(bool on) { active = on; }
    void SetEnabled(const std::string& label, bool enabled);
    // The button with this label (null when none): its position, size and look for placement.
    VeButton* Button(const std::string& label);
    const VeButton* Button(const std::string& label) const;
    size_t Size() const { return buttons.size(); }
    int32_t Selected() const { return selected; }
    const std::string& SelectedLabel() const;
    // The mouse is over an enabled button.
    bool MouseOverButton() const;
    // Every button's label and box (for checks that every label fits its button).
    const std::vector<std::unique_ptr<VeButton>>& Buttons() const { return buttons; }

    // The process-wide pad latch: A counts only after every pad input was released.
    static void ResetPadLatch();

private:
    void Play(const std::string& sound) const;
    int32_t IndexOf(const std::string& label) const;
    bool PadIdle(const GamePad::State& state) const;
    void PlaceDefault();

    VeSurface* target;
    VeInput* input;
    VeAudioManager* audio;
    PadReader pad;
    std::function<void(const std::string&)> soundPlayer;
    const VeButtonStyle* buttonStyle = nullptr;
    const VeTextStyle* labelStyle = nullptr;
    std::unique_ptr<VeButtonStyle> ownButtonStyle;
    std::unique_ptr<VeTextStyle> ownLabelStyle;
    std::vector<std::unique_ptr<VeButton>> buttons;
    Direction direction = Direction::Horizontal;
    bool arranged = false;
    int32_t spacing = 5;
    bool active = true;
    bool mouseMoved = false;
    float mouseX = -1.0f;
    float mouseY = -1.0f;
    int32_t selected = 0;
    int32_t previousSelected = 0;
};

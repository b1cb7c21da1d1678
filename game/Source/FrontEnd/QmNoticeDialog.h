#pragma once
// The game's modal message panel: a title, a wrapped body and one button (OK) or two (No, Yes),
// drawn over the darkened page in the middle of the screen. The opener gives an action text by
// which it recognises the answer: after the front end ran Update, Answered(label) tells which
// button was activated in this frame, and Action() still names the dialog's action once hidden.
// Left and right (keys or pad) move between the buttons; Escape, the pad's B or A close it.
#include "Form/VeButtonRow.h"
#include "Form/VeButtonStyle.h"
#include "FrontEnd/QmTextBox.h"
#include "Screen/Text/VeText.h"
#include "Screen/Text/VeTextStyle.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class QmControls;
class VeAudioManager;
class VeInput;
class VeSurface;

class QmNoticeDialog {
public:
    static constexpr int kYesLine = 7;
    static constexpr int kTitleLine = 75;
    static constexpr int kOkLine = 76;
    static constexpr int kNoLine = 77;
    static constexpr int kOneButton = 1;
    static constexpr int kTwoButtons = 0;

    // Draws on target, reads input and controls and plays its sounds on audio (each may be null in
    // headless runs); line gives the language's texts.
    QmNoticeDialog(VeSurface* target, VeInput* input, QmControls* controls, VeAudioManager* audio,
                   std::function<std::string(int)> line, VeButtonRow::PadReader pad = nullptr);
    ~QmNoticeDialog();
    QmNoticeDialog(const QmNoticeDialog&) = delete;
    QmNoticeDialog& operator=(const QmNoticeDialog&) = delete;

    // kind 0: two buttons (No, Yes; secondButton selects Yes at once), any other: one (OK). A width
    // of 0 or less is half the screen's width; an empty title is the default one.
    void Show(int kind, bool secondButton, int32_t width, const std::string& action, const std::string& body,
              const std::string& title);
    void Update();
    void Draw();
    void Hide() { visible = false; }

    bool Visible() const { return visible; }
    const std::string& Action() const { return action; }
    // The button with this label was activated in the last Update.
    bool Answered(const std::string& label) const { return !answer.empty() && answer == label; }
    // Answered with the button of this language line.
    bool AnsweredLine(int line) const;
    int32_t Width() const { return width; }
    const VeText& Title() const { return *title; }
    const VeText& Body() const { return *body; }
    const VeButtonRow& Row() const { return *row; }
    // The title and the body from the left margin to the panel's edge, and the button labels in
    // their buttons.
    QmTextBoxes TextBoxes() const;
    // The panel's box on the screen (left, top, width, height).
    void PanelBox(int32_t& left, int32_t& top, int32_t& w, int32_t& h) const;

private:
    VeSurface* target;
    VeInput* input;
    QmControls* controls;
    VeAudioManager* audio;
    std::function<std::string(int)> line;
    VeButtonRow::PadReader pad;
    bool visible = false;
    std::string action;
    std::string bodySource;
    std::string answer;
    VeTextStyle titleStyle;
    VeTextStyle bodyStyle;
    VeTextStyle labelStyle;
    VeButtonStyle buttonStyle{100, 30};
    std::unique_ptr<VeText> title;
    std::unique_ptr<VeText> body;
    std::unique_ptr<VeButtonRow> row;
    float lastMouseX = -1.0f;
    float lastMouseY = -1.0f;
    int32_t width = 0;
};

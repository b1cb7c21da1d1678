#pragma once
// The form the account pages are made of: a title, a column of labelled text inputs and
// checkboxes, a status line under them (a waiting line, or a red line saying what went wrong) and
// a block of buttons. The focus walks the column top to bottom and then the buttons:
// Down or Tab go to the next field, Up or Shift+Tab to the one before, Up from the first button
// row goes back to the last field. Return in a text input goes to the next field, and in the last
// text input activates the first button when it is enabled. Space or Return flips a checkbox. The
// mouse focuses an input (and places the caret), flips a checkbox with a click on it or its label,
// and works the buttons. Escape (or the pad's B) asks the page to go back.
// TakeAnswer reads the service's answer to the page's login or registration once nothing is out
// any more and shows a refusal or failure on the status line.
#include "Form/VeCheckboxStyle.h"
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmTextBox.h"
#include "Screen/Text/VeText.h"
#include "Screen/Text/VeTextStyle.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class QmControls;
class QmNetworkManager;
class VeCheckbox;
class VeFormElement;
class VeInput;
class VeSurface;
class VeTextInput;

class QmAccountForm {
public:
    static constexpr int kBack = -2;
    static constexpr uint32_t kWaitingColour = 0xE8E0A0;
    static constexpr uint32_t kErrorColour = 0xFF5050;

    QmAccountForm();
    ~QmAccountForm();
    QmAccountForm(const QmAccountForm&) = delete;
    QmAccountForm& operator=(const QmAccountForm&) = delete;

    void SetTitle(int line);
    // Fields go below each other in the order they are added; name is the element's form name.
    VeTextInput& AddInput(const std::string& name, int labelLine, int32_t maxCharacters, bool password);
    VeCheckbox& AddCheckbox(const std::string& name, int labelLine);
    // Rows of buttons as language lines, placed under the status line.
    void SetButtons(const std::vector<std::vector<int>>& lines);
    QmButtonGrid& Buttons() { return buttons; }
    // A language line under the fields in the colour (0: no line).
    void SetStatus(int line, uint32_t colour);
    int Status() const { return statusLine; }
    // Texts again in the current language.
    void Relabel();
    // The focus on the first field again.
    void FocusFirst();

    enum class Answer { Waiting, LoggedIn, UpdateRequired, Refused };
    // Waiting while the request is out. Otherwise the answer is taken from the network manager:
    // logged in, or too old a game (the menu's update notice raised), both with the status line
    // cleared; or refused, said in red: the registration's own message if any, else the last
    // notice, else refusedLine after a refused login and "something went wrong" after anything
    // else. No network manager counts as a service out of reach.
    Answer TakeAnswer(QmNetworkManager* network, int refusedLine);

    // One frame of input: the index of the button activated, kBack, or -1.
    int Update(QmControls& controls, VeInput* input);
    void Draw(VeSurface& target);
    QmTextBoxes TextBoxes() const;

private:
    struct Field {
        std::string name;
        int labelLine = 0;
        VeText label;
        std::unique_ptr<VeTextInput> input;
        std::unique_ptr<VeCheckbox> box;
        int y = 0;
    };

    static std::string Line(int number);
    static void Play(const std::string& sound);
    VeFormElement& Element(Field& field);
    bool OverField(const Field& field, const VeInput& input) const;
    void MoveFocus(int step);
    void Toggle(Field& field);
    int UpdateField(QmControls& controls, VeInput* input);
    int LastInput() const;
    int StatusY() const;
    int ButtonsY() const;

    VeTextStyle titleStyle;
    VeTextStyle labelStyle;
    VeTextStyle inputStyle;
    VeTextStyle statusStyle;
    VeCheckboxStyle boxStyle;
    int titleLine = 0;
    VeText title;
    std::vector<Field> fields;
    int nextY = 0;
    std::vector<std::vector<int>> buttonLines;
    QmButtonGrid buttons;
    int statusLine = 0;
    VeText status;
    // The field with the focus; fields.size() means the buttons.
    size_t focus = 0;
};

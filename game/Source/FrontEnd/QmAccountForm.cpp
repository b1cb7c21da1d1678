#include "FrontEnd/QmAccountForm.h"

#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Form/VeCheckbox.h"
#include "Form/VeTextInput.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmPanel.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Network/QmNetworkManager.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/VeCursor.h"

namespace {
constexpr int kPageWidth = 640;
constexpr int kTitleY = 14;
constexpr int kFirstFieldY = 100;
constexpr int kLeft = 80;
constexpr int kInputWidth = 480;
constexpr int kInputHeight = 32;
constexpr int kLabelGap = 22;
constexpr int kInputStep = kLabelGap + kInputHeight + 16;
constexpr int kBoxSize = 24;
constexpr int kBoxStep = 40;
constexpr int kBoxLabelX = kLeft + kBoxSize + 12;
constexpr int kStatusHeight = 52;
constexpr int kButtonWidth = 200;
constexpr int kSomethingWrongLine = 151;
constexpr int kCannotReachLine = 165;
} // namespace

QmAccountForm::QmAccountForm() : buttons([](const std::string& name) { Play(name); }) {
    titleStyle.Size(6).Colour(0xFFFFFF).Weight(4).LetterSpacing(2).LineHeight(0);
    labelStyle.Size(2).Colour(0xFFFFFF).Weight(2).LetterSpacing(1).LineHeight(1);
    inputStyle.Size(2).Colour(0xFFFFFF).Weight(1).LetterSpacing(1).LineHeight(1);
    statusStyle.Size(2).Colour(kErrorColour).Weight(2).LetterSpacing(1).LineHeight(4).MaxWidth(kInputWidth);
    boxStyle.width = boxStyle.height = kBoxSize;
    boxStyle.borderThickness = 2;
    boxStyle.backgroundColour = 0x333333;
    boxStyle.hoverBackgroundColour = 0x333333;
    boxStyle.borderColour = 0x000000;
    boxStyle.hoverBorderColour = 0xFF0000;
    boxStyle.markKind = VeCheckboxStyle::MarkSquare;
    boxStyle.markColour = 0x40E040;
    nextY = kFirstFieldY;
}

QmAccountForm::~QmAccountForm() = default;

std::string QmAccountForm::Line(int number) {
    return number > 0 ? QmMenuPage::C()->GetLine(number) : std::string();
}

void QmAccountForm::Play(const std::string& sound) {
    QmMenuPage::C()->PlaySound(sound, 1.0f);
}

void QmAccountForm::SetTitle(int line) {
    titleLine = line;
    title = VeText(Line(line), &titleStyle);
}

VeTextInput& QmAccountForm::AddInput(const std::string& name, int labelLine, int32_t maxCharacters,
                                     bool password) {
    Field field;
    field.name = name;
    field.labelLine = labelLine;
    field.label = VeText(Line(labelLine), &labelStyle);
    field.y = nextY;
    field.input = std::make_unique<VeTextInput>(QmMenuPage::C()->app->input, static_cast<float>(kLeft),
                                                static_cast<float>(nextY + kLabelGap), kInputWidth,
                                                kInputHeight, inputStyle, maxCharacters);
    field.input->name = name;
    field.input->backgroundColour = 0x222222;
    field.input->paddingY = 8;
    if (password) {
        field.input->SetPassword();
    }
    nextY += kInputStep;
    fields.push_back(std::move(field));
    return *fields.back().input;
}

VeCheckbox& QmAccountForm::AddCheckbox(const std::string& name, int labelLine) {
    Field field;
    field.name = name;
    field.labelLine = labelLine;
    field.label = VeText(Line(labelLine), &labelStyle);
    field.y = nextY;
    field.box = std::make_unique<VeCheckbox>(&boxStyle, static_cast<float>(kLeft), static_cast<float>(nextY));
    field.box->name = name;
    nextY += kBoxStep;
    fields.push_back(std::move(field));
    return *fields.back().box;
}

void QmAccountForm::SetButtons(const std::vector<std::vector<int>>& lines) {
    buttonLines = lines;
    Relabel();
}

void QmAccountForm::SetStatus(int line, uint32_t colour) {
    statusLine = line;
    statusStyle.Colour(colour);
    status = VeText(Line(line), &statusStyle);
}

QmAccountForm::Answer QmAccountForm::TakeAnswer(QmNetworkManager* network, int refusedLine) {
    if (network == nullptr) {
        SetStatus(kCannotReachLine, kErrorColour);
        return Answer::Refused;
    }
    if (network->IsWaiting()) {
        return Answer::Waiting;
    }
    const std::vector<QmNotice> notices = network->TakeNotices();
    const int32_t result = network->TakeLoginResult();
    const int32_t message = network->TakeRegisterMessage();
    if (result == 2 && network->IsLoggedIn()) {
        SetStatus(0, kErrorColour);
        return Answer::LoggedIn;
    }
    if (network->TakeUpdateRequired()) {
        SetStatus(0, kErrorColour);
        VaCoordinator* c = QmMenuPage::C();
        if (c->HasFrontEnd()) {
            c->FrontEnd().MenuPages().SetUpdateRequiredNotice(true);
        }
        return Answer::UpdateRequired;
    }
    int line = result == 1 ? refusedLine : kSomethingWrongLine;
    if (message != 0) {
        line = message;
    } else if (!notices.empty()) {
        line = notices.back().textLine;
    }
    SetStatus(line, kErrorColour);
    return Answer::Refused;
}

void QmAccountForm::Relabel() {
    title = VeText(Line(titleLine), &titleStyle);
    for (Field& field : fields) {
        field.label = VeText(Line(field.labelLine), &labelStyle);
    }
    status = VeText(Line(statusLine), &statusStyle);
    std::vector<std::vector<std::string>> labels;
    std::vector<bool> enabled;
    for (size_t i = 0; i < buttons.Size(); ++i) {
        enabled.push_back(buttons.Enabled(i));
    }
    for (const std::vector<int>& row : buttonLines) {
        labels.emplace_back();
        for (const int line : row) {
            labels.back().push_back(Line(line));
        }
    }
    const int selected = buttons.Selected();
    buttons.Set(labels, ButtonsY(), kPageWidth, kButtonWidth);
    for (size_t i = 0; i < enabled.size() && i < buttons.Size(); ++i) {
        buttons.SetEnabled(i, enabled[i]);
    }
    buttons.Select(static_cast<size_t>(selected));
}

void QmAccountForm::FocusFirst() {
    focus = 0;
}

int QmAccountForm::StatusY() const {
    return nextY + 6;
}

int QmAccountForm::ButtonsY() const {
    return StatusY() + kStatusHeight + 14;
}

int QmAccountForm::LastInput() const {
    int last = -1;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (fields[i].input) {
            last = static_cast<int>(i);
        }
    }
    return last;
}

VeFormElement& QmAccountForm::Element(Field& field) {
    if (field.input) {
        return *field.input;
    }
    return *field.box;
}

bool QmAccountForm::OverField(const Field& field, const VeInput& input) const {
    if (field.input) {
        return field.input->MouseOver(input);
    }
    return input.mouseX >= kLeft && input.mouseX <= kBoxLabelX + field.label.Width() &&
           input.mouseY >= field.y - 4 && input.mouseY <= field.y + kBoxSize + 4;
}

void QmAccountForm::MoveFocus(int step) {
    const int next = static_cast<int>(focus) + step;
    if (next < 0 || next > static_cast<int>(fields.size())) {
        return;
    }
    focus = static_cast<size_t>(next);
    Play("Hover");
}

void QmAccountForm::Toggle(Field& field) {
    field.box->checked = !field.box->checked;
    Play("Select");
}

// The keys of a field with the focus; returns a button to activate or -1.
int QmAccountForm::UpdateField(QmControls& controls, VeInput* input) {
    Field& field = fields[focus];
    const bool tab = input != nullptr && input->pressed[VeKey::Tab] != 0;
    const bool shift =
        input != nullptr && (input->held[VeKey::LeftShift] != 0 || input->held[VeKey::RightShift] != 0);
    const bool space = input != nullptr && input->pressed[VeKey::Space] != 0;
    if (controls.MenuUp() || (tab && shift)) {
        MoveFocus(-1);
    } else if (controls.MenuDown() || tab) {
        MoveFocus(1);
    } else if (field.box && (controls.Confirm() || space)) {
        Toggle(field);
    } else if (field.input && controls.Confirm()) {
        if (static_cast<int>(focus) == LastInput() && buttons.Enabled(0)) {
            Play("Select");
            return 0;
        }
        MoveFocus(1);
    }
    return -1;
}

int QmAccountForm::Update(QmControls& controls, VeInput* input) {
    VeCursor::SetMode(VeCursorKind::Arrow);
    if (controls.Back()) {
        Play("Select");
        return kBack;
    }
    if (input != nullptr) {
        for (size_t i = 0; i < fields.size(); ++i) {
            Field& field = fields[i];
            if (!OverField(field, *input)) {
                continue;
            }
            if (field.box) {
                VeCursor::SetMode(VeCursorKind::Hand);
            }
            if (input->mousePressed[kMouseLeft] != 0) {
                focus = i;
                if (field.box) {
                    Toggle(field);
                }
            }
        }
    }
    // The keys of a frame act where the focus was when it began.
    const bool keysToButtons = focus >= fields.size();
    int activated = keysToButtons ? -1 : UpdateField(controls, input);
    for (size_t i = 0; i < fields.size(); ++i) {
        Element(fields[i]).selected = i == focus;
        if (fields[i].input && input != nullptr) {
            // A text input takes the typed keys only while it has the focus.
            fields[i].input->Update(*input, fields[i].input->MouseOver(*input));
        }
    }
    QmButtonGrid::Exit exit = QmButtonGrid::Exit::None;
    const int pressed = buttons.Update(controls, input, keysToButtons, &exit);
    if (exit == QmButtonGrid::Exit::Up && !fields.empty()) {
        focus = fields.size() - 1;
        Play("Hover");
    }
    if (input != nullptr && input->mouseMoved && buttons.MouseOver(*input)) {
        focus = fields.size();
    }
    if (pressed >= 0) {
        focus = fields.size();
        activated = pressed;
    }
    return activated;
}

void QmAccountForm::Draw(VeSurface& target) {
    QmPanel::DrawTitleBand(target, kTitleY, title.Height());
    target.BlitKeyed(title.surface, (target.width - title.Width()) / 2, kTitleY);
    const int panelTop = kFirstFieldY - 16;
    QmPanel::Draw(target, kLeft - 24, panelTop, kInputWidth + 48, StatusY() + kStatusHeight - panelTop);
    for (Field& field : fields) {
        if (field.input) {
            target.BlitKeyed(field.label.surface, kLeft, field.y);
            field.input->Draw(target, false, false);
            continue;
        }
        field.box->Draw(target, false, false);
        target.BlitKeyed(field.label.surface, kBoxLabelX,
                         field.y + (kBoxSize - field.label.Height()) / 2 + 2);
        if (field.box->selected) {
            target.Rect(kBoxLabelX - 4, field.y + kBoxSize + 4, field.label.Width() + 8, 2, 0xFF0000, true);
        }
    }
    if (status.Width() > 0) {
        target.BlitKeyed(status.surface, (target.width - status.Width()) / 2, StatusY());
    }
    buttons.Draw(target, focus >= fields.size());
}

QmTextBoxes QmAccountForm::TextBoxes() const {
    QmTextBoxes boxes = buttons.Texts();
    boxes.emplace_back(title, kPageWidth - 16, kFirstFieldY - 16 - kTitleY);
    for (const Field& field : fields) {
        if (field.input) {
            boxes.emplace_back(field.label, kInputWidth, kLabelGap);
        } else {
            boxes.emplace_back(field.label, kLeft + kInputWidth - kBoxLabelX, kBoxStep);
        }
    }
    boxes.emplace_back(status, kInputWidth, kStatusHeight);
    return boxes;
}

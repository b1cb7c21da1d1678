#include "FrontEnd/QmOptionsPage.h"

#include "Audio/VeAudioManager.h"
#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Form/VeCheckbox.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmPageLinks.h"
#include "FrontEnd/QmPanel.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Text/VeText.h"
#include "Screen/VeCursor.h"
#include "Screen/VeScreen.h"

#include <array>
#include <memory>
#include <vector>

namespace {
constexpr int kTitleY = 14;
constexpr int kBoxX = 70;
constexpr int kBoxesY = 96;
constexpr int kBoxStep = 44;
constexpr int kLabelX = kBoxX + 36;
constexpr int kNoOpenGLY = kBoxesY + 5 * kBoxStep - 6;
constexpr int kLanguageY = 370;
constexpr int kFlagsY = 404;
constexpr int kFlagStep = 140;
constexpr int kFlagNameY = kFlagsY + 40;
constexpr int kButtonsY = 520;
constexpr int kButtonWidth = 160;
constexpr int kTitleLine = 79;
constexpr int kApplyLine = 80;
constexpr int kBackLine = 22;
constexpr int kNoOpenGLLine = 81;
constexpr int kLanguageLine = 74;
constexpr int kFirstLanguageNameLine = 82;
constexpr size_t kBoxCount = 5;
constexpr size_t kFlagsRow = kBoxCount;
constexpr size_t kButtonsRow = kBoxCount + 1;

struct OptionBox {
    const char* name;
    const char* key;
    int line;
};
constexpr std::array<OptionBox, kBoxCount> kBoxes{
    {{"ipt_fullscreen", QmOptions::kFullscreen, 69},
     {"ipt_music", QmOptions::kMusic, 70},
     {"ipt_3d_graphics", QmOptions::k3DGraphics, 71},
     {"ipt_animated_menu_background", QmOptions::kAnimatedMenuBackground, 72},
     {"ipt_auto_updates", QmOptions::kAutoUpdates, 73}}};
constexpr size_t k3DBox = 2;
} // namespace

class QmOptionsPage::Impl {
public:
    Impl() : buttons([](const std::string& name) { QmMenuPage::C()->PlaySound(name, 1.0f); }) {
        VaCoordinator* c = QmMenuPage::C();
        titleStyle.Size(6).Colour(0xFFFFFF).Weight(4).LetterSpacing(2).LineHeight(0);
        labelStyle.Size(2).Colour(0xFFFFFF).Weight(2).LetterSpacing(1).LineHeight(1).MaxWidth(640 - kLabelX -
                                                                                              20);
        noteStyle.Size(1).Colour(0xFF8060).Weight(2).LetterSpacing(1).LineHeight(4).MaxWidth(640 - kLabelX -
                                                                                             20);
        nameStyle.Size(1).Colour(0xD8D4E8).Weight(2).LetterSpacing(1).LineHeight(1);
        boxStyle.width = boxStyle.height = 24;
        boxStyle.borderThickness = 2;
        boxStyle.backgroundColour = 0x333333;
        boxStyle.hoverBackgroundColour = 0x333333;
        boxStyle.borderColour = 0x000000;
        boxStyle.hoverBorderColour = 0xFF0000;
        boxStyle.markKind = VeCheckboxStyle::MarkSquare;
        boxStyle.markColour = 0x40E040;
        const bool openGL = c->app->screen == nullptr || c->app->screen->glEnabled;
        for (size_t i = 0; i < kBoxCount; ++i) {
            const float y = static_cast<float>(kBoxesY + static_cast<int>(i) * kBoxStep);
            auto box = std::make_unique<VeCheckbox>(&boxStyle, static_cast<float>(kBoxX), y,
                                                    c->OptionOn(kBoxes[i].key));
            box->name = kBoxes[i].name;
            box->StoreValue();
            boxes.push_back(std::move(box));
        }
        if (!openGL) {
            boxes[k3DBox]->checked = false;
            boxes[k3DBox]->enabled = false;
        }
        const std::vector<std::string>& languages = QmLanguage::Languages();
        for (size_t i = 0; i < languages.size() && i < flags.size(); ++i) {
            flags[i] = std::make_unique<VeImage>("Assets/Lang/" + languages[i] + ".png");
            if (languages[i] == c->Option(QmOptions::kLanguage)) {
                chosen = static_cast<int>(i);
            }
        }
        flagFocus = chosen;
        Relabel();
    }

    void Relabel() {
        VaCoordinator* c = QmMenuPage::C();
        title = VeText(c->GetLine(kTitleLine), &titleStyle);
        labels.clear();
        for (const OptionBox& box : kBoxes) {
            labels.push_back(std::make_unique<VeText>(c->GetLine(box.line), &labelStyle));
        }
        noOpenGL = VeText(boxes[k3DBox]->enabled ? std::string() : c->GetLine(kNoOpenGLLine), &noteStyle);
        language = VeText(c->GetLine(kLanguageLine), &labelStyle);
        for (size_t i = 0; i < flagNames.size(); ++i) {
            flagNames[i] = VeText(c->GetLine(kFirstLanguageNameLine + static_cast<int>(i)), &nameStyle);
        }
        buttons.Set({{c->GetLine(kApplyLine), c->GetLine(kBackLine)}}, kButtonsY, 640, kButtonWidth);
    }

    int FlagX(size_t index) const {
        const int first = 320 - (static_cast<int>(flags.size()) - 1) * kFlagStep / 2;
        return first + static_cast<int>(index) * kFlagStep;
    }

    // Which row (a checkbox, the flags or the buttons) the mouse is over; -1 for none.
    int RowUnderMouse(const VeInput& input, int& flag) const {
        for (size_t i = 0; i < boxes.size(); ++i) {
            const int y = kBoxesY + static_cast<int>(i) * kBoxStep;
            const int right = kLabelX + labels[i]->Width();
            if (input.mouseX >= kBoxX && input.mouseX <= right && input.mouseY >= y - 4 &&
                input.mouseY <= y + 28) {
                return static_cast<int>(i);
            }
        }
        for (size_t i = 0; i < flags.size(); ++i) {
            const int x = FlagX(i);
            if (flags[i] && input.mouseX >= x - 30 && input.mouseX <= x + 30 && input.mouseY >= kFlagsY - 4 &&
                input.mouseY <= kFlagNameY + 14) {
                flag = static_cast<int>(i);
                return static_cast<int>(kFlagsRow);
            }
        }
        return -1;
    }

    void Hover() { QmMenuPage::C()->PlaySound("Hover", 1.0f); }

    void Toggle(size_t index) {
        VeCheckbox& box = *boxes[index];
        if (!box.enabled) {
            QmMenuPage::C()->PlaySound("Disabled", 1.0f);
            return;
        }
        box.checked = !box.checked;
        QmMenuPage::C()->PlaySound("Select", 1.0f);
    }

    void Choose(int flag) {
        chosen = flag;
        flagFocus = flag;
        QmMenuPage::C()->PlaySound("Select", 1.0f);
    }

    void MoveRow(int step) {
        int next = static_cast<int>(row);
        do {
            next += step;
        } while (next >= 0 && next < static_cast<int>(kBoxCount) &&
                 !boxes[static_cast<size_t>(next)]->enabled);
        if (next < 0 || next > static_cast<int>(kButtonsRow)) {
            return;
        }
        row = static_cast<size_t>(next);
        Hover();
    }

    // Writes the page's choices into the options, saves them and puts them into effect.
    void Apply() {
        VaCoordinator* c = QmMenuPage::C();
        VeAudioManager* audio = c->app->audio;
        const bool musicWasOn = c->OptionOn(QmOptions::kMusic);
        const bool wasFullscreen = c->OptionOn(QmOptions::kFullscreen);
        for (size_t i = 0; i < boxes.size(); ++i) {
            boxes[i]->StoreValue();
            if (boxes[i]->enabled) {
                c->SetOption(kBoxes[i].key, boxes[i]->value);
            }
        }
        const std::string before = c->Option(QmOptions::kLanguage);
        const std::string after = QmLanguage::Languages()[static_cast<size_t>(chosen)];
        c->SetOption(QmOptions::kLanguage, after);
        c->Options().SaveOptions();
        if (audio != nullptr && musicWasOn != c->OptionOn(QmOptions::kMusic)) {
            if (musicWasOn) {
                audio->Stop(c->musicChannel);
            } else {
                c->musicChannel = audio->Play("Music", true);
            }
        }
        VeScreen* screen = c->app->screen;
        if (screen != nullptr && wasFullscreen != c->OptionOn(QmOptions::kFullscreen)) {
            screen->SetFullscreen(c->OptionOn(QmOptions::kFullscreen), c->app->input);
        }
        if (before != after) {
            c->Language().SetLanguage(c->Options());
            QmPageLinks::RelabelAll();
        }
    }

    void HandleKeys(QmControls& controls, VeInput* input) {
        const bool space = input != nullptr && input->pressed[VeKey::Space] != 0;
        if (row == kButtonsRow) {
            return; // the grid reads its own keys
        }
        if (controls.MenuUp()) {
            MoveRow(-1);
        } else if (controls.MenuDown()) {
            MoveRow(1);
        } else if (row == kFlagsRow && controls.MenuLeft() && flagFocus > 0) {
            --flagFocus;
            Hover();
        } else if (row == kFlagsRow && controls.MenuRight() &&
                   flagFocus + 1 < static_cast<int>(flags.size())) {
            ++flagFocus;
            Hover();
        } else if (controls.Confirm() || space) {
            if (row == kFlagsRow) {
                Choose(flagFocus);
            } else {
                Toggle(row);
            }
        }
    }

    void HandleMouse(VeInput& input) {
        int flag = -1;
        const int over = RowUnderMouse(input, flag);
        if (over < 0) {
            return;
        }
        const bool usable = over == static_cast<int>(kFlagsRow) || boxes[static_cast<size_t>(over)]->enabled;
        if (usable) {
            VeCursor::SetMode(VeCursorKind::Hand);
        }
        if (input.mouseMoved && usable &&
            (row != static_cast<size_t>(over) ||
             (over == static_cast<int>(kFlagsRow) && flag != flagFocus))) {
            row = static_cast<size_t>(over);
            if (flag >= 0) {
                flagFocus = flag;
            }
            Hover();
        }
        if (input.mousePressed[kMouseLeft] != 0) {
            if (over == static_cast<int>(kFlagsRow)) {
                row = kFlagsRow;
                Choose(flag);
            } else {
                row = static_cast<size_t>(over);
                Toggle(row);
            }
        }
    }

    void Frame() {
        VaCoordinator* c = QmMenuPage::C();
        VeInput* input = c->app->input;
        QmControls& controls = c->Controls();
        VeCursor::SetMode(VeCursorKind::Arrow);
        if (controls.Back()) {
            c->PlaySound("Select", 1.0f);
            QmPageLinks::BackToMainMenu();
            return;
        }
        if (input != nullptr) {
            HandleMouse(*input);
        }
        // The keys of a frame act where the focus was when it began.
        const bool keysToButtons = row == kButtonsRow;
        HandleKeys(controls, input);
        QmButtonGrid::Exit exit = QmButtonGrid::Exit::None;
        const int activated = buttons.Update(controls, input, keysToButtons, &exit);
        if (exit == QmButtonGrid::Exit::Up) {
            MoveRow(-1);
        }
        if (input != nullptr && input->mouseMoved && buttons.MouseOver(*input)) {
            row = kButtonsRow;
        }
        if (activated == 0) {
            Apply();
            QmPageLinks::BackToMainMenu();
            return;
        }
        if (activated == 1) {
            QmPageLinks::BackToMainMenu();
            return;
        }
        Draw();
    }

    void Draw() {
        VeScreen* screen = QmMenuPage::C()->app->screen;
        if (screen == nullptr) {
            return;
        }
        VeSurface& overlay = screen->overlay;
        QmPanel::DrawTitleBand(overlay, kTitleY, title.Height());
        overlay.BlitKeyed(title.surface, (overlay.width - title.Width()) / 2, kTitleY);
        QmPanel::Draw(overlay, kBoxX - 20, kBoxesY - 16, 640 - 2 * (kBoxX - 20), kFlagNameY + 36 - kBoxesY);
        for (size_t i = 0; i < boxes.size(); ++i) {
            VeCheckbox& box = *boxes[i];
            box.selected = row == i;
            box.Draw(overlay, false, false);
            const int y = kBoxesY + static_cast<int>(i) * kBoxStep;
            overlay.BlitKeyed(labels[i]->surface, kLabelX, y + (24 - labels[i]->Height()) / 2 + 2);
            if (row == i) {
                overlay.Rect(kLabelX - 4, y + 24 + 4, labels[i]->Width() + 8, 2, 0xFF0000, true);
            }
        }
        if (noOpenGL.Width() > 0) {
            overlay.BlitKeyed(noOpenGL.surface, kLabelX, kNoOpenGLY);
        }
        overlay.BlitKeyed(language.surface, (overlay.width - language.Width()) / 2, kLanguageY);
        for (size_t i = 0; i < flags.size(); ++i) {
            if (!flags[i]) {
                continue;
            }
            const int x = FlagX(i) - flags[i]->width / 2;
            if (static_cast<int>(i) == chosen) {
                overlay.Rect(x - 4, kFlagsY - 4, flags[i]->width + 8, flags[i]->height + 8, 0xFFFFFF, true);
            }
            if (row == kFlagsRow && static_cast<int>(i) == flagFocus) {
                overlay.Rect(x - 6, kFlagsY - 6, flags[i]->width + 12, flags[i]->height + 12, 0xFF0000,
                             false);
                overlay.Rect(x - 7, kFlagsY - 7, flags[i]->width + 14, flags[i]->height + 14, 0xFF0000,
                             false);
            }
            overlay.Blit(*flags[i], x, kFlagsY);
            overlay.BlitKeyed(flagNames[i].surface, FlagX(i) - flagNames[i].Width() / 2, kFlagNameY);
        }
        buttons.Draw(overlay, row == kButtonsRow);
    }

    QmTextBoxes TextBoxes() const {
        QmTextBoxes boxes = buttons.Texts();
        boxes.emplace_back(title, 640 - 16, kBoxesY - 16 - kTitleY);
        for (size_t i = 0; i < labels.size(); ++i) {
            boxes.emplace_back(*labels[i], 640 - kLabelX - 20, kBoxStep);
        }
        boxes.emplace_back(noOpenGL, 640 - kLabelX - 20, kLanguageY - kNoOpenGLY);
        boxes.emplace_back(language, 640 - 16, kFlagsY - kLanguageY);
        for (const VeText& name : flagNames) {
            boxes.emplace_back(name, kFlagStep - 8, kButtonsY - kFlagNameY);
        }
        return boxes;
    }

    QmButtonGrid buttons;
    VeTextStyle titleStyle;
    VeTextStyle labelStyle;
    VeTextStyle noteStyle;
    VeTextStyle nameStyle;
    VeCheckboxStyle boxStyle;
    std::vector<std::unique_ptr<VeCheckbox>> boxes;
    std::vector<std::unique_ptr<VeText>> labels;
    std::array<std::unique_ptr<VeImage>, 4> flags;
    std::array<VeText, 4> flagNames;
    VeText title;
    VeText noOpenGL;
    VeText language;
    size_t row = 0;
    int chosen = 1;
    int flagFocus = 1;
};

QmOptionsPage::QmOptionsPage() : impl(std::make_unique<Impl>()) {}
QmOptionsPage::~QmOptionsPage() = default;
void QmOptionsPage::Frame() {
    impl->Frame();
}
void QmOptionsPage::Relabel() {
    impl->Relabel();
}
QmTextBoxes QmOptionsPage::TextBoxes() const {
    return impl->TextBoxes();
}

#include "FrontEnd/QmRulesPage.h"

#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmPageLinks.h"
#include "FrontEnd/QmPanel.h"
#include "Screen/Text/VeText.h"
#include "Screen/VeCursor.h"
#include "Screen/VeScreen.h"

#include <array>

namespace {
constexpr int kTitleY = 14;
constexpr int kTextTop = 100;
constexpr int kTextLeft = 70;
constexpr int kTextWidth = 640 - 2 * kTextLeft - 24;
constexpr int kParagraphGap = 18;
constexpr int kTextX = kTextLeft + 24;
// The panel behind the text, and the room in it that a line may take.
constexpr int kPanelLeft = kTextLeft - 20;
constexpr int kPanelWidth = kTextWidth + 64;
constexpr int kLineRoom = kPanelLeft + kPanelWidth - 6 - kTextX;
constexpr int kButtonsY = 560;
constexpr int kButtonWidth = 200;
constexpr int kTitleLine = 186;
constexpr int kBackLine = 22;
// The rules, then what the e-mail address is for.
constexpr std::array<int, 5> kParagraphLines = {187, 188, 189, 190, 191};
} // namespace

class QmRulesPage::Impl {
public:
    Impl() : back([](const std::string& name) { QmMenuPage::C()->PlaySound(name, 1.0f); }) {
        titleStyle.Size(6).Colour(0xFFFFFF).Weight(4).LetterSpacing(2).LineHeight(0);
        textStyle.Size(2).Colour(0xFFFFFF).Weight(2).LetterSpacing(1).LineHeight(6).MaxWidth(kTextWidth);
        noteStyle = textStyle;
        noteStyle.Colour(0xD8D4E8);
        Relabel();
    }

    void Relabel() {
        VaCoordinator* c = QmMenuPage::C();
        // The title on one line: smaller letters where the language needs more of them.
        for (int size = 6; size >= 3; --size) {
            titleStyle.Size(size);
            title = VeText(c->GetLine(kTitleLine), &titleStyle);
            if (title.Width() <= 640 - 16) {
                break;
            }
        }
        for (size_t i = 0; i < kParagraphLines.size(); ++i) {
            const bool note = i + 1 == kParagraphLines.size();
            paragraphs[i] = VeText(c->GetLine(kParagraphLines[i]), note ? &noteStyle : &textStyle);
        }
        back.Set({{c->GetLine(kBackLine)}}, kButtonsY, 640, kButtonWidth);
    }

    void Frame() {
        VaCoordinator* c = QmMenuPage::C();
        QmControls& controls = c->Controls();
        VeCursor::SetMode(VeCursorKind::Arrow);
        if (controls.Back()) {
            c->PlaySound("Select", 1.0f);
            QmPageLinks::SetPage(QmMenuPages::kLogin);
            return;
        }
        if (back.Update(controls, c->app->input, true) == 0) {
            QmPageLinks::SetPage(QmMenuPages::kLogin);
            return;
        }
        VeScreen* screen = c->app->screen;
        if (screen == nullptr) {
            return;
        }
        VeSurface& overlay = screen->overlay;
        QmPanel::DrawTitleBand(overlay, kTitleY, title.Height());
        overlay.BlitKeyed(title.surface, (overlay.width - title.Width()) / 2, kTitleY);
        int y = kTextTop;
        QmPanel::Draw(overlay, kPanelLeft, y - 16, kPanelWidth, TextBottom() - y + 32);
        for (size_t i = 0; i < paragraphs.size(); ++i) {
            const bool note = i + 1 == paragraphs.size();
            if (!note) {
                overlay.Rect(kTextLeft, y + 3, 8, 8, 0xFF0000, true); // the rule's mark
            }
            overlay.BlitKeyed(paragraphs[i].surface, kTextX, y);
            y += paragraphs[i].Height() + kParagraphGap;
        }
        back.Draw(overlay, true);
    }

    int TextBottom() const {
        int y = kTextTop;
        for (const VeText& paragraph : paragraphs) {
            y += paragraph.Height() + kParagraphGap;
        }
        return y - kParagraphGap;
    }

    QmTextBoxes TextBoxes() const {
        QmTextBoxes boxes = back.Texts();
        boxes.emplace_back(title, 640 - 16, kTextTop - 16 - kTitleY);
        for (const VeText& paragraph : paragraphs) {
            boxes.emplace_back(paragraph, kLineRoom, paragraph.Height());
        }
        // All of it above the button.
        boxes.emplace_back(paragraphs.back(), kLineRoom,
                           paragraphs.back().Height() - (TextBottom() + 16 - kButtonsY));
        return boxes;
    }

    QmButtonGrid back;
    VeTextStyle titleStyle;
    VeTextStyle textStyle;
    VeTextStyle noteStyle;
    VeText title;
    std::array<VeText, kParagraphLines.size()> paragraphs;
};

QmRulesPage::QmRulesPage() : impl(std::make_unique<Impl>()) {}
QmRulesPage::~QmRulesPage() = default;
void QmRulesPage::Frame() {
    impl->Frame();
}
void QmRulesPage::Relabel() {
    impl->Relabel();
}
QmTextBoxes QmRulesPage::TextBoxes() const {
    return impl->TextBoxes();
}

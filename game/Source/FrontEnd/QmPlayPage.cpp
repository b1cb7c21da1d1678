#include "FrontEnd/QmPlayPage.h"

#include "App/VeApp.h"
#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Editor/QmEditor.h"
#include "Environment/ArEnvironmentManager.h"
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmPageLinks.h"
#include "FrontEnd/QmPanel.h"
#include "FrontEnd/QmTourMapList.h"
#include "Input/VeInput.h"
#include "Platform/VeTime.h"
#include "Screen/VeCursor.h"
#include "Screen/VeScreen.h"

namespace {
constexpr int kTitleY = 14;
constexpr int kMargin = 8;
constexpr int kStatusY = 470;
constexpr int kButtonsY = 540;
constexpr int kVisibleRows = 10;
constexpr int64_t kStatusShownMs = 4000;
constexpr int kLockedMapLine = 35;
constexpr int kBackLine = 22;
constexpr int kPlayLine = 27;
constexpr int kEditLine = 31;
constexpr int kHighscoresLine = 32;
constexpr int kManageLine = 33;
constexpr int kRandomRunLine = 167;
constexpr int kCopyButtonLine = 99;
constexpr int kCopyTitleLine = 106;
enum Button { PlayButton, RandomRunButton, EditButton, HighscoresButton, ManageButton, BackButton };
} // namespace

class QmPlayPage::Impl {
public:
    Impl()
        : list([](int n) { return QmMenuPage::C()->GetLine(n); }, true, kVisibleRows),
          buttons([](const std::string& name) { QmMenuPage::C()->PlaySound(name, 1.0f); }) {
        titleStyle.Size(6).Colour(0xFFFFFF).Weight(4).LetterSpacing(2).LineHeight(0);
        statusStyle.Size(2).Colour(0xFF8060).Weight(2).LetterSpacing(1).LineHeight(4).MaxWidth(600);
        buttons.Set(Labels(), kButtonsY, 640, 196);
        RefreshTitle();
    }

    std::vector<std::vector<std::string>> Labels() const {
        VaCoordinator* c = QmMenuPage::C();
        return {{c->GetLine(copying ? kCopyButtonLine : kPlayLine), c->GetLine(kRandomRunLine),
                 c->GetLine(kEditLine)},
                {c->GetLine(kHighscoresLine), c->GetLine(kManageLine), c->GetLine(kBackLine)}};
    }

    void RefreshTitle() {
        VaCoordinator* c = QmMenuPage::C();
        int number = kPlayLine;
        switch (copying ? -1 : c->playMode) {
        case -1:
            number = kCopyTitleLine;
            break;
        case VaCoordinator::PlayParty:
            number = c->partyType == VaCoordinator::PartyMarathon ? 29 : 28;
            break;
        case 2:
            number = 30;
            break;
        case VaCoordinator::PlayRandomRun:
            number = kRandomRunLine;
            break;
        default:
            break;
        }
        // A long title (the copy mode's question) steps down in size until it fits the page.
        for (const int size : {6, 4, 3}) {
            titleStyle.Size(size);
            title = VeText(c->GetLine(number), &titleStyle);
            if (title.Width() <= 640 - 2 * kMargin) {
                break;
            }
        }
    }

    void Relabel() {
        RefreshTitle();
        buttons.Relabel(Labels());
        list.Relabel();
        status = VeText();
    }

    void RebuildLists() {
        VaCoordinator* c = QmMenuPage::C();
        if (c->environment) {
            list.Read(*c->environment);
        }
        UpdateButtons();
    }

    void ResetMouseAndSelection() {
        lastMouseX = lastMouseY = -1;
        focusOnButtons = false;
        list.SetFocus(QmTourMapList::Tours);
        buttons.Select(PlayButton);
        status = VeText();
    }

    void UpdateButtons() {
        VaCoordinator* c = QmMenuPage::C();
        const bool haveMap = !list.MapRows().empty();
        buttons.SetEnabled(PlayButton, haveMap && !list.MapLocked());
        const int t = list.SelectedTour();
        const bool editable = c->environment && t >= 0 &&
                              t < static_cast<int>(c->environment->tours.size()) &&
                              c->environment->tours[static_cast<size_t>(t)].editable && !list.TourLocked();
        buttons.SetEnabled(EditButton, editable && !copying);
        buttons.SetEnabled(HighscoresButton, haveMap && !list.MapLocked() && !copying);
        buttons.SetEnabled(RandomRunButton, !copying);
        buttons.SetEnabled(ManageButton, !copying);
    }

    void BeginCopyChoice(int tour, int map) {
        copying = true;
        ResetMouseAndSelection();
        RefreshTitle();
        buttons.Relabel(Labels());
        SelectTour(tour);
        list.SelectMap(map);
        list.SetFocus(QmTourMapList::Maps);
        UpdateButtons();
        lastFrame = QmMenuPage::C()->app->framesRun;
    }

    // Back to the editor with the chosen map's blocks, or with none (given up).
    void EndCopy(bool chosen) {
        VaCoordinator* c = QmMenuPage::C();
        copying = false;
        RefreshTitle();
        buttons.Relabel(Labels());
        UpdateButtons();
        QmEditor* editor = c->Editor();
        if (editor == nullptr || !c->environment) {
            return;
        }
        if (chosen) {
            c->environment->tourIndex = list.SelectedTour();
            c->environment->Reload(list.SelectedMap(), false);
            const QmEditorModel::Grid grid = c->environment->blocks;
            editor->CopyChosen(grid);
        } else {
            editor->CopyAbandoned();
        }
        c->app->SwitchScene(SceneEditor);
    }

    void ShowStatus(int line) {
        status = VeText(QmMenuPage::C()->GetLine(line), &statusStyle);
        statusUntil = GetTimeMs() + kStatusShownMs;
    }

    // Loads the chosen map and begins its race; a locked map or tour is refused with "Disabled".
    void StartSelected() {
        VaCoordinator* c = QmMenuPage::C();
        if (list.MapRows().empty()) {
            c->PlaySound("Disabled", 1.0f);
            return;
        }
        if (list.MapLocked()) {
            c->PlaySound("Disabled", 1.0f);
            ShowStatus(kLockedMapLine);
            return;
        }
        c->PlaySound("Select", 1.0f);
        if (copying) {
            EndCopy(true);
            return;
        }
        if (c->playMode != VaCoordinator::PlayParty) {
            c->playMode = VaCoordinator::PlayTour;
        }
        if (c->environment) {
            c->environment->tourIndex = list.SelectedTour();
            c->environment->Reload(list.SelectedMap(), false);
        }
        QmPageLinks::StartPlay(false);
    }

    void SelectTour(int index) {
        list.SelectTour(index);
        VaCoordinator* c = QmMenuPage::C();
        if (c->environment) {
            list.Read(*c->environment);
        }
        UpdateButtons();
    }

    void HandleMouse(VeInput& input) {
        QmTourMapList::Column column = QmTourMapList::Tours;
        int index = 0;
        if (!list.RowAt(input.mouseX, input.mouseY, column, index)) {
            return;
        }
        VeCursor::SetMode(VeCursorKind::Hand);
        const bool moved = input.mouseX != lastMouseX || input.mouseY != lastMouseY;
        const bool clicked = input.mousePressed[kMouseLeft] != 0;
        if (!moved && !clicked) {
            return;
        }
        const int before = column == QmTourMapList::Tours ? list.SelectedTour() : list.SelectedMap();
        const bool sameColumn = list.Focus() == column;
        list.SetFocus(column);
        focusOnButtons = false;
        if (before != index || !sameColumn) {
            if (column == QmTourMapList::Tours) {
                SelectTour(index);
            } else {
                list.SelectMap(index);
                UpdateButtons();
            }
            if (!clicked) {
                QmMenuPage::C()->PlaySound("Hover", 1.0f);
            }
        }
        if (clicked) {
            if (column == QmTourMapList::Maps && before == index && sameColumn) {
                StartSelected();
            } else {
                QmMenuPage::C()->PlaySound(
                    column == QmTourMapList::Tours && list.TourLocked() ? "Disabled" : "Select", 1.0f);
            }
        }
    }

    void HandleListKeys(QmControls& controls) {
        VaCoordinator* c = QmMenuPage::C();
        if (controls.MenuUp()) {
            if (list.Move(-1)) {
                c->PlaySound("Hover", 1.0f);
                if (list.Focus() == QmTourMapList::Tours) {
                    SelectTour(list.SelectedTour());
                }
                UpdateButtons();
            }
        } else if (controls.MenuDown()) {
            if (list.Move(1)) {
                c->PlaySound("Hover", 1.0f);
                if (list.Focus() == QmTourMapList::Tours) {
                    SelectTour(list.SelectedTour());
                }
                UpdateButtons();
            } else {
                focusOnButtons = true;
                c->PlaySound("Hover", 1.0f);
            }
        } else if (controls.MenuLeft()) {
            if (list.Focus() == QmTourMapList::Maps) {
                list.SetFocus(QmTourMapList::Tours);
                c->PlaySound("Hover", 1.0f);
            }
        } else if (controls.MenuRight()) {
            if (list.Focus() == QmTourMapList::Tours && !list.MapRows().empty()) {
                list.SetFocus(QmTourMapList::Maps);
                c->PlaySound("Hover", 1.0f);
            }
        } else if (controls.Confirm()) {
            if (list.Focus() == QmTourMapList::Maps) {
                StartSelected();
            } else if (list.TourLocked() || list.MapRows().empty()) {
                c->PlaySound("Disabled", 1.0f);
            } else {
                list.SetFocus(QmTourMapList::Maps);
                c->PlaySound("Select", 1.0f);
            }
        }
    }

    void Activate(int button) {
        switch (button) {
        case PlayButton:
            StartSelected();
            break;
        case RandomRunButton:
            QmPageLinks::StartRandomRun();
            break;
        case EditButton:
            QmPageLinks::OpenEditor(list.SelectedTour(), list.SelectedMap());
            break;
        case HighscoresButton:
            QmPageLinks::OpenHighscores(list.SelectedTour(), list.SelectedMap());
            break;
        case ManageButton:
            QmPageLinks::SetPage(3);
            break;
        case BackButton:
            if (copying) {
                EndCopy(false);
            } else {
                QmPageLinks::BackToMainMenu();
            }
            break;
        default:
            break;
        }
    }

    void Frame() {
        VaCoordinator* c = QmMenuPage::C();
        // Coming back to the page (from a race, the highscores or the management page): the
        // lists may have changed meanwhile.
        if (lastFrame < 0 || c->app->framesRun > lastFrame + 1) {
            RebuildLists();
        }
        lastFrame = c->app->framesRun;
        VeInput* input = c->app->input;
        QmControls& controls = c->Controls();
        VeCursor::SetMode(VeCursorKind::Arrow);
        if (controls.Back()) {
            c->PlaySound("Select", 1.0f);
            if (copying) {
                EndCopy(false);
            } else {
                QmPageLinks::BackToMainMenu();
            }
            return;
        }
        if (input != nullptr) {
            HandleMouse(*input);
        }
        // The keys of a frame act where the focus was when it began.
        const bool keysToButtons = focusOnButtons;
        if (!keysToButtons) {
            HandleListKeys(controls);
        }
        if (c->app->scene != SceneMenu) {
            return; // a race began
        }
        QmButtonGrid::Exit exit = QmButtonGrid::Exit::None;
        const int activated = buttons.Update(controls, input, keysToButtons, &exit);
        if (exit == QmButtonGrid::Exit::Up) {
            focusOnButtons = false;
            c->PlaySound("Hover", 1.0f);
        }
        if (input != nullptr) {
            if (buttons.MouseOver(*input) && input->mouseMoved) {
                focusOnButtons = true;
            }
            lastMouseX = input->mouseX;
            lastMouseY = input->mouseY;
        }
        if (activated >= 0) {
            focusOnButtons = true;
            Activate(activated);
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
        list.Draw(overlay, !focusOnButtons);
        if (status.Width() > 0 && GetTimeMs() < statusUntil) {
            overlay.BlitKeyed(status.surface, (overlay.width - status.Width()) / 2, kStatusY);
        }
        buttons.Draw(overlay, focusOnButtons);
    }

    QmTextBoxes TextBoxes() const {
        QmTextBoxes boxes = list.Texts();
        const QmTextBoxes labels = buttons.Texts();
        boxes.insert(boxes.end(), labels.begin(), labels.end());
        boxes.emplace_back(title, 640 - 2 * kMargin, QmTourMapList::kHeadingY - kTitleY);
        boxes.emplace_back(status, 640 - 2 * kMargin, kButtonsY - kStatusY);
        return boxes;
    }

    QmTourMapList list;
    QmButtonGrid buttons;
    VeTextStyle titleStyle;
    VeTextStyle statusStyle;
    VeText title;
    VeText status;
    int64_t statusUntil = 0;
    int64_t lastFrame = -1;
    bool focusOnButtons = false;
    int lastMouseX = -1;
    int lastMouseY = -1;
    bool copying = false;
};

QmPlayPage::QmPlayPage() : impl(std::make_unique<Impl>()) {}
QmPlayPage::~QmPlayPage() = default;
void QmPlayPage::Frame() {
    impl->Frame();
}
void QmPlayPage::Relabel() {
    impl->Relabel();
}
void QmPlayPage::RefreshTitle() {
    impl->RefreshTitle();
}
void QmPlayPage::ResetMouseAndSelection() {
    impl->ResetMouseAndSelection();
}
void QmPlayPage::RebuildLists() {
    impl->RebuildLists();
}
bool QmPlayPage::StartPlay(bool retry) {
    return C()->StartPlay(retry);
}
QmTextBoxes QmPlayPage::TextBoxes() const {
    return impl->TextBoxes();
}
int QmPlayPage::SelectedTour() const {
    return impl->list.SelectedTour();
}
int QmPlayPage::SelectedMap() const {
    return impl->list.SelectedMap();
}
void QmPlayPage::BeginCopyChoice(int tour, int map) {
    impl->BeginCopyChoice(tour, map);
}
bool QmPlayPage::CopyChoosing() const {
    return impl->copying;
}

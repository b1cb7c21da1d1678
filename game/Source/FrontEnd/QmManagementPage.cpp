#include "FrontEnd/QmManagementPage.h"

#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Environment/ArEnvironmentManager.h"
#include "Form/VeTextInput.h"
#include "FrontEnd/QmButtonGrid.h"
#include "FrontEnd/QmPageLinks.h"
#include "FrontEnd/QmPanel.h"
#include "FrontEnd/QmTourMapList.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Screen/VeCursor.h"
#include "Screen/VeScreen.h"

#include <memory>

namespace {
constexpr int kTitleY = 14;
constexpr int kVisibleRows = 8;
constexpr int kButtonsY = 404;
constexpr int kInputY = 566;
constexpr int kInputX = 220;
constexpr int kInputWidth = 300;
constexpr int kTitleLine = 134;
constexpr int kBackLine = 22;
constexpr int kLockedLine = 26;
constexpr int kEditableLine = 91;
constexpr int kTourNameLine = 135;
constexpr int kInformationLine = 120;
constexpr int kOfficialUnchangedLine = 136;
constexpr int kDeleteTourLine = 131;
constexpr int kSwitchesLine = 132;
constexpr int kDeleteMapLine = 133;
constexpr int kYesLine = 7;
constexpr int kNoLine = 77;
constexpr int kQuestionWidth = 480;
constexpr const char* kDeleteTourAction = "DELETE_TOUR_WITH_LEVELS_AND_SCORES";
constexpr const char* kSwitchesAction = "SAVE_LOCKED_OR_EDITABLE";
constexpr const char* kDeleteMapAction = "DELETE_MAP_WITH_SCORES";
enum Button {
    AddTour,
    RenameTour,
    DeleteTour,
    AddMap,
    DeleteMap,
    MoveUp,
    MoveDown,
    MoveTop,
    MoveBottom,
    LockedSwitch,
    EditableSwitch,
    Back
};
} // namespace

class QmManagementPage::Impl {
public:
    Impl()
        : list([](int n) { return QmMenuPage::C()->GetLine(n); }, false, kVisibleRows),
          buttons([](const std::string& name) { QmMenuPage::C()->PlaySound(name, 1.0f); }) {
        titleStyle.Size(6).Colour(0xFFFFFF).Weight(4).LetterSpacing(2).LineHeight(0);
        labelStyle.Size(2).Colour(0xFFFFFF).Weight(2).LetterSpacing(1).LineHeight(1);
        inputStyle.Size(2).Colour(0xFFFFFF).Weight(1).LetterSpacing(1).LineHeight(1);
        buttons.SetLetterSpacing(0);
        Relabel();
    }

    static std::vector<std::vector<std::string>> Labels() {
        VaCoordinator* c = QmMenuPage::C();
        return {{c->GetLine(118), c->GetLine(119), c->GetLine(121)},
                {c->GetLine(124), c->GetLine(125)},
                {c->GetLine(122), c->GetLine(123), c->GetLine(126), c->GetLine(127)},
                {c->GetLine(kLockedLine), c->GetLine(kEditableLine), c->GetLine(kBackLine)}};
    }

    void Relabel() {
        VaCoordinator* c = QmMenuPage::C();
        title = VeText(c->GetLine(kTitleLine), &titleStyle);
        nameLabel = VeText(c->GetLine(kTourNameLine), &labelStyle);
        const int selected = buttons.Selected();
        buttons.Set(Labels(), kButtonsY, 640);
        buttons.Select(static_cast<size_t>(selected));
        list.Relabel();
        UpdateButtons();
    }

    ArEnvironmentManager* World() { return QmMenuPage::C()->environment.get(); }

    void RebuildLists() {
        if (World() != nullptr) {
            list.Read(*World());
        }
        UpdateButtons();
    }

    const TourRecord* Tour() {
        ArEnvironmentManager* world = World();
        const int t = list.SelectedTour();
        if (world == nullptr || t < 0 || t >= static_cast<int>(world->tours.size())) {
            return nullptr;
        }
        return &world->tours[static_cast<size_t>(t)];
    }

    void UpdateButtons() {
        const TourRecord* tour = Tour();
        const bool official = tour != nullptr && tour->official;
        const bool haveMap = !list.MapRows().empty();
        const bool maps = list.Focus() == QmTourMapList::Maps;
        buttons.SetEnabled(RenameTour, tour != nullptr);
        buttons.SetEnabled(DeleteTour, tour != nullptr);
        buttons.SetEnabled(AddMap, tour != nullptr);
        buttons.SetEnabled(DeleteMap, haveMap);
        buttons.SetEnabled(MoveTop, maps && haveMap);
        buttons.SetEnabled(MoveBottom, maps && haveMap);
        buttons.SetEnabled(MoveUp, tour != nullptr && (!maps || haveMap));
        buttons.SetEnabled(MoveDown, tour != nullptr && (!maps || haveMap));
        buttons.SetEnabled(LockedSwitch, tour != nullptr && !official);
        buttons.SetEnabled(EditableSwitch, tour != nullptr && !official);
        buttons.SetSwitch(LockedSwitch, tour != nullptr && tour->locked);
        buttons.SetSwitch(EditableSwitch, tour != nullptr && tour->editable);
    }

    void Refused(int line) {
        VaCoordinator* c = QmMenuPage::C();
        c->PlaySound("Disabled", 1.0f);
        QmPageLinks::Notice(c->GetLine(kInformationLine), c->GetLine(line));
    }

    // The world's current tour and map follow the page's selection before every operation.
    void Point() {
        ArEnvironmentManager* world = World();
        world->tourIndex = list.SelectedTour();
        world->levelIndex = list.SelectedMap();
    }

    // Reads the lists again with the given tour and map selected (the tour list may have grown).
    void Reread(int tour, int map) {
        if (World() != nullptr) {
            list.SetRows(QmTourMapList::ReadTours(*World()), {});
        }
        list.SelectTour(tour);
        RebuildLists();
        list.SelectMap(map);
        UpdateButtons();
    }

    void Activate(int button) {
        ArEnvironmentManager* world = World();
        const TourRecord* tour = Tour();
        if (world == nullptr) {
            return;
        }
        const int t = list.SelectedTour();
        const int m = list.SelectedMap();
        const bool maps = list.Focus() == QmTourMapList::Maps;
        const int last = static_cast<int>(list.MapRows().size()) - 1;
        switch (button) {
        case AddTour:
            world->NewTour();
            Reread(static_cast<int>(world->tours.size()) - 1, 0);
            break;
        case RenameTour:
            if (tour->official) {
                Refused(kOfficialUnchangedLine);
            } else {
                OpenRename();
            }
            break;
        case DeleteTour:
            if (tour->official) {
                Refused(kOfficialUnchangedLine);
            } else {
                Ask(kDeleteTourAction, kDeleteTourLine);
            }
            break;
        case AddMap:
            Point();
            world->Reload(static_cast<int>(list.MapRows().size()), false);
            Reread(t, static_cast<int>(list.MapRows().size()));
            list.SetFocus(QmTourMapList::Maps);
            break;
        case DeleteMap:
            Ask(kDeleteMapAction, kDeleteMapLine);
            break;
        case MoveUp:
        case MoveDown:
        case MoveTop:
        case MoveBottom:
            Point();
            if (!maps) {
                const bool moved = button == MoveUp ? world->MoveTourUp() : world->MoveTourDown();
                Reread(moved ? t + (button == MoveUp ? -1 : 1) : t, 0);
            } else {
                const bool up = button == MoveUp || button == MoveTop;
                const bool moved =
                    up ? world->MoveLevelUp(button == MoveTop) : world->MoveLevelDown(button == MoveBottom);
                int next = m;
                if (moved) {
                    next = button == MoveTop ? 0 : button == MoveBottom ? last : m + (up ? -1 : 1);
                }
                Reread(t, next);
            }
            break;
        case LockedSwitch:
        case EditableSwitch:
            pendingSwitch = button;
            // Locking a tour or making it read-only takes something away from the player: ask.
            if ((button == LockedSwitch && !tour->locked) || (button == EditableSwitch && tour->editable)) {
                Ask(kSwitchesAction, kSwitchesLine);
            } else {
                ApplySwitch();
            }
            break;
        case Back:
            QmPageLinks::SetPage(2);
            break;
        default:
            break;
        }
    }

    void ApplySwitch() {
        ArEnvironmentManager* world = World();
        const int t = list.SelectedTour();
        if (world == nullptr || t < 0 || t >= static_cast<int>(world->tours.size())) {
            return;
        }
        TourRecord& record = world->tours[static_cast<size_t>(t)];
        if (pendingSwitch == LockedSwitch) {
            record.locked = !record.locked;
        } else {
            record.editable = !record.editable;
        }
        world->SaveTour(t, false);
        Reread(t, list.SelectedMap());
    }

    // A question over the page with No and Yes; nothing is deleted or switched before Yes.
    void Ask(const std::string& action, int line) {
        VaCoordinator* c = QmMenuPage::C();
        VeTextStyle style = labelStyle;
        style.MaxWidth(kQuestionWidth - 40).LineHeight(6);
        question = VeText(c->GetLine(line), &style);
        questionAction = action;
        const int top = QuestionTop();
        answers.Set({{c->GetLine(kNoLine), c->GetLine(kYesLine)}}, top + question.Height() + 40, 640, 120);
        answers.Select(0); // No: a slip of the key deletes nothing
    }

    int QuestionTop() const { return 320 - (question.Height() + 110) / 2; }

    void QuestionFrame(QmControls& controls, VeInput* input) {
        const int answer = answers.Update(controls, input, true);
        if (controls.Back()) {
            questionAction.clear();
            return;
        }
        if (answer < 0) {
            return;
        }
        const std::string action = questionAction;
        questionAction.clear();
        if (answer == 1) {
            Answered(action);
        }
    }

    void Answered(const std::string& action) {
        ArEnvironmentManager* world = World();
        if (world == nullptr) {
            return;
        }
        const int t = list.SelectedTour();
        const int m = list.SelectedMap();
        if (action == kDeleteTourAction) {
            world->DeleteTour(t);
            const int next = t > 0 ? t - 1 : 0;
            world->tourIndex = next;
            world->levelIndex = 0;
            Reread(next, 0);
            list.SetFocus(QmTourMapList::Tours);
        } else if (action == kDeleteMapAction) {
            world->DeleteLevel(t, m, true);
            world->levelIndex = 0;
            Reread(t, m > 0 ? m - 1 : 0);
        } else if (action == kSwitchesAction) {
            ApplySwitch();
        }
    }

    // Gives the keyboard's repeat timing back before the input goes.
    void CloseRename() {
        VeInput* input = QmMenuPage::C()->app->input;
        if (rename && input != nullptr) {
            rename->selected = false;
            rename->Update(*input, false);
        }
        rename.reset();
    }

    void OpenRename() {
        VaCoordinator* c = QmMenuPage::C();
        const TourRecord* tour = Tour();
        rename = std::make_unique<VeTextInput>(c->app->input, static_cast<float>(kInputX),
                                               static_cast<float>(kInputY), kInputWidth, 30, inputStyle, 24,
                                               tour != nullptr ? tour->name : "");
        rename->name = "ipt_name";
        rename->backgroundColour = 0x222222;
        rename->selected = true;
        rename->caret = static_cast<int32_t>(rename->Content().size());
    }

    // The rename input takes every key while it is open: Return stores the name, Escape drops it.
    void RenameFrame(QmControls& controls, VeInput* input) {
        if (controls.Back()) {
            CloseRename();
            return;
        }
        if (input != nullptr &&
            (input->pressed[VeKey::Return] != 0 || input->pressed[VeKey::KeypadEnter] != 0)) {
            ArEnvironmentManager* world = World();
            const int t = list.SelectedTour();
            std::string name = rename->Content();
            while (!name.empty() && name.back() == ' ') {
                name.pop_back();
            }
            CloseRename();
            if (world != nullptr && !name.empty() && t < static_cast<int>(world->tours.size())) {
                world->tours[static_cast<size_t>(t)].name = name;
                world->SaveTour(t, false);
                QmMenuPage::C()->PlaySound("Select", 1.0f);
                Reread(t, list.SelectedMap());
            }
            return;
        }
        if (input != nullptr) {
            rename->Update(*input, rename->MouseOver(*input));
        }
    }

    void HandleMouse(VeInput& input) {
        QmTourMapList::Column column = QmTourMapList::Tours;
        int index = 0;
        if (!list.RowAt(input.mouseX, input.mouseY, column, index)) {
            return;
        }
        VeCursor::SetMode(VeCursorKind::Hand);
        if (input.mousePressed[kMouseLeft] == 0) {
            return;
        }
        QmMenuPage::C()->PlaySound("Select", 1.0f);
        focusOnButtons = false;
        list.SetFocus(column);
        if (column == QmTourMapList::Tours) {
            Reread(index, 0);
        } else {
            list.SelectMap(index);
        }
        UpdateButtons();
    }

    void HandleListKeys(QmControls& controls) {
        VaCoordinator* c = QmMenuPage::C();
        if (controls.MenuUp() || controls.MenuDown()) {
            const int step = controls.MenuUp() ? -1 : 1;
            if (list.Move(step)) {
                c->PlaySound("Hover", 1.0f);
                if (list.Focus() == QmTourMapList::Tours) {
                    Reread(list.SelectedTour(), 0);
                }
            } else if (step > 0) {
                focusOnButtons = true;
                c->PlaySound("Hover", 1.0f);
            }
        } else if (controls.MenuLeft() && list.Focus() == QmTourMapList::Maps) {
            list.SetFocus(QmTourMapList::Tours);
            c->PlaySound("Hover", 1.0f);
        } else if ((controls.MenuRight() || controls.Confirm()) && list.Focus() == QmTourMapList::Tours &&
                   !list.MapRows().empty()) {
            list.SetFocus(QmTourMapList::Maps);
            c->PlaySound("Hover", 1.0f);
        }
        UpdateButtons();
    }

    void Frame() {
        VaCoordinator* c = QmMenuPage::C();
        VeInput* input = c->app->input;
        QmControls& controls = c->Controls();
        VeCursor::SetMode(VeCursorKind::Arrow);
        if (!questionAction.empty()) {
            QuestionFrame(controls, input);
            Draw();
            return;
        }
        if (rename) {
            RenameFrame(controls, input);
            Draw();
            return;
        }
        if (controls.Back()) {
            c->PlaySound("Select", 1.0f);
            QmPageLinks::SetPage(2);
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
        QmButtonGrid::Exit exit = QmButtonGrid::Exit::None;
        const int activated = buttons.Update(controls, input, keysToButtons, &exit);
        if (exit == QmButtonGrid::Exit::Up) {
            focusOnButtons = false;
            c->PlaySound("Hover", 1.0f);
        }
        if (input != nullptr && input->mouseMoved && buttons.MouseOver(*input)) {
            focusOnButtons = true;
        }
        if (activated >= 0) {
            focusOnButtons = true;
            Activate(activated);
            if (c->CurrentMenuPage() != 3) {
                return;
            }
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
        list.Draw(overlay, !focusOnButtons && !rename);
        buttons.Draw(overlay, focusOnButtons && !rename);
        if (rename) {
            overlay.BlitKeyed(nameLabel.surface, kInputX - 12 - nameLabel.Width(), kInputY + 8);
            rename->Draw(overlay, false, false);
        }
        if (!questionAction.empty()) {
            const int left = 320 - kQuestionWidth / 2;
            const int top = QuestionTop();
            const int height = question.Height() + 110;
            QmPanel::DrawQuestion(overlay, left, top, kQuestionWidth, height);
            overlay.BlitKeyed(question.surface, left + 20, top + 24);
            answers.Draw(overlay, true);
        }
    }

    QmTextBoxes TextBoxes() const {
        QmTextBoxes boxes = list.Texts();
        const QmTextBoxes labels = buttons.Texts();
        boxes.insert(boxes.end(), labels.begin(), labels.end());
        boxes.emplace_back(title, 640 - 16, QmTourMapList::kHeadingY - kTitleY);
        boxes.emplace_back(nameLabel, kInputX - 12 - 8, 30);
        if (!questionAction.empty()) {
            boxes.emplace_back(question, kQuestionWidth - 40, 640);
            const QmTextBoxes labels = answers.Texts();
            boxes.insert(boxes.end(), labels.begin(), labels.end());
        }
        return boxes;
    }

    QmTourMapList list;
    QmButtonGrid buttons;
    VeTextStyle titleStyle;
    VeTextStyle labelStyle;
    VeTextStyle inputStyle;
    VeText title;
    VeText nameLabel;
    std::unique_ptr<VeTextInput> rename;
    QmButtonGrid answers{[](const std::string& name) { QmMenuPage::C()->PlaySound(name, 1.0f); }};
    VeText question;
    std::string questionAction;
    int pendingSwitch = LockedSwitch;
    bool focusOnButtons = false;
};

QmManagementPage::QmManagementPage() : impl(std::make_unique<Impl>()) {}
QmManagementPage::~QmManagementPage() = default;
void QmManagementPage::Frame() {
    impl->Frame();
}
void QmManagementPage::Relabel() {
    impl->Relabel();
}
QmTextBoxes QmManagementPage::TextBoxes() const {
    return impl->TextBoxes();
}
void QmManagementPage::RebuildLists() {
    impl->RebuildLists();
}

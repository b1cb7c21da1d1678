#include "Editor/QmEditor.h"

#include "Controls/QmControls.h"
#include "Editor/QmEditorHost.h"
#include "Editor/QmEditorView.h"
#include "Environment/ClientEnvironmentManager/QmClientEnvironmentManager.h"
#include "Form/VeTextInput.h"
#include "Gameplay/QmHighscores.h"
#include "Input/VeInput.h"
#include "Input/VeKey.h"
#include "Platform/VeLog.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Text/VeText.h"
#include "Screen/Text/VeTextStyle.h"
#include "Screen/VeCursor.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {
constexpr int kHandCursor = 2;
// Toolbar button -> its place in the row (the buttons of a pair share one).
constexpr std::array<int, QmEditor::kToolbarButtons> kToolbarSlot = {0, 1, 2, 2, 3, 4,  4,  5,
                                                                     5, 6, 7, 8, 9, 10, 11, 12};

// Language lines.
constexpr int kLineSaveQuestion = 5;
constexpr int kLineLeaveQuestion = 6;
constexpr int kLineClearQuestion = 8;
constexpr int kLineResetQuestion = 10;
constexpr int kLineSeconds = 1;
constexpr int kLineLockQuestion = 115;
constexpr int kLineReadOnlyQuestion = 116;
constexpr int kLineGenerateQuestion = 166;
constexpr int kLineFinishable = 198;
constexpr int kLineNoStart = 199;
constexpr int kLineNoFinish = 200;
constexpr int kLineNoRoute = 201;
constexpr int kLinePlayAnyway = 202;
// The questions' titles: the names of their commands.
constexpr int kLineLockTitle = 90;
constexpr int kLineReadOnlyTitle = 91;
constexpr int kLineResetTitle = 92;
constexpr int kLineClearTitle = 93;
constexpr int kLineSaveTitle = 94;
constexpr int kLineSaveAndPlayTitle = 95;
constexpr int kLineGenerateTitle = 97;
constexpr int kLineLeaveTitle = 100;
// Status code -> language line (codes 0 to 6 as the status line has always had them).
constexpr std::array<int, 11> kStatusLines = {2, 103, 3, 109, 110, 111, 112, 197, 0, 203, 107};

bool CtrlHeld(const VeInput& input) {
    return input.held[VeKey::LeftCtrl] != 0 || input.held[VeKey::RightCtrl] != 0;
}
} // namespace

bool QmEditor::ConfirmPressed() {
    if (controls != nullptr) {
        return controls->Confirm();
    }
    return input != nullptr &&
           (input->pressed[VeKey::Return] != 0 || input->pressed[VeKey::KeypadEnter] != 0);
}

bool QmEditor::BackPressed() {
    if (controls != nullptr) {
        return controls->Back();
    }
    return input != nullptr && input->pressed[VeKey::Escape] != 0;
}

QmEditor::QmEditor(QmClientEnvironmentManager& world, QmEditorHost& host, VeInput* input,
                   QmControls* controls)
    : world(world), host(host), input(input), controls(controls), model(world) {
    view = std::make_unique<QmEditorView>(world, host);
    // The palette: Blank, Start and the specials, then every default block and decoration.
    const int defaults = world.art.DefaultCount();
    for (int slot = 0; slot <= 10; ++slot) {
        paletteSlots.push_back(slot);
    }
    const int last = QmBlocks::kFirstDefaultSlot + defaults - 1 + world.art.DecorationCount();
    for (int slot = QmBlocks::kFirstDefaultSlot; slot < last; ++slot) {
        paletteSlots.push_back(slot);
    }
}

QmEditor::~QmEditor() = default;

void QmEditor::Enter(bool fresh) {
    world.PrepareEditorView();
    if (fresh) {
        check.Stop();
        model.Begin();
        cursorX = 0;
        cursorY = 0;
        reportValid = false;
        status = StatusNone;
        copyPending = false;
    } else {
        // Back from a race: the map on disk is what was played.
        model.Reloaded();
    }
    lastPaintedX = lastPaintedY = -1;
    lastMouseX = lastMouseY = -1;
    paintHeld = eraseHeld = false;
    menuOpen = false;
    if (!question.empty()) {
        question.clear();
        host.CloseEditorDialog();
    }
    nameInput.reset();
    playAfterCheck = false;
}

void QmEditor::Leave() {
    check.Stop();
    model.Begin();
    reportValid = false;
    nameInput.reset();
    if (!question.empty()) {
        question.clear();
        host.CloseEditorDialog();
    }
    menuOpen = false;
}

// ---- State ----

void QmEditor::SetCursor(int x, int y) {
    cursorX = std::clamp(x, 0, world.mapSize - 1);
    cursorY = std::clamp(y, 0, world.mapSize - 1);
}

void QmEditor::SelectSlot(int slot) {
    if (std::find(paletteSlots.begin(), paletteSlots.end(), slot) != paletteSlots.end()) {
        selectedSlot = slot;
    }
}

BlockId QmEditor::SelectedId() const {
    return QmBlocks::PaletteSlotToId(selectedSlot, world.art.DefaultCount());
}

std::string QmEditor::StatusText() const {
    if (status == StatusNone) {
        return std::string();
    }
    if (status == StatusCheckDone && reportValid) {
        switch (report.outcome) {
        case QmPlayabilityCheck::Outcome::Finishable:
            return host.EditorLine(kLineFinishable) + " " +
                   std::to_string(QmPlayabilityCheck::RoundedSeconds(report.timeMs)) + " " +
                   host.EditorLine(kLineSeconds);
        case QmPlayabilityCheck::Outcome::NoStart:
            return host.EditorLine(kLineNoStart);
        case QmPlayabilityCheck::Outcome::NoFinish:
            return host.EditorLine(kLineNoFinish);
        default:
            return host.EditorLine(kLineNoRoute);
        }
    }
    if (status >= 0 && status < static_cast<int>(kStatusLines.size()) &&
        kStatusLines[static_cast<size_t>(status)] > 0) {
        return host.EditorLine(kStatusLines[static_cast<size_t>(status)]);
    }
    return std::string();
}

void QmEditor::SetStatus(int code) {
    status = code;
    statusTime = now;
}

void QmEditor::PaletteCell(int index, int screenWidth, int& x, int& y) {
    const int rows = (640 - kPaletteTop - kStatusHeight - 8) / kIcon;
    const int column = index / rows;
    const int row = index % rows;
    x = screenWidth - kIcon * column - kIcon;
    y = kIcon * row + kPaletteTop;
}

void QmEditor::ToolbarCell(int button, int& x, int& y) {
    x = kToolbarLeft + kToolbarStep * kToolbarSlot[static_cast<size_t>(button)];
    y = kToolbarTop;
}

bool QmEditor::ToolbarButtonVisible(int button) const {
    switch (button) {
    case 2:
        return world.blockSize == QmCoreEnvironmentManager::kLargeBlockSize;
    case 3:
        return world.blockSize != QmCoreEnvironmentManager::kLargeBlockSize;
    case 5:
        return world.locked;
    case 6:
        return !world.locked;
    case 7:
        return world.editable;
    case 8:
        return !world.editable;
    default:
        return button >= 0 && button < kToolbarButtons;
    }
}

int QmEditor::ToolbarButtonAt(int x, int y) const {
    for (int button = 0; button < kToolbarButtons; ++button) {
        int bx = 0;
        int by = 0;
        ToolbarCell(button, bx, by);
        if (ToolbarButtonVisible(button) && x >= bx && y >= by && x < bx + kIcon && y < by + kIcon) {
            return button;
        }
    }
    return -1;
}

// ---- The frame ----

void QmEditor::Frame(int64_t frameNow, VeSurface* overlay) {
    now = frameNow;
    PollCheck();
    // In 3D the cell under the mouse comes from a picking pass before the frame's own: when the
    // mouse moved (at most every kPickIntervalMs while it keeps moving) and on every click.
    const bool threeD = world.ThreeDActive();
    const bool dialogOpen = host.EditorDialogOpen();
    // The input reports the pointer as moved whenever it is seen in the window: only a new
    // position counts, so a resting pointer leaves the cursor to the keys.
    pointerMoved =
        input != nullptr && input->mouseMoved && (input->mouseX != pointerX || input->mouseY != pointerY);
    if (input != nullptr) {
        pointerX = input->mouseX;
        pointerY = input->mouseY;
    }
    if (threeD && input != nullptr && !dialogOpen && !nameInput) {
        pickPending = pickPending || pointerMoved;
        const bool click = input->mousePressed[kMouseLeft] != 0 || input->mousePressed[kMouseRight] != 0;
        if ((pickPending && now - lastPickTime >= kPickIntervalMs) || (click && pickPending)) {
            world.picking = true;
            world.BeginPass(false);
            world.EndPass();
            world.ComposeWorld(false, true);
            world.picking = false;
            pickPending = false;
            lastPickTime = now;
            lastMouseX = lastMouseY = -1;
            FollowMouse();
        }
    }
    if (dialogOpen) {
        hoverButton = -1;
    } else {
        ReadInput(now);
    }
    world.Update();
    world.BeginPass(false);
    view->DrawLayer(*this, now);
    world.EndPass();
    if (overlay != nullptr) {
        view->Draw(*this, *overlay, now);
    }
    // The dialog over the editor's panels; its answer is read after its frame.
    if (dialogOpen) {
        host.EditorDialogFrame();
    }
    FollowQuestion();
}

void QmEditor::FollowQuestion() {
    if (question.empty() || host.EditorDialogOpen()) {
        return;
    }
    const bool confirmed = host.EditorQuestionConfirmed(question);
    const std::string action = question;
    question.clear();
    if (confirmed) {
        OnConfirmed(action);
    }
}

void QmEditor::ReadInput(int64_t) {
    hoverButton = -1;
    if (input == nullptr) {
        return;
    }
    VeInput& in = *input;
    if (nameInput) {
        HandleNameInput();
        return;
    }
    if (menuOpen) {
        HandleMenu();
        return;
    }
    const GamePad::State& pad = QmControls::PadState();
    const bool padLeftShoulder = pad.leftShoulder && !leftShoulderDown;
    const bool padRightShoulder = pad.rightShoulder && !rightShoulderDown;
    leftShoulderDown = pad.leftShoulder;
    rightShoulderDown = pad.rightShoulder;
    const bool padStart = controls != nullptr && controls->PadStartPressed();
    const bool padX = controls != nullptr && controls->PadXPressed();
    const bool padY = controls != nullptr && controls->PadYPressed();

    // Undo and redo.
    if ((CtrlHeld(in) && in.pressed[VeKey::Z] != 0) || padLeftShoulder) {
        ExecuteCommand(CmdUndo);
        return;
    }
    if ((CtrlHeld(in) && in.pressed[VeKey::Y] != 0) || padRightShoulder) {
        ExecuteCommand(CmdRedo);
        return;
    }
    if (in.pressed[VeKey::Escape] != 0 || padStart) {
        if (paletteActive) {
            paletteActive = false;
        } else {
            menuOpen = true;
        }
        return;
    }
    if (in.pressed[VeKey::Tab] != 0 || padY) {
        ExecuteCommand(CmdSelect);
        return;
    }

    // The toolbar and the palette under the mouse.
    const bool mouseInside = in.mouseX >= 0 && in.mouseY >= 0;
    if (mouseInside) {
        hoverButton = ToolbarButtonAt(in.mouseX, in.mouseY);
        if (hoverButton >= 0) {
            VeCursor::SetMode(kHandCursor);
            if (in.mousePressed[kMouseLeft] != 0) {
                ClickToolbar(hoverButton);
            }
            return;
        }
    }
    if (paletteActive) {
        HandlePalette();
        return;
    }

    MoveCursorByKeys();
    if (!world.ThreeDActive() && mouseInside && pointerMoved) {
        FollowMouse();
    }
    const bool keyErase = in.pressed[VeKey::Delete] != 0 || in.pressed[VeKey::KeypadPeriod] != 0 || padX;
    const bool keyPaint = ConfirmPressed();
    const bool overCell = cursorMovedByMouse && mouseInside;
    const bool mousePaint = overCell && in.mousePressed[kMouseLeft] != 0;
    const bool mouseErase = overCell && in.mousePressed[kMouseRight] != 0;
    const bool movedToNewCell = cursorX != lastPaintedX || cursorY != lastPaintedY;
    const bool dragPaint = overCell && paintHeld && in.mouseDown[kMouseLeft] != 0 && movedToNewCell;
    const bool dragErase = overCell && eraseHeld && in.mouseDown[kMouseRight] != 0 && movedToNewCell;
    if (overCell) {
        VeCursor::SetMode(kHandCursor);
    }
    // A held button paints one undo step from press to release.
    if (mousePaint || mouseErase) {
        model.BeginStroke();
        paintHeld = mousePaint;
        eraseHeld = mouseErase;
    }
    if ((paintHeld && in.mouseDown[kMouseLeft] == 0) || (eraseHeld && in.mouseDown[kMouseRight] == 0)) {
        paintHeld = eraseHeld = false;
        model.EndStroke();
    }
    if (keyErase || mouseErase || dragErase) {
        Paint(true, false);
    } else if (keyPaint || mousePaint || dragPaint) {
        Paint(false, false);
    } else if (in.pressed[VeKey::F] != 0 && !CtrlHeld(in)) {
        Paint(false, true);
    }
}

void QmEditor::MoveCursorByKeys() {
    if (controls == nullptr) {
        return;
    }
    int dx = 0;
    int dy = 0;
    if (controls->MenuLeft()) {
        dx = -1;
    } else if (controls->MenuRight()) {
        dx = 1;
    } else if (controls->MenuUp()) {
        dy = -1;
    } else if (controls->MenuDown()) {
        dy = 1;
    }
    if (dx != 0 || dy != 0) {
        SetCursor(cursorX + dx, cursorY + dy);
        cursorMovedByMouse = false;
    }
}

void QmEditor::FollowMouse() {
    if (input == nullptr || input->mouseX < 0 || input->mouseY < 0) {
        return;
    }
    if (input->mouseX == lastMouseX && input->mouseY == lastMouseY && cursorMovedByMouse) {
        return;
    }
    lastMouseX = input->mouseX;
    lastMouseY = input->mouseY;
    int column = -1;
    int row = -1;
    if (world.ThreeDActive()) {
        if (!world.CellAtPixel(input->mouseX, input->mouseY, column, row)) {
            cursorMovedByMouse = false;
            return;
        }
    } else {
        column = input->mouseX / world.blockSize;
        row = input->mouseY / world.blockSize;
        if (column >= world.mapSize || row >= world.mapSize) {
            cursorMovedByMouse = false;
            return;
        }
    }
    SetCursor(column, row);
    cursorMovedByMouse = true;
}

void QmEditor::Paint(bool erase, bool fill) {
    const BlockId id = erase ? Block::Blank : SelectedId();
    bool changed = false;
    if (fill) {
        // F never fills with Start: a map of Start cells only is the Fill button's business.
        if (id == Block::Start) {
            return;
        }
        changed = model.Fill(id);
    } else {
        changed = model.Paint(cursorX, cursorY, id);
    }
    if (cursorX != lastPaintedX || cursorY != lastPaintedY) {
        host.EditorSound("Select", 0.8f);
    }
    lastPaintedX = cursorX;
    lastPaintedY = cursorY;
    if (changed) {
        Changed();
    }
}

void QmEditor::Changed() {
    world.MarkStaticLayerStale();
}

void QmEditor::HandlePalette() {
    VeInput& in = *input;
    const int count = static_cast<int>(paletteSlots.size());
    int index = static_cast<int>(std::find(paletteSlots.begin(), paletteSlots.end(), selectedSlot) -
                                 paletteSlots.begin());
    const int rows = (640 - kPaletteTop - kStatusHeight - 8) / kIcon;
    int moved = index;
    if (controls != nullptr) {
        if (controls->MenuUp()) {
            moved = index - 1;
        } else if (controls->MenuDown()) {
            moved = index + 1;
        } else if (controls->MenuLeft()) {
            moved = index + rows;
        } else if (controls->MenuRight()) {
            moved = index - rows;
        }
    }
    if (in.mouseX >= 0) {
        for (int i = 0; i < count; ++i) {
            int x = 0;
            int y = 0;
            PaletteCell(i, 640, x, y);
            if (in.mouseX >= x && in.mouseY >= y && in.mouseX < x + kIcon && in.mouseY < y + kIcon) {
                VeCursor::SetMode(kHandCursor);
                if (in.mousePressed[kMouseLeft] != 0) {
                    selectedSlot = paletteSlots[static_cast<size_t>(i)];
                    host.EditorSound("Select", 0.8f);
                    paletteActive = false;
                    return;
                }
            }
        }
    }
    if (moved != index && moved >= 0 && moved < count) {
        selectedSlot = paletteSlots[static_cast<size_t>(moved)];
        host.EditorSound("Hover", 1.0f);
    }
    if (ConfirmPressed()) {
        host.EditorSound("Select", 0.8f);
        paletteActive = false;
    }
}

void QmEditor::ClickToolbar(int button) {
    host.EditorSound("Select", 0.8f);
    switch (button) {
    case 0:
        ExecuteCommand(CmdSave);
        break;
    case 1:
        ExecuteCommand(CmdSaveAndPlay);
        break;
    case 2:
    case 3:
        ExecuteCommand(CmdSwitchSize);
        break;
    case 4:
        menuOpen = !menuOpen;
        break;
    case 5:
    case 6:
        ExecuteCommand(CmdLock);
        break;
    case 7:
    case 8:
        ExecuteCommand(CmdEditable);
        break;
    case 9:
        ExecuteCommand(CmdGenerate);
        break;
    case 10:
        ExecuteCommand(CmdClear);
        break;
    case 11:
        ExecuteCommand(CmdFill);
        break;
    case 12:
        ExecuteCommand(CmdCopy);
        break;
    case 13:
        ExecuteCommand(CmdUndo);
        break;
    case 14:
        ExecuteCommand(CmdRedo);
        break;
    case 15:
        ExecuteCommand(CmdCheck);
        break;
    default:
        break;
    }
}

void QmEditor::HandleMenu() {
    VeInput& in = *input;
    if (BackPressed()) {
        menuOpen = false;
        return;
    }
    int moved = menuSelection;
    if (controls != nullptr) {
        if (controls->MenuLeft() || controls->MenuUp()) {
            moved = (menuSelection + kCommandCount - 1) % kCommandCount;
        } else if (controls->MenuRight() || controls->MenuDown()) {
            moved = (menuSelection + 1) % kCommandCount;
        }
    }
    const int left = (640 - kMenuColumns * kMenuCell) / 2;
    const int top = kMenuTop;
    bool clicked = false;
    if (in.mouseX >= 0 && in.mouseY >= 0) {
        const int column = (in.mouseX - left) / kMenuCell;
        const int row = (in.mouseY - top) / kMenuCell;
        const int entry = row * kMenuColumns + column;
        if (in.mouseX >= left && in.mouseY >= top && column < kMenuColumns && entry < kCommandCount) {
            VeCursor::SetMode(kHandCursor);
            if (pointerMoved) {
                moved = entry;
            }
            clicked = in.mousePressed[kMouseLeft] != 0;
        }
    }
    if (moved != menuSelection) {
        menuSelection = moved;
        host.EditorSound("Hover", 1.0f);
    }
    if (clicked || ConfirmPressed()) {
        host.EditorSound("Select", 0.8f);
        menuOpen = false;
        ExecuteCommand(menuSelection);
    }
}

void QmEditor::Answer(bool confirmed) {
    if (question.empty()) {
        return;
    }
    const std::string action = question;
    question.clear();
    host.CloseEditorDialog();
    if (confirmed) {
        OnConfirmed(action);
    }
}

void QmEditor::Ask(const std::string& action, int titleLine, int textLine) {
    question = action;
    paintHeld = eraseHeld = false;
    model.EndStroke();
    host.AskEditorQuestion(action, host.EditorLine(titleLine), host.EditorLine(textLine));
}

void QmEditor::HandleNameInput() {
    VeInput& in = *input;
    if (in.pressed[VeKey::Escape] != 0) {
        nameInput.reset();
        return;
    }
    if (in.pressed[VeKey::Return] != 0 || in.pressed[VeKey::KeypadEnter] != 0) {
        const std::string name = nameInput->Content();
        nameInput.reset();
        if (model.Rename(name)) {
            host.MapListsChanged();
            SetStatus(StatusRenamed);
        }
        return;
    }
    nameInput->Update(in, nameInput->MouseOver(in));
}

// ---- Commands ----

void QmEditor::ExecuteCommand(int command) {
    switch (command) {
    case CmdSelect:
        paletteActive = !paletteActive;
        break;
    case CmdPlace:
        Paint(false, false);
        break;
    case CmdEditName: {
        const VeTextStyle style(3, 0x000000, 3, 2, 0);
        nameInput = std::make_unique<VeTextInput>(
            input, 170.0f, 300.0f, 300, 34, style,
            static_cast<int32_t>(QmCoreEnvironmentManager::kMaxMapNameLength), world.mapName);
        nameInput->selected = true;
        break;
    }
    case CmdSwitchSize:
        world.MarkStaticLayerStale();
        model.SwitchSize();
        cursorX = cursorY = 0;
        break;
    case CmdLock:
        if (world.locked) {
            model.SetLocked(false);
            SetStatus(StatusUnlocked);
        } else {
            Ask("LOCK", kLineLockTitle, kLineLockQuestion);
        }
        break;
    case CmdEditable:
        if (!world.editable) {
            model.SetEditable(true);
            SetStatus(StatusEditable);
        } else {
            Ask("NOT_EDITABLE", kLineReadOnlyTitle, kLineReadOnlyQuestion);
        }
        break;
    case CmdResetScores:
        Ask("RESET_SCORE", kLineResetTitle, kLineResetQuestion);
        break;
    case CmdClear:
        Ask("CLEAR_MAP", kLineClearTitle, kLineClearQuestion);
        break;
    case CmdSave:
        if (model.Modified() && MapHasScores()) {
            Ask("SAVE", kLineSaveTitle, kLineSaveQuestion);
        } else {
            Save();
        }
        break;
    case CmdSaveAndPlay:
        if (model.Modified() && MapHasScores()) {
            Ask("SAVE_AND_PLAY", kLineSaveAndPlayTitle, kLineSaveQuestion);
        } else {
            SaveAndPlay();
        }
        break;
    case CmdFill: {
        const BlockId id = SelectedId();
        if (model.Fill(id)) {
            Changed();
        }
        break;
    }
    case CmdGenerate:
        if (model.Modified()) {
            Ask("GENERATE", kLineGenerateTitle, kLineGenerateQuestion);
        } else {
            Generate();
        }
        break;
    case CmdGenerateNow:
        Generate();
        break;
    case CmdCopy:
        copyBuffer = world.blocks;
        copySize = world.blockSize;
        copyTour = world.tourIndex;
        copyMap = world.levelIndex;
        if (host.OpenCopyPage()) {
            copyPending = true;
        }
        break;
    case CmdLeave:
        if (model.Modified()) {
            Ask("LEAVE_WITHOUT_SAVING", kLineLeaveTitle, kLineLeaveQuestion);
        } else {
            OnConfirmed("LEAVE_WITHOUT_SAVING");
        }
        break;
    case CmdCheck:
        StartCheck();
        break;
    case CmdUndo:
    case CmdRedo:
        if (command == CmdUndo ? model.Undo() : model.Redo()) {
            Changed();
            SetCursor(cursorX, cursorY);
        } else {
            SetStatus(StatusNothingToUndo);
        }
        break;
    default:
        break;
    }
}

void QmEditor::OnConfirmed(const std::string& action) {
    if (action == "CLEAR_MAP") {
        model.Clear();
        Changed();
    } else if (action == "RESET_SCORE") {
        ResetScores();
        SetStatus(StatusScoresReset);
    } else if (action == "SAVE") {
        Save();
    } else if (action == "SAVE_AND_PLAY") {
        SaveAndPlay();
    } else if (action == "PLAY_WITHOUT_ROUTE") {
        playAfterCheck = false;
        host.PlayFromEditor();
    } else if (action == "LEAVE_WITHOUT_SAVING") {
        Leave();
        host.LeaveEditor();
    } else if (action == "LOCK") {
        model.SetLocked(true);
        SetStatus(StatusLocked);
    } else if (action == "NOT_EDITABLE") {
        model.SetEditable(false);
        SetStatus(StatusReadOnly);
    } else if (action == "GENERATE") {
        Generate();
    }
}

bool QmEditor::MapHasScores() {
    QmHighscores scores(world);
    scores.LoadScores();
    return !scores.List().empty() || !scores.StoredRecordingText().empty();
}

void QmEditor::ResetScores() {
    QmHighscores scores(world);
    if (!scores.ScoreFileName().empty()) {
        scores.ResetScoreFile();
    }
}

void QmEditor::Generate() {
    model.Generate();
    Changed();
}

void QmEditor::Save() {
    if (model.Save()) {
        ResetScores();
        host.MapListsChanged();
    }
    SetStatus(StatusSaved);
}

void QmEditor::SaveAndPlay() {
    if (model.Save()) {
        ResetScores();
        host.MapListsChanged();
    }
    // The map is checked before the race: a known result for this very map is used at once.
    if (reportValid && checkedMap == model.Current()) {
        if (report.outcome == QmPlayabilityCheck::Outcome::Finishable) {
            host.PlayFromEditor();
        } else {
            Ask("PLAY_WITHOUT_ROUTE", kLineSaveAndPlayTitle, kLinePlayAnyway);
        }
        return;
    }
    StartCheck();
    playAfterCheck = true;
}

void QmEditor::CopyChosen(const QmEditorModel::Grid& grid) {
    copyPending = false;
    RestoreCopyBuffer();
    if (model.ReplaceGrid(grid, true)) {
        SetStatus(StatusCopied);
    }
    world.PrepareEditorView();
}

void QmEditor::CopyAbandoned() {
    copyPending = false;
    RestoreCopyBuffer();
    world.PrepareEditorView();
}

void QmEditor::RestoreCopyBuffer() {
    world.tourIndex = copyTour;
    world.Reload(copyMap, false);
    model.Reloaded();
    if (world.blockSize != copySize) {
        world.SetBlockSize(copySize);
    }
    model.ReplaceGrid(copyBuffer, false);
}

// ---- The playability check ----

void QmEditor::StartCheck() {
    checkedMap = model.Current();
    reportValid = false;
    // The map's best run, when it has one, may prove it at once.
    std::vector<std::string> knownRuns;
    QmHighscores scores(world);
    scores.LoadScores();
    if (!scores.StoredRecordingText().empty()) {
        knownRuns.push_back(scores.StoredRecordingText());
    }
    check.Start(world.blocks, world.blockSize, knownRuns);
    SetStatus(StatusChecking);
}

void QmEditor::PollCheck() {
    if (!check.Poll(report)) {
        return;
    }
    reportValid = true;
    SetStatus(StatusCheckDone);
    static constexpr const char* kOutcomes[] = {"finishable", "no Start", "no Finish", "no route found",
                                                "stopped"};
    const auto outcome = static_cast<size_t>(report.outcome);
    Log("Playability check of %s: %s (about %d s).\n", world.mapName.c_str(),
        outcome < std::size(kOutcomes) ? kOutcomes[outcome] : "unknown",
        QmPlayabilityCheck::RoundedSeconds(report.timeMs));
    if (playAfterCheck) {
        playAfterCheck = false;
        if (report.outcome == QmPlayabilityCheck::Outcome::Finishable) {
            host.PlayFromEditor();
        } else {
            Ask("PLAY_WITHOUT_ROUTE", kLineSaveAndPlayTitle, kLinePlayAnyway);
        }
    }
}

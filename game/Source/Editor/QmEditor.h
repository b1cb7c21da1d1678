#pragma once
// The editor scene: the world renderer draws the current map, the editor its cursor, its palette,
// its toolbar, its command menu, its questions and its status line over it.
//
// Contract:
// - Frame runs once per frame in the editor scene: the keys, the pad and the mouse (with 3D
//   picking through the world's picking image), then the world's pass with the cursor, then the
//   panels on the overlay. The coordinator composes the world afterwards.
// - Every change goes through QmEditorModel, so it can be undone (Ctrl+Z / Ctrl+Y, the pad's
//   shoulder buttons, the toolbar) until the editor is left.
// - A command that throws work away only asks, through the host's notice dialog; OnConfirmed
//   carries it out when the dialog's Yes answers it. No, Back or closing the dialog otherwise
//   leaves the map as it was. While the dialog is open the editor takes no input.
// - Copy: the editor keeps the edited map's grid and opens the tour page in its copy mode; the
//   page ends it with CopyChosen (the chosen map's grid comes in, unsaved) or CopyAbandoned (the
//   edits come back).
// - The playability check runs on the worker pool; its result is shown on the status line and its
//   route over the map while the map stays as it was checked.
#include "Editor/QmEditorModel.h"
#include "Editor/QmPlayabilityCheck.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class QmClientEnvironmentManager;
class QmControls;
class QmEditorHost;
class QmEditorView;
class VeInput;
class VeSurface;
class VeTextInput;

class QmEditor {
public:
    // The entries of the command menu.
    enum Command {
        CmdSelect = 0,
        CmdPlace,
        CmdEditName,
        CmdSwitchSize,
        CmdLock,
        CmdEditable,
        CmdResetScores,
        CmdClear,
        CmdSave,
        CmdSaveAndPlay,
        CmdFill,
        CmdGenerate,
        CmdGenerateNow,
        CmdCopy,
        CmdLeave,
        CmdCheck,
        CmdUndo,
        CmdRedo,
        kCommandCount
    };
    // Status codes of the status line.
    enum Status {
        StatusNone = -1,
        StatusSaved = 0,
        StatusRenamed = 1,
        StatusScoresReset = 2,
        StatusLocked = 3,
        StatusUnlocked = 4,
        StatusEditable = 5,
        StatusReadOnly = 6,
        StatusChecking = 7,
        StatusCheckDone = 8,
        StatusNothingToUndo = 9,
        StatusCopied = 10
    };
    static constexpr int kToolbarButtons = 16;
    static constexpr int kIcon = 32;
    static constexpr int kPaletteTop = 64;
    static constexpr int kStatusHeight = 26;
    static constexpr uint32_t kMarkColour = 0x00FFFF;
    static constexpr int64_t kStatusShownMs = 4000;
    static constexpr int kToolbarLeft = 4;
    static constexpr int kToolbarTop = 4;
    static constexpr int kToolbarStep = 34;
    static constexpr int kToolbarWidth = kToolbarLeft + kToolbarStep * 13;
    static constexpr int kMenuColumns = 6;
    static constexpr int kMenuCell = 44;
    static constexpr int kMenuTop = 200;
    static constexpr int64_t kPickIntervalMs = 50;

    QmEditor(QmClientEnvironmentManager& world, QmEditorHost& host, VeInput* input, QmControls* controls);
    ~QmEditor();
    QmEditor(const QmEditor&) = delete;
    QmEditor& operator=(const QmEditor&) = delete;

    // Entering the editor on the world's current map: a fresh start forgets the history.
    void Enter(bool fresh);
    // Leaving the editor scene for good: the history and a running check are dropped.
    void Leave();
    // overlay: the screen's overlay (null headless).
    void Frame(int64_t now, VeSurface* overlay);

    void ExecuteCommand(int command);
    // The question carrying this action was answered with its confirming button.
    void OnConfirmed(const std::string& action);
    // The open question's action ("" when none), and its answer as the dialog gives it (the
    // dialog is closed).
    const std::string& PendingQuestion() const { return question; }
    void Answer(bool confirmed);

    // Copy mode: the tour page hands over the chosen map's grid, or gives up. Either loads the
    // edited map again (the page may have loaded others meanwhile) and puts the grid back.
    void CopyChosen(const QmEditorModel::Grid& grid);
    void CopyAbandoned();
    bool CopyPending() const { return copyPending; }

    // ---- State, for the scene's owner and its tests ----
    int CursorX() const { return cursorX; }
    int CursorY() const { return cursorY; }
    void SetCursor(int x, int y);
    int SelectedSlot() const { return selectedSlot; }
    void SelectSlot(int slot);
    BlockId SelectedId() const;
    bool PaletteActive() const { return paletteActive; }
    void SetPaletteActive(bool on) { paletteActive = on; }
    bool MenuOpen() const { return menuOpen; }
    bool NameEditing() const { return nameInput != nullptr; }
    int StatusCode() const { return status; }
    std::string StatusText() const;
    bool CheckRunning() const { return check.Running(); }
    const QmPlayabilityCheck::Report* CheckReport() const { return reportValid ? &report : nullptr; }
    QmEditorModel& Model() { return model; }
    const QmEditorModel& Model() const { return model; }
    int64_t StatusTime() const { return statusTime; }
    int MenuSelection() const { return menuSelection; }
    int HoverButton() const { return hoverButton; }
    VeTextInput* NameInput() const { return nameInput.get(); }
    // The check's report belongs to the map as it is now (its route can be shown).
    bool RouteCurrent() const { return reportValid && checkedMap == model.Current(); }
    // The palette's slots in the order the panel shows them.
    const std::vector<int>& PaletteSlots() const { return paletteSlots; }
    // Where palette entry i and toolbar button b lie on the overlay.
    static void PaletteCell(int index, int screenWidth, int& x, int& y);
    static void ToolbarCell(int button, int& x, int& y);
    // The toolbar button under (x, y), -1 for none; only visible buttons count.
    int ToolbarButtonAt(int x, int y) const;
    bool ToolbarButtonVisible(int button) const;

private:
    void ReadInput(int64_t now);
    bool ConfirmPressed();
    bool BackPressed();
    void MoveCursorByKeys();
    void FollowMouse();
    void Paint(bool erase, bool fill);
    void HandleMenu();
    void HandleNameInput();
    void HandlePalette();
    void ClickToolbar(int button);
    void Ask(const std::string& action, int titleLine, int textLine);
    // The open question after the dialog's frame: its answer, once the dialog closed.
    void FollowQuestion();
    void SetStatus(int code);
    void StartCheck();
    void PollCheck();
    void Save();
    void SaveAndPlay();
    void Generate();
    // The map's best times and best run (its score file).
    bool MapHasScores();
    void ResetScores();
    void Changed();
    // The edited map as it was when the copy began, over the map reloaded from disk.
    void RestoreCopyBuffer();

    QmClientEnvironmentManager& world;
    QmEditorHost& host;
    VeInput* input;
    QmControls* controls;
    QmEditorModel model;
    QmPlayabilityCheck check;
    QmPlayabilityCheck::Report report;
    bool reportValid = false;
    QmEditorModel::Snapshot checkedMap;
    bool playAfterCheck = false;

    int cursorX = 0;
    int cursorY = 0;
    int lastPaintedX = -1;
    int lastPaintedY = -1;
    bool cursorMovedByMouse = false;
    int lastMouseX = -1;
    int lastMouseY = -1;
    int pointerX = -1;
    int pointerY = -1;
    bool pointerMoved = false;
    bool paintHeld = false;
    bool eraseHeld = false;
    int selectedSlot = 20;
    std::vector<int> paletteSlots;
    bool paletteActive = false;
    bool menuOpen = false;
    int menuSelection = 0;
    std::string question;
    std::unique_ptr<VeTextInput> nameInput;
    int status = StatusNone;
    int64_t statusTime = 0;
    int64_t now = 0;
    bool copyPending = false;
    QmEditorModel::Grid copyBuffer{};
    int32_t copySize = QmCoreEnvironmentManager::kLargeBlockSize;
    int copyTour = 0;
    int copyMap = 0;
    int hoverButton = -1;
    bool pickPending = false;
    int64_t lastPickTime = -kPickIntervalMs;
    bool leftShoulderDown = false;
    bool rightShoulderDown = false;
    std::unique_ptr<QmEditorView> view;
};

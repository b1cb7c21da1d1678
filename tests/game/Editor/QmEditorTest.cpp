// The editor scene through its own interface, on a real world renderer: every question that
// guards thrown-away work, painting with a held button, the copy's way back, the keys, and the
// stored pictures of the editor in 2D and 3D with the palette open.
#include "Editor/QmEditor.h"

#include "Controls/QmControls.h"
#include "Editor/QmEditorHost.h"
#include "Form/VeTextInput.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "Input/VeInput.h"
#include "engine/Input/FakeInputSource.h"
#include "game/Environment/ClientEnvironmentManager/RendererTestSupport.h"

#include <algorithm>
#include <chrono>
#include <thread>

using namespace renderer_test;

namespace {
class FakeEditorHost : public QmEditorHost {
public:
    FakeEditorHost() { language.Load("English"); }
    std::string EditorLine(int number) override { return language.GetLine(number); }
    void EditorSound(const std::string& name, float) override { sounds.push_back(name); }
    void MapListsChanged() override { ++listsChanged; }
    void PlayFromEditor() override {}
    void LeaveEditor() override { ++leaves; }
    bool OpenCopyPage() override { return true; }
    // The notice dialog as the player sees it: open until Reply closes it with Yes or No.
    void AskEditorQuestion(const std::string& action, const std::string&, const std::string&) override {
        dialogAction = action;
        dialogOpen = true;
        confirmed = false;
    }
    bool EditorDialogOpen() const override { return dialogOpen; }
    void EditorDialogFrame() override { ++dialogFrames; }
    bool EditorQuestionConfirmed(const std::string& action) const override {
        return confirmed && action == dialogAction;
    }
    void CloseEditorDialog() override { dialogOpen = false; }
    void Reply(bool yes) {
        dialogOpen = false;
        confirmed = yes;
    }

    QmLanguage language;
    std::vector<std::string> sounds;
    int listsChanged = 0;
    int leaves = 0;
    std::string dialogAction;
    bool dialogOpen = false;
    bool confirmed = false;
    int dialogFrames = 0;
};

class EditorSceneTest : public RendererTest {
protected:
    void SetUp() override {
        RendererTest::SetUp();
        host.editor = true;
    }

    void Start(bool threeD = false) {
        host.threeD = threeD;
        Open();
        BuildMap(EverythingSmall());
        world->SaveMap(false);
        editor = std::make_unique<QmEditor>(*world, editorHost, &input, &controls);
        editor->Enter(true);
    }

    // One frame with this frame's presses, then the presses are dropped as the main loop does.
    ScreenshotImage Step() {
        screen->Clear();
        screen->PrepareFrame();
        screen->overlay.Fill(0);
        screen->threeD = world->ThreeDActive();
        editor->Frame(now, &screen->overlay);
        screen->BindDefaultFramebuffer();
        world->ComposeWorld(false, false);
        screen->Present(host.frameTime);
        ScreenshotImage image;
        EXPECT_TRUE(screen->ReadLastFrame(image.pixels, image.width, image.height));
        input.ClearPressed();
        input.mouseMoved = false;
        now += 17;
        return image;
    }

    void Press(int key) {
        input.pressed[key] = 1;
        Step();
    }

    void MoveMouse(int x, int y) {
        input.mouseX = x;
        input.mouseY = y;
        input.mouseMoved = true;
    }

    FakeInputSource::Devices devices; // never read: the frames set the input's state themselves
    VeInput input{nullptr, std::make_unique<FakeInputSource>(&devices)};
    QmControls controls{&input};
    FakeEditorHost editorHost;
    std::unique_ptr<QmEditor> editor;
};
} // namespace

TEST_F(EditorSceneTest, EveryCommandThatThrowsWorkAwayAsksFirst) {
    Start();
    const auto cells = world->blocks;
    editor->Model().Paint(0, 0, 3); // modified: generating and leaving must ask
    const auto edited = world->blocks;
    for (const auto& [command, action] :
         std::vector<std::pair<int, std::string>>{{QmEditor::CmdClear, "CLEAR_MAP"},
                                                  {QmEditor::CmdLock, "LOCK"},
                                                  {QmEditor::CmdEditable, "NOT_EDITABLE"},
                                                  {QmEditor::CmdGenerate, "GENERATE"},
                                                  {QmEditor::CmdResetScores, "RESET_SCORE"},
                                                  {QmEditor::CmdLeave, "LEAVE_WITHOUT_SAVING"}}) {
        editor->ExecuteCommand(command);
        ASSERT_TRUE(editorHost.dialogOpen) << action;
        EXPECT_EQ(editorHost.dialogAction, action);
        // While the dialog is open it has the keys: Return paints nothing, and it is drawn.
        const int frames = editorHost.dialogFrames;
        Press(VeKey::Return);
        EXPECT_EQ(editorHost.dialogFrames, frames + 1);
        // No (or Back, or closing it) leaves everything as it was.
        editorHost.Reply(false);
        Step();
        EXPECT_EQ(editor->PendingQuestion(), "");
        EXPECT_EQ(world->blocks, edited) << action;
        EXPECT_FALSE(world->locked);
        EXPECT_TRUE(world->editable);
        EXPECT_EQ(editorHost.leaves, 0);
    }
    // Yes carries the action out.
    editor->ExecuteCommand(QmEditor::CmdLock);
    editorHost.Reply(true);
    Step();
    EXPECT_TRUE(world->locked);
    EXPECT_EQ(world->GetMapField('l'), "1");
    editor->ExecuteCommand(QmEditor::CmdLock);
    EXPECT_EQ(editor->PendingQuestion(), "") << "unlocking needs no question";
    EXPECT_FALSE(world->locked);
    editor->ExecuteCommand(QmEditor::CmdClear);
    editorHost.Reply(true);
    Step();
    EXPECT_TRUE(world->AllBlocksAre(Block::Blank));

    // Generating a map that is not modified (just saved) does not ask.
    editor->ExecuteCommand(QmEditor::CmdSave);
    editor->ExecuteCommand(QmEditor::CmdGenerate);
    EXPECT_EQ(editor->PendingQuestion(), "");
    EXPECT_NE(world->blocks, cells);
    editor->ExecuteCommand(QmEditor::CmdLeave);
    editor->Answer(true);
    EXPECT_FALSE(editorHost.dialogOpen);
    EXPECT_EQ(editorHost.leaves, 1);
}

TEST_F(EditorSceneTest, AHeldButtonPaintsEveryCellItCrossesAsOneStepAndKeysMoveTheCursorWithinTheMap) {
    Start();
    editor->SelectSlot(QmBlocks::kFirstDefaultSlot + 1); // the blue block
    MoveMouse(10, 4 * 64 + 20);
    input.mousePressed[kMouseLeft] = 1;
    input.mouseDown[kMouseLeft] = 1;
    Step();
    for (int column = 1; column < 10; ++column) {
        MoveMouse(column * 64 + 20, 4 * 64 + 20);
        Step();
    }
    input.mouseDown[kMouseLeft] = 0;
    Step();
    EXPECT_EQ(std::count(editorHost.sounds.begin(), editorHost.sounds.end(), "Select"), 10);
    for (int column = 0; column < 10; ++column) {
        EXPECT_EQ(world->GetBlock(column, 4), 2) << column;
    }
    EXPECT_EQ(editor->Model().UndoCount(), 1u);
    editor->ExecuteCommand(QmEditor::CmdUndo);
    EXPECT_EQ(world->GetBlock(5, 4), Block::Blank);

    // Z alone does nothing; painting the block a cell already holds changes nothing.
    Press(VeKey::Z);
    EXPECT_EQ(world->GetBlock(5, 4), Block::Blank);
    editor->SetCursor(0, 9);
    editor->SelectSlot(QmBlocks::kFirstDefaultSlot - 1 + world->GetBlock(0, 9));
    editor->Model().Save();
    Press(VeKey::Return);
    EXPECT_FALSE(editor->Model().Modified()) << "the cell already held that block";

    // The keys stop the cursor at the map's edge (Down moving it: the game's editor test).
    editor->SetCursor(0, 0);
    for (int i = 0; i < 12; ++i) {
        Press(VeKey::Right);
    }
    EXPECT_EQ(editor->CursorX(), 9);
    // A pointer resting on the map (the input reports it as moved every frame) leaves the cursor
    // to the keys.
    MoveMouse(2 * 64 + 10, 2 * 64 + 10);
    Step();
    ASSERT_EQ(editor->CursorX(), 2);
    input.mouseMoved = true;
    Press(VeKey::Right);
    input.mouseMoved = true;
    Step();
    EXPECT_EQ(editor->CursorX(), 3);
    // F with Start fills nothing.
    MoveMouse(-1, -1);
    editor->SetCursor(9, 1);
    editor->SelectSlot(1);
    const auto cells = world->blocks;
    Press(VeKey::F);
    EXPECT_EQ(world->blocks, cells);
    // Ctrl+Z and Ctrl+Y.
    editor->SelectSlot(QmBlocks::kFirstDefaultSlot);
    Press(VeKey::Delete);
    EXPECT_EQ(world->GetBlock(9, 1), Block::Blank);
    input.held[VeKey::LeftCtrl] = 1;
    Press(VeKey::Z);
    EXPECT_EQ(world->blocks, cells);
    Press(VeKey::Y);
    EXPECT_EQ(world->GetBlock(9, 1), Block::Blank);
}

TEST_F(EditorSceneTest, GivingUpACopyOrARenameKeepsTheMapAndChoosingOneTakesIt) {
    Start();
    editor->Model().Paint(1, 1, 4);
    const auto edited = world->blocks;
    editor->ExecuteCommand(QmEditor::CmdCopy);
    ASSERT_TRUE(editor->CopyPending());
    // The tour page browses other maps; giving up brings the edited map back as it was.
    world->ClearMap();
    editor->CopyAbandoned();
    EXPECT_EQ(world->blocks, edited);
    EXPECT_TRUE(editor->Model().Modified());

    editor->ExecuteCommand(QmEditor::CmdCopy);
    world->ClearMap();
    QmEditorModel::Grid chosen{};
    chosen[0] = Block::Start;
    editor->CopyChosen(chosen);
    EXPECT_EQ(world->blocks, chosen);
    EXPECT_TRUE(editor->Model().Modified());
    editor->ExecuteCommand(QmEditor::CmdUndo);
    EXPECT_EQ(world->blocks, edited) << "the copy is one step";

    const std::string file = world->CurrentMapFile();
    editor->ExecuteCommand(QmEditor::CmdEditName);
    ASSERT_TRUE(editor->NameEditing());
    editor->NameInput()->SetText("dark woods", 10);
    Press(VeKey::Escape);
    EXPECT_FALSE(editor->NameEditing());
    EXPECT_EQ(world->CurrentMapFile(), file) << "Escape keeps the old name";

    editor->ExecuteCommand(QmEditor::CmdEditName);
    editor->NameInput()->SetText("dark woods", 10);
    Press(VeKey::Return);
    EXPECT_EQ(world->mapName, "dark woods");
    EXPECT_EQ(world->CurrentMapFile(), "DarkWoods.map");
    EXPECT_EQ(world->GetMapField('n'), "dark woods");
    EXPECT_EQ(editor->StatusCode(), QmEditor::StatusRenamed);
    EXPECT_EQ(editorHost.listsChanged, 1);
}

class EditorPictureTest : public EditorSceneTest, public ::testing::WithParamInterface<bool> {};

TEST_P(EditorPictureTest, TheEditorWithItsPaletteOpen) {
    Start(GetParam());
    editor->SetCursor(3, 4);
    editor->SelectSlot(QmBlocks::kFirstDefaultSlot + 2);
    editor->SetPaletteActive(true);
    Step();
    const ScreenshotImage shot = Step();
    const std::string name = GetParam() ? "3d" : "2d";
    EXPECT_TRUE(MatchesStoredImage("editor/editor-" + name + ".png", shot, 4, 0));
    // The toolbar's save button, the palette's first column at the right edge with the selected
    // icon framed, and the status line along the bottom.
    EXPECT_NE(shot.At(12, 12), shot.At(300, 300));
    int x = 0;
    int y = 0;
    QmEditor::PaletteCell(13, 640, x, y); // slot 22: after the eleven specials and slots 20, 21
    EXPECT_EQ(shot.At(x, y), 0x00FFFFu) << "the selected icon's frame";
    EXPECT_LT(shot.At(320, 630) & 0xFF, 0x70u) << "the dark status line";
    if (!GetParam()) {
        EXPECT_EQ(shot.At(3 * 64, 4 * 64), 0x00FFFFu) << "the cursor cell's frame";
    }
}

TEST_P(EditorPictureTest, TheCheckedRouteIsShownWhileTheMapStaysAsChecked) {
    Start(GetParam());
    editor->SetCursor(0, 0);
    const ScreenshotImage before = Step();
    editor->ExecuteCommand(QmEditor::CmdCheck);
    // The search runs on the worker; a busy machine (or a sanitized build) may need a while.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(3);
    while (editor->CheckRunning() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    const ScreenshotImage shown = Step();
    ASSERT_NE(editor->CheckReport(), nullptr);
    ASSERT_EQ(editor->CheckReport()->outcome, QmPlayabilityCheck::Outcome::Finishable);
    EXPECT_EQ(editor->StatusText().rfind("FINISHABLE IN ABOUT ", 0), 0u) << editor->StatusText();
    // Between the Start (left) and the Finish (right, high up) the picture changed along the way
    // (below the cursor's row and above the animated fire).
    std::vector<std::pair<int, int>> route;
    for (int y = 64; y < 440; ++y) {
        for (int x = 0; x < 560; ++x) {
            if (shown.At(x, y) != before.At(x, y)) {
                route.emplace_back(x, y);
            }
        }
    }
    EXPECT_GT(route.size(), 300u);
    // A change to the map hides the route again.
    editor->Model().Paint(5, 0, 1);
    const ScreenshotImage changedMap = Step();
    size_t stillShown = 0;
    for (const auto& [x, y] : route) {
        stillShown += changedMap.At(x, y) == shown.At(x, y) ? 1 : 0;
    }
    EXPECT_LT(stillShown, route.size() / 4);
}

INSTANTIATE_TEST_SUITE_P(Views, EditorPictureTest, ::testing::Values(false, true),
                         [](const ::testing::TestParamInfo<bool>& info) {
                             return info.param ? "ThreeD" : "TwoD";
                         });

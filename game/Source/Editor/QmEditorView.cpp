#include "Editor/QmEditorView.h"

#include "Editor/QmEditor.h"
#include "Editor/QmEditorHost.h"
#include "Environment/ClientEnvironmentManager/QmClientEnvironmentManager.h"
#include "Form/VeTextInput.h"
#include "Screen/Surface/VeImage.h"
#include "Screen/Text/VeText.h"
#include "Screen/Text/VeTextStyle.h"

#include <string>
#include <utility>

namespace {
constexpr int kMenuColumns = QmEditor::kMenuColumns;
constexpr int kMenuCell = QmEditor::kMenuCell;
constexpr uint32_t kRouteColour = 0xFFE010;
const char* const kToolbarArt[] = {"Save",    "Play",      "MapSizeSmall", "MapSizeLarge", "Options",
                                   "LockedG", "UnlockedG", "EditableG",    "NotEditableG", "Dice",
                                   "Clear",   "Fill",      "Copy"};
const char* const kMenuArt[] = {"Select",   "Place",      "EditName", "MapSizeLarge", "Locked",
                                "Editable", "ResetScore", "Clear",    "Save",         "Play",
                                "Fill",     "Dice",       "Dice",     "Copy",         "Back"};
const char* const kStatusArt[] = {"Locked", "Unlocked", "Editable", "NotEditable", "Edited"};

// Language lines.
constexpr int kLineMenuTitle = 4;
constexpr int kLineLeave = 100;
constexpr int kLineMapName = 101;
constexpr int kLineUnsaved = 102;
constexpr int kLineSmall = 104;
constexpr int kLineLarge = 105;
constexpr int kLineBlocks = 108;
} // namespace

QmEditorView::QmEditorView(QmClientEnvironmentManager& world, QmEditorHost& host) : world(world), host(host) {
    for (const char* name : kToolbarArt) {
        toolbarImages.push_back(std::make_unique<VeImage>(std::string("Assets/EditorGUI/") + name + ".png"));
        toolbarImages.push_back(
            std::make_unique<VeImage>(std::string("Assets/EditorGUI/") + name + "Hover.png"));
    }
    for (const char* name : kMenuArt) {
        menuImages.push_back(
            std::make_unique<VeImage>(std::string("Assets/EditorGUI/DisplayControls/") + name + ".png"));
    }
    for (size_t i = 0; i < statusImages.size(); ++i) {
        statusImages[i] =
            std::make_unique<VeImage>(std::string("Assets/EditorGUI/") + kStatusArt[i] + ".png");
    }
}

QmEditorView::~QmEditorView() = default;

void QmEditorView::DrawLayer(const QmEditor& drawn, int64_t frameNow) {
    editor = &drawn;
    now = frameNow;
    if (!world.ThreeDActive()) {
        return;
    }
    const bool blinkOn = (now - editor->StatusTime()) % 1000 <= 800;
    const BlockId id = editor->SelectedId();
    QmCellLook look;
    const float column = static_cast<float>(editor->CursorX());
    const float row = static_cast<float>(editor->CursorY());
    if (world.CellLook(id, look) && look.texture != nullptr) {
        world.DrawBlock(look.texture, look.halfSize, column, row, 0, look.flat, false, false, false, 1.0f,
                        true, QmClientEnvironmentManager::kOpaqueWhite);
    }
    const QmBlockArt* cursorArt = blinkOn ? world.art.editorFlash.get() : world.art.editor.get();
    if (cursorArt != nullptr) {
        world.DrawBlock(cursorArt->Texture(world.blockSize), false, column, row, 0, false, false, false,
                        false, 1.0f, false, QmClientEnvironmentManager::kOpaqueWhite);
    }
    DrawRoute3D();
}

void QmEditorView::DrawRoute3D() {
    if (!editor->RouteCurrent() || editor->CheckReport()->path.empty()) {
        return;
    }
    // A faint trail of the racer along the run, a few steps apart.
    const QmPlayabilityCheck::Report& report = *editor->CheckReport();
    const VeTexture* racer = world.RacerTexture(world.blockSize);
    const float cell = static_cast<float>(report.blockSize);
    for (size_t i = 0; i < report.path.size(); i += 3) {
        const auto& [x, y] = report.path[i];
        world.DrawBlock(racer, true, x / cell, y / cell, 0, true, false, false, false, 0.45f, true,
                        QmClientEnvironmentManager::kOpaqueWhite);
    }
}

void QmEditorView::Draw(const QmEditor& drawn, VeSurface& overlay, int64_t frameNow) {
    editor = &drawn;
    now = frameNow;
    const bool blinkOn = (now - editor->StatusTime()) % 1000 <= 800;
    if (!world.ThreeDActive()) {
        DrawRoute2D(overlay);
        DrawCursor2D(overlay, blinkOn);
    }
    DrawToolbar(overlay);
    DrawPalette(overlay, blinkOn);
    DrawStatusLine(overlay);
    if (editor->MenuOpen()) {
        DrawMenu(overlay);
    }
    if (editor->NameInput() != nullptr) {
        DrawNameInput(overlay);
    }
}

void QmEditorView::DrawCursor2D(VeSurface& overlay, bool blinkOn) {
    const int size = world.blockSize;
    const int x = editor->CursorX() * size;
    const int y = editor->CursorY() * size;
    const VeSurface* art = world.CellArt(editor->SelectedId(), size);
    if (art != nullptr && art->width > 0) {
        overlay.BlitKeyed(*art, x, y, true);
    }
    if (blinkOn) {
        overlay.Rect(x, y, size, size, QmEditor::kMarkColour, false, true);
        overlay.Rect(x + 1, y + 1, size - 2, size - 2, QmEditor::kMarkColour, false, true);
    } else {
        overlay.Rect(x, y, size, size, QmEditor::kMarkColour, true, true);
    }
}

void QmEditorView::DrawRoute2D(VeSurface& overlay) {
    if (!editor->RouteCurrent() || editor->CheckReport()->path.size() < 2) {
        return;
    }
    // The racer's middle: its corner plus a quarter of a block.
    const float scale =
        static_cast<float>(world.blockSize) / static_cast<float>(editor->CheckReport()->blockSize);
    const float half = static_cast<float>(editor->CheckReport()->blockSize) * 0.25f;
    for (size_t i = 1; i < editor->CheckReport()->path.size(); ++i) {
        const auto& [x0, y0] = editor->CheckReport()->path[i - 1];
        const auto& [x1, y1] = editor->CheckReport()->path[i];
        const int ax = static_cast<int>((x0 + half) * scale);
        const int ay = static_cast<int>((y0 + half) * scale);
        const int bx = static_cast<int>((x1 + half) * scale);
        const int by = static_cast<int>((y1 + half) * scale);
        overlay.Line(ax, ay + 2, bx, by + 2, 0x202020, true);
        overlay.Line(ax - 1, ay, bx - 1, by, kRouteColour, true);
        overlay.Line(ax, ay, bx, by, kRouteColour, true);
        overlay.Line(ax, ay + 1, bx, by + 1, kRouteColour, true);
    }
}

void QmEditorView::DrawToolbar(VeSurface& overlay) {
    overlay.Rect(0, 0, QmEditor::kToolbarWidth, QmEditor::kToolbarTop + QmEditor::kIcon + 4, 0x000000, true,
                 true, 0.45f);
    for (int button = 0; button < QmEditor::kToolbarButtons; ++button) {
        if (!editor->ToolbarButtonVisible(button)) {
            continue;
        }
        int x = 0;
        int y = 0;
        QmEditor::ToolbarCell(button, x, y);
        const bool hover = button == editor->HoverButton();
        if (button < 13) {
            overlay.BlitKeyed(*toolbarImages[static_cast<size_t>(button * 2 + (hover ? 1 : 0))], x, y, true);
        } else if (button < 15) {
            DrawUndoIcon(overlay, x, y, button == 14, hover);
        } else {
            DrawCheckIcon(overlay, x, y, hover);
        }
    }
}

void QmEditorView::DrawUndoIcon(VeSurface& overlay, int x, int y, bool redo, bool hover) {
    const uint32_t face = hover ? 0x6FB8F0 : 0x1678D6;
    overlay.Rect(x + 1, y + 1, QmEditor::kIcon - 2, QmEditor::kIcon - 2, face, true, true);
    overlay.Rect(x, y, QmEditor::kIcon, QmEditor::kIcon, 0x0B3C6B, false, true);
    // A curved arrow: a hook of lines, the head pointing left (undo) or right (redo).
    const auto px = [&](int dx) { return redo ? x + QmEditor::kIcon - 1 - dx : x + dx; };
    for (int t = 0; t < 3; ++t) {
        overlay.Line(px(10), y + 11 + t, px(22), y + 11 + t, 0xFFFFFF, true);
        overlay.Line(px(22 + t), y + 12, px(22 + t), y + 22, 0xFFFFFF, true);
        overlay.Line(px(14), y + 20 + t, px(24), y + 20 + t, 0xFFFFFF, true);
    }
    for (int i = 0; i < 6; ++i) {
        overlay.Line(px(5 + i), y + 12 - i, px(5 + i), y + 13 + i, 0xFFFFFF, true);
    }
}

void QmEditorView::DrawCheckIcon(VeSurface& overlay, int x, int y, bool hover) {
    const uint32_t face = hover ? 0x7FF07A : 0x1ADE0C;
    overlay.Rect(x + 1, y + 1, QmEditor::kIcon - 2, QmEditor::kIcon - 2, face, true, true);
    overlay.Rect(x, y, QmEditor::kIcon, QmEditor::kIcon, 0x0C6B06, false, true);
    // A tick, with a dot while the check runs.
    for (int t = 0; t < 3; ++t) {
        overlay.Line(x + 7, y + 15 + t, x + 13, y + 21 + t, 0x0C3B06, true);
        overlay.Line(x + 13, y + 21 + t, x + 25, y + 8 + t, 0x0C3B06, true);
    }
    if (editor->CheckRunning() && (now / 250) % 2 == 0) {
        overlay.Rect(x + 24, y + 24, 5, 5, 0xFFFFFF, true, true);
    }
}

const VeSurface* QmEditorView::PaletteArt(int slot) const {
    const BlockId id = QmBlocks::PaletteSlotToId(slot, world.art.DefaultCount());
    return world.CellArt(id, QmEditor::kIcon);
}

void QmEditorView::DrawPalette(VeSurface& overlay, bool blinkOn) {
    const int count = editor->PaletteActive() ? static_cast<int>(editor->PaletteSlots().size()) : 1;
    int selectedIndex = 0;
    for (int i = 0; i < static_cast<int>(editor->PaletteSlots().size()); ++i) {
        if (editor->PaletteSlots()[static_cast<size_t>(i)] == editor->SelectedSlot()) {
            selectedIndex = i;
        }
    }
    if (editor->PaletteActive()) {
        const VeTextStyle style(2, 0xFFFFFF, 2, 1, 0);
        VeText heading(host.EditorLine(kLineBlocks), &style);
        heading.DrawOnto(overlay, overlay.width - 4 - heading.Width(), QmEditor::kPaletteTop - 22, false,
                         1.0f, 0x000000);
    }
    for (int i = 0; i < count; ++i) {
        const int index = editor->PaletteActive() ? i : selectedIndex;
        int x = 0;
        int y = 0;
        QmEditor::PaletteCell(editor->PaletteActive() ? i : 0, overlay.width, x, y);
        overlay.Rect(x, y, QmEditor::kIcon, QmEditor::kIcon, 0x303848, true, true);
        const VeSurface* art = PaletteArt(editor->PaletteSlots()[static_cast<size_t>(index)]);
        if (art != nullptr && art->width > 0) {
            overlay.BlitKeyed(*art, x, y, true);
        }
        if (index == selectedIndex) {
            if (blinkOn) {
                overlay.Rect(x, y, QmEditor::kIcon, QmEditor::kIcon, QmEditor::kMarkColour, false, true);
                overlay.Rect(x + 1, y + 1, QmEditor::kIcon - 2, QmEditor::kIcon - 2, QmEditor::kMarkColour,
                             false, true);
            } else {
                overlay.Rect(x, y, QmEditor::kIcon, QmEditor::kIcon, QmEditor::kMarkColour, true, true);
            }
        }
    }
}

void QmEditorView::DrawStatusLine(VeSurface& overlay) {
    const int top = overlay.height - QmEditor::kStatusHeight;
    overlay.Rect(0, top, overlay.width, QmEditor::kStatusHeight, 0x000000, true, true, 0.6f);
    const VeTextStyle style(2, 0xFFFFFF, 2, 1, 0);
    // The map: its flags, its name and size, and whether it has unsaved changes.
    int x = 4;
    overlay.BlitKeyed(*statusImages[world.locked ? 0 : 1], x, top + 5, true);
    x += 20;
    overlay.BlitKeyed(*statusImages[world.editable ? 2 : 3], x, top + 5, true);
    x += 20;
    if (editor->Model().Modified()) {
        overlay.BlitKeyed(*statusImages[4], x, top + 5, true);
    }
    x += 22;
    // The latest message on the right: a check's result stays while the map is as checked.
    const bool checkShown = (editor->StatusCode() == QmEditor::StatusCheckDone && editor->RouteCurrent()) ||
                            editor->StatusCode() == QmEditor::StatusChecking;
    std::string message;
    if (checkShown || (editor->StatusCode() != QmEditor::StatusNone &&
                       now - editor->StatusTime() < QmEditor::kStatusShownMs)) {
        message = editor->StatusText();
    } else if (editor->Model().Modified()) {
        message = host.EditorLine(kLineUnsaved);
    }
    int messageX = overlay.width;
    if (!message.empty()) {
        VeText text(message, &style);
        messageX = overlay.width - 6 - text.Width();
        const bool good = editor->StatusCode() != QmEditor::StatusCheckDone ||
                          editor->CheckReport() == nullptr ||
                          editor->CheckReport()->outcome == QmPlayabilityCheck::Outcome::Finishable;
        VeTextStyle coloured = style;
        coloured.Colour(good ? 0xFFFFFF : 0xFF6060);
        VeText::DrawString(overlay, message, messageX, top + 6, coloured, false, 1.0f, 0x000000);
    }
    // The name and the size on the left, as much of it as the message leaves room for.
    const std::string size = host.EditorLine(
        world.blockSize == QmCoreEnvironmentManager::kLargeBlockSize ? kLineSmall : kLineLarge);
    for (const std::string& left : {world.mapName + "  " + size, world.mapName}) {
        if (x + VeText(left, &style).Width() + 12 <= messageX) {
            VeText::DrawString(overlay, left, x, top + 6, style, false, 1.0f, 0x000000);
            break;
        }
    }
}

void QmEditorView::DrawMenu(VeSurface& overlay) {
    const int left = (overlay.width - kMenuColumns * kMenuCell) / 2;
    const int top = QmEditor::kMenuTop;
    const int rows = (QmEditor::kCommandCount + kMenuColumns - 1) / kMenuColumns;
    overlay.Rect(left - 12, top - 48, kMenuColumns * kMenuCell + 24, rows * kMenuCell + 60, 0x18202C, true,
                 true, 0.92f);
    overlay.Rect(left - 12, top - 48, kMenuColumns * kMenuCell + 24, rows * kMenuCell + 60,
                 QmEditor::kMarkColour, false, true);
    const VeTextStyle title(3, 0xFFFFFF, 3, 2, 0);
    VeText::DrawString(overlay, host.EditorLine(kLineMenuTitle), overlay.width / 2, top - 38, title, true,
                       1.0f, 0x000000);
    for (int entry = 0; entry < QmEditor::kCommandCount; ++entry) {
        const int x = left + (entry % kMenuColumns) * kMenuCell;
        const int y = top + (entry / kMenuColumns) * kMenuCell;
        const bool chosen = entry == editor->MenuSelection();
        overlay.Rect(x + 2, y + 2, kMenuCell - 4, kMenuCell - 4, chosen ? 0x2E6FA8 : 0x2A3340, true, true);
        if (chosen) {
            overlay.Rect(x + 2, y + 2, kMenuCell - 4, kMenuCell - 4, QmEditor::kMarkColour, false, true);
        }
        if (entry < static_cast<int>(menuImages.size())) {
            overlay.BlitKeyed(*menuImages[static_cast<size_t>(entry)], x + 10, y + 10, true);
        } else if (entry == QmEditor::CmdCheck) {
            DrawCheckIcon(overlay, x + 6, y + 6, false);
        } else {
            DrawUndoIcon(overlay, x + 6, y + 6, entry == QmEditor::CmdRedo, false);
        }
    }
    // The chosen command's name where the language has one.
    if (editor->MenuSelection() == QmEditor::CmdLeave) {
        const VeTextStyle style(2, 0xFFFFFF, 2, 1, 0);
        VeText::DrawString(overlay, host.EditorLine(kLineLeave), overlay.width / 2, top + rows * kMenuCell,
                           style, true, 1.0f, 0x000000);
    }
}

void QmEditorView::DrawNameInput(VeSurface& overlay) {
    overlay.Rect(150, 250, 340, 100, 0x18202C, true, true, 0.92f);
    overlay.Rect(150, 250, 340, 100, QmEditor::kMarkColour, false, true);
    const VeTextStyle style(3, 0xFFFFFF, 3, 2, 0);
    VeText::DrawString(overlay, host.EditorLine(kLineMapName), overlay.width / 2, 262, style, true, 1.0f,
                       0x000000);
    editor->NameInput()->Draw(overlay, false, false);
}

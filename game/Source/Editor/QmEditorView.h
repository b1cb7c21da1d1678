#pragma once
// How the editor shows itself: in 3D the cursor (the selected block and the blinking cursor cube)
// and the checked route as items of the world's pass; on the overlay the 2D cursor and route, the
// toolbar, the palette, the status line, the command menu and the name input. The questions are
// the host's notice dialog, drawn over all of it.
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

class QmClientEnvironmentManager;
class QmEditor;
class QmEditorHost;
class VeImage;
class VeSurface;

class QmEditorView {
public:
    // Loads the toolbar, command and status images from "Assets/EditorGUI/".
    QmEditorView(QmClientEnvironmentManager& world, QmEditorHost& host);
    ~QmEditorView();
    QmEditorView(const QmEditorView&) = delete;
    QmEditorView& operator=(const QmEditorView&) = delete;

    // Inside the world's pass (3D only).
    void DrawLayer(const QmEditor& editor, int64_t now);
    // After the pass, onto the overlay.
    void Draw(const QmEditor& editor, VeSurface& overlay, int64_t now);

private:
    void DrawRoute3D();
    void DrawCursor2D(VeSurface& overlay, bool blinkOn);
    void DrawRoute2D(VeSurface& overlay);
    void DrawToolbar(VeSurface& overlay);
    void DrawPalette(VeSurface& overlay, bool blinkOn);
    void DrawStatusLine(VeSurface& overlay);
    void DrawMenu(VeSurface& overlay);
    void DrawNameInput(VeSurface& overlay);
    void DrawUndoIcon(VeSurface& overlay, int x, int y, bool redo, bool hover);
    void DrawCheckIcon(VeSurface& overlay, int x, int y, bool hover);
    const VeSurface* PaletteArt(int slot) const;

    QmClientEnvironmentManager& world;
    QmEditorHost& host;
    // The editor being drawn, for the length of a Draw or DrawLayer.
    const QmEditor* editor = nullptr;
    int64_t now = 0;
    std::vector<std::unique_ptr<VeImage>> toolbarImages;
    std::vector<std::unique_ptr<VeImage>> menuImages;
    std::array<std::unique_ptr<VeImage>, 5> statusImages;
};

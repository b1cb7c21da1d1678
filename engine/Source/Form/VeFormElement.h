#pragma once
// Form elements: buttons, checkboxes and text inputs drawn in software onto a surface.
//
// A page keeps its elements under their names, decides every frame which one has the focus
// (selected) and which one the mouse is over (hovered), calls Update and Draw, and reads an
// element's value text after StoreValue. Disabled elements draw darkened and ignore all input.
// While the mouse is over an enabled element, Update asks for the element's cursor kind (hand
// over buttons and checkboxes, the text I-beam over text inputs); the page sets the arrow
// elsewhere and the screen shows the system cursor of that kind.
#include <cstdint>
#include <string>

class VeInput;
class VeSurface;

// The process's cursor kinds, as the screen applies them (VeCursor).
namespace VeCursorKind {
enum : int32_t {
    Arrow = 0,
    IBeam = 1,
    Hand = 2,
    GameImage = 3, // the game draws its own pointer image
    Hidden = 4,
    None = -1, // an element that leaves the cursor alone
};
} // namespace VeCursorKind

class VeFormElement {
public:
    VeFormElement() = default;
    virtual ~VeFormElement() = default;
    VeFormElement(const VeFormElement&) = delete;
    VeFormElement& operator=(const VeFormElement&) = delete;

    // Draws the element onto the target; with checkBounds, anything outside the target halts.
    // mouseOver adds to the hovered flag.
    virtual void Draw(VeSurface& target, bool checkBounds, bool mouseOver) = 0;
    // Reads the keys and the mouse of this frame (only while enabled).
    virtual void Update(VeInput& input, bool mouseOver) = 0;
    // What a confirm does to the element (a checkbox flips); nothing by default.
    virtual void Activate() {}
    // Copies the element's state into value.
    virtual void StoreValue() = 0;

    // The box, edges included, contains the point.
    bool Contains(int32_t pointX, int32_t pointY) const;
    // The input's mouse pointer is over the box.
    bool MouseOver(const VeInput& input) const;

    std::string name;
    std::string value;
    bool selected = false;
    bool wasSelected = false;
    bool hovered = false;
    int32_t width = 0;
    int32_t height = 0;
    float x = 0.0f;
    float y = 0.0f;
    bool enabled = true;
    // The cursor kind asked for while the mouse is over the element (VeCursorKind::None: none).
    int32_t hoverCursor = VeCursorKind::None;

protected:
    // Cursor feedback of an enabled element under the mouse.
    void ShowHoverCursor(bool mouseOver) const;
    // The whole-pixel position.
    int32_t Left() const { return static_cast<int32_t>(x); }
    int32_t Top() const { return static_cast<int32_t>(y); }
    // Rings of the colour inside the box, the outermost first (buttons and checkboxes).
    void DrawRings(VeSurface& target, int32_t thickness, uint32_t colour, bool checkBounds) const;
};

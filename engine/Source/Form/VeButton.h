#pragma once
// A push button: a filled box or an image with border rings and a centred label. While it has the
// focus (selected) it shows the hover look of its style. The page decides what a press means: it
// asks Clicked (the left mouse button went down over the button this frame) or Confirmed (Space,
// Return or keypad Enter while the button has the focus); a disabled button answers neither.
#include "Form/VeButtonStyle.h"
#include "Form/VeFormElement.h"
#include "Screen/Text/VeText.h"

#include <string>

class VeTextStyle;

class VeButton : public VeFormElement {
public:
    // Without a style the button waits for SetStyle (a row of buttons gives its own); an unstyled
    // label waits for SetLabelStyle.
    explicit VeButton(const std::string& label, const VeButtonStyle* style = nullptr,
                      const VeTextStyle* labelStyle = nullptr);

    void Draw(VeSurface& target, bool checkBounds, bool mouseOver) override;
    // Cursor feedback.
    void Update(VeInput& input, bool mouseOver) override;
    void StoreValue() override {}

    // Copies the style's look, size and position (whole pixels) into the button.
    void SetStyle(const VeButtonStyle* newStyle);
    bool HasStyle() const { return style != nullptr; }
    // Styles the label; its colour becomes the label's normal colour.
    void SetLabelStyle(const VeTextStyle& labelStyle);
    bool LabelStyled() const { return label.styleApplied; }
    void SetLabel(const std::string& text);
    const std::string& Label() const { return label.text; }
    const VeText& LabelText() const { return label; }

    bool Clicked(const VeInput& input, bool mouseOver) const;
    bool Confirmed(const VeInput& input) const;
    // Either of the two.
    bool Pressed(const VeInput& input, bool mouseOver) const;

    // The button's own copy of its style (an unstyled button is 0 x 0).
    VeButtonStyle look{0, 0};

private:
    void SetLabelColour(uint32_t colour);

    VeText label;
    uint32_t normalLabelColour = 0;
    const VeButtonStyle* style = nullptr;
};

#pragma once
// A checkbox. Space flips it while it has the focus (every auto-repeat of a held Space flips it
// again), and so does Activate; a disabled box draws darkened and stays as it is. StoreValue
// makes value "1" or "0".
#include "Form/VeCheckboxStyle.h"
#include "Screen/Text/VeText.h"

class VeCheckbox : public VeCheckboxStyle {
public:
    // Copies the style's colours, border, mark and size; places the box at (x, y).
    VeCheckbox(const VeCheckboxStyle* style, float x, float y, bool startChecked = false);

    void Draw(VeSurface& target, bool checkBounds, bool mouseOver) override;
    void Update(VeInput& input, bool mouseOver) override;
    // Flips the box when it has the focus.
    void Activate() override;
    void StoreValue() override;

    bool checked = false;

private:
    void MakeMarkText();

    VeText markText;
};

#include "Form/VeButton.h"
#include "Form/VeCheckbox.h"
#include "Form/VeTextInput.h"

#include "engine/Form/FormTestKit.h"

#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeTextStyle.h"
#include "Support/HaltCapture.h"
#include "Support/Screenshot.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>

namespace {

// A small sign-in form as a page keeps it: elements under their names, drawn onto the page.
class SignInForm {
public:
    explicit SignInForm(VeInput* input)
        : buttonStyle(100, 30), labelStyle(2, 0xDDDDDD, 2, 1, 1), inputStyle(2, 0x202020, 1, 1, 1) {
        buttonStyle.normalFillColour = 0x333333;
        buttonStyle.borderColour = 0x000000;
        buttonStyle.hoverBorderColour = 0xFF0000;
        buttonStyle.hoverBorderThickness = 4;
        buttonStyle.hoverLabelColourOn = true;
        buttonStyle.hoverLabelColour = 0xFFFFFF;
        buttonStyle.hoverSound = "Hover";

        elements["ipt_username"] =
            std::make_unique<VeTextInput>(input, 20.0f, 16.0f, 160, 28, inputStyle, 12, "Quill");
        auto password = std::make_unique<VeTextInput>(input, 20.0f, 52.0f, 160, 28, inputStyle, 12, "maze");
        password->SetPassword();
        elements["ipt_password"] = std::move(password);
        elements["ipt_setdefault"] = std::make_unique<VeCheckbox>(&boxStyle, 196.0f, 20.0f, true);
        elements["ipt_agree"] = std::make_unique<VeCheckbox>(&boxStyle, 196.0f, 56.0f);
        buttonStyle.x = 20.0f;
        buttonStyle.y = 96.0f;
        elements["btn_login"] = std::make_unique<VeButton>("Log in", &buttonStyle, &labelStyle);
        buttonStyle.x = 136.0f;
        elements["btn_back"] = std::make_unique<VeButton>("Back", &buttonStyle, &labelStyle);
        elements["btn_back"]->enabled = false;
    }

    void Draw(VeSurface& target) {
        for (auto& [key, element] : elements) {
            element->Draw(target, true, false);
        }
    }

    VeButtonStyle buttonStyle;
    VeTextStyle labelStyle;
    VeTextStyle inputStyle;
    VeCheckboxStyle boxStyle;
    std::map<std::string, std::unique_ptr<VeFormElement>> elements;
};

} // namespace

TEST(VeFormElementTest, ASignInFormLooksAsStored) {
    FormRig rig;
    rig.now = 7200; // the caret's visible half
    SignInForm form(rig.input.get());
    form.elements["ipt_username"]->selected = true;
    form.elements["ipt_agree"]->hovered = true;
    form.elements["btn_login"]->selected = true;

    VeSurface page(256, 140);
    page.Fill(0x1C2A44);
    form.Draw(page);
    EXPECT_TRUE(MatchesStoredImage("form/SignInForm.png", ScreenshotOf(page), 0, 0));
}

TEST(VeFormElementTest, CheckedDrawingHaltsWhenAnElementLeavesTheSurface) {
    FormRig rig;
    SignInForm form(rig.input.get());
    VeSurface small(120, 60);
    EXPECT_HALT(form.elements["ipt_agree"]->Draw(small, true, false), "Halt: Plotting outside of buffer",
                "App halted when trying to plot outside of buffer in (VeSurface::Rect)");
    // Unchecked drawing clips instead.
    form.elements["ipt_agree"]->Draw(small, false, false);
    form.elements["btn_back"]->Draw(small, false, false);
    form.elements["ipt_username"]->Draw(small, false, false);
}

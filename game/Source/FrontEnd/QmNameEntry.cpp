#include "FrontEnd/QmNameEntry.h"

#include "Controls/QmControls.h"
#include "Input/VeInput.h"
#include "Screen/Surface/VeSurface.h"
#include "Screen/Text/VeGlyphs.h"

#include <cctype>

std::string QmNameEntry::DrawableName(const std::string& typed) {
    std::string name;
    for (char c : typed) {
        const unsigned char upper = static_cast<unsigned char>(std::toupper(static_cast<unsigned char>(c)));
        if (upper == ':' || upper == ';' || (upper != ' ' && !VeGlyphs::HasMain(upper))) {
            continue;
        }
        if (upper == ' ' && (name.empty() || name.back() == ' ')) {
            continue; // no leading or doubled blanks
        }
        name.push_back(static_cast<char>(upper));
    }
    while (!name.empty() && name.back() == ' ') {
        name.pop_back();
    }
    if (name.size() > static_cast<size_t>(kMaxNameLength)) {
        name.resize(kMaxNameLength);
        while (!name.empty() && name.back() == ' ') {
            name.pop_back();
        }
    }
    return name;
}

void QmNameEntry::Open(VeInput* state, const std::string& promptText, const std::string& prefilled,
                       int screenWidth) {
    const VeTextStyle promptStyle(2, 0xFFFFFF, 2, 2, 0);
    prompt = VeText(promptText, &promptStyle);
    input = std::make_unique<VeTextInput>(state, static_cast<float>((screenWidth - kInputWidth) / 2),
                                          static_cast<float>(kInputY), kInputWidth, kInputHeight, inputStyle,
                                          kMaxNameLength, DrawableName(prefilled));
    input->name = kInputName;
    input->paddingY = (kInputHeight - input->text.Height()) / 2;
    input->selected = true;
    typed.clear();
}

void QmNameEntry::Close() {
    if (input && input->input != nullptr) {
        input->selected = false;
        input->Update(*input->input, false); // gives the key repeat timing back
    }
    input.reset();
}

QmNameEntry::Result QmNameEntry::Update(VeInput* state, QmControls& controls) {
    if (!input) {
        return Result::None;
    }
    if (controls.Back()) {
        return Decline();
    }
    if (controls.Confirm()) {
        return Confirm();
    }
    if (state != nullptr) {
        input->input = state;
        input->Update(*state, input->MouseOver(*state));
    }
    return Result::None;
}

QmNameEntry::Result QmNameEntry::Confirm() {
    if (!input) {
        return Result::None;
    }
    input->StoreValue();
    typed = input->value;
    Close();
    return Result::Confirmed;
}

QmNameEntry::Result QmNameEntry::Decline() {
    if (!input) {
        return Result::None;
    }
    typed.clear();
    Close();
    return Result::Declined;
}

void QmNameEntry::Draw(VeSurface& target) {
    if (!input) {
        return;
    }
    prompt.DrawOnto(target, target.width / 2, kPromptY - prompt.Height() / 2, true, 1.0f, 0x000000);
    input->Draw(target, false, false);
}

std::string QmNameEntry::TakenName(const std::string& fallback) const {
    const std::string name = DrawableName(typed);
    return name.empty() ? DrawableName(fallback) : name;
}

#pragma once
// Page 0: the logo in the middle and a blinking prompt under it. A key (Space, Return, keypad
// Enter), a left click or six seconds lead to the main menu; Escape there quits the game (the
// coordinator's rule). The clock is injectable so the timeout can be tested.
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <cstdint>
#include <functional>
#include <memory>

class VeImage;
class VeText;

class QmIntroPage : public QmMenuPage {
public:
    static constexpr int kPromptLine = 13;
    static constexpr int64_t kTimeoutMs = 6000;

    // clock: milliseconds since any fixed point (the wall clock by default).
    explicit QmIntroPage(std::function<int64_t()> clock = nullptr);
    ~QmIntroPage() override;
    QmIntroPage(const QmIntroPage&) = delete;
    QmIntroPage& operator=(const QmIntroPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // The timeout counts from now.
    void Restart();
    // The prompt with the width of the page.
    QmTextBoxes TextBoxes() const;

private:
    std::function<int64_t()> clock;
    int64_t startClock = 0;
    std::unique_ptr<VeImage> logo;
    std::unique_ptr<VeText> prompt;
    std::unique_ptr<VeText> promptShadow;
    float logoX = 0.0f;
    float logoY = 0.0f;
    float promptX = 0.0f;
    float promptY = 0.0f;
};

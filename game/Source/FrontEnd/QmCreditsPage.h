#pragma once
// Page 13: who made the game, the version, a thank-you line and a Back button; Back, Escape or the
// pad's B return to the main menu.
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <memory>
#include <string>
#include <vector>

class VeButtonRow;
class VeButtonStyle;
class VeText;
class VeTextStyle;

class QmCreditsPage : public QmMenuPage {
public:
    static constexpr int kBackLine = 22;
    static constexpr int kFooterLine = 21;
    static constexpr int kVersionLine = 185;

    QmCreditsPage();
    ~QmCreditsPage() override;
    QmCreditsPage(const QmCreditsPage&) = delete;
    QmCreditsPage& operator=(const QmCreditsPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // The credits list, line by line, in the current language.
    std::vector<std::string> Lines() const;
    const VeButtonRow& Row() const { return *row; }
    // Every line within the page's right edge and its own line step, the footer, the Back label.
    QmTextBoxes TextBoxes() const;

private:
    std::unique_ptr<VeTextStyle> listStyle;
    std::unique_ptr<VeTextStyle> labelStyle;
    std::unique_ptr<VeButtonStyle> buttonStyle;
    std::unique_ptr<VeButtonRow> row;
    std::vector<std::unique_ptr<VeText>> list;
    std::unique_ptr<VeText> footer;
};

#pragma once
// The rules page (page 6): the rules of the online service as wrapped text, one paragraph each,
// and a Back button to the login page (Return, Escape, the pad's A or B, or a click).
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <memory>

class QmRulesPage : public QmMenuPage {
public:
    QmRulesPage();
    ~QmRulesPage() override;
    QmRulesPage(const QmRulesPage&) = delete;
    QmRulesPage& operator=(const QmRulesPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // Every text the page shows now, with the room its box or button gives it.
    QmTextBoxes TextBoxes() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};

#pragma once
// The options page (page 12), made anew each time the main menu opens it: checkboxes for full
// screen, music, 3D graphics, the animated menu background and automatic updates, the four
// language flags in a row (the chosen one framed), and the buttons Apply and Back. Apply saves
// "options.dat" and switches the language at once (every page is relabelled); Back leaves without
// saving anything.
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <memory>

class QmOptionsPage : public QmMenuPage {
public:
    QmOptionsPage();
    ~QmOptionsPage() override;
    QmOptionsPage(const QmOptionsPage&) = delete;
    QmOptionsPage& operator=(const QmOptionsPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // Every text the page shows now, with the room its box or button gives it.
    QmTextBoxes TextBoxes() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};

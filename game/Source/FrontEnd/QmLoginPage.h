#pragma once
// The login page (page 4): the user name, the password (masked) and "remember me", with the
// buttons Log in, Register (page 5), Rules (page 6) and Back. Log in sends the name and password
// to the online service; while the answer is out the page says so and Log in is disabled. A good
// login goes on to the shared maps (page 7) and keeps the name and password in the options when
// "remember me" is checked (unchecked, nothing is kept and an earlier password is removed); any
// other outcome is said in red under the form, in the player's language.
//
// Keys: the focus starts on the user name; Down or Tab walk name, password, "remember me", then
// the buttons (Log in, Register on the first row, Rules, Back on the second); Return in the
// password field logs in, Space flips the box, Escape goes back to the main menu.
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <memory>

class QmLoginPage : public QmMenuPage {
public:
    QmLoginPage();
    ~QmLoginPage() override;
    QmLoginPage(const QmLoginPage&) = delete;
    QmLoginPage& operator=(const QmLoginPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // Opened from the main menu: the remembered name and password filled in, no earlier answer shown.
    void Open();
    // Every text the page shows now, with the room its box or button gives it.
    QmTextBoxes TextBoxes() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};

#pragma once
// The registration page (page 5): user name, password (masked), e-mail and the box "I accept the
// rules", with the buttons Register and Back (to the login page). Register stays disabled until
// the box is checked. While the answer is out the page says so; a new account is logged in at
// once and goes on to the shared maps (page 7); the service's refusals (a taken name or e-mail,
// an e-mail that is no address, an empty field) and every failure are said in red under the form.
//
// Keys: Down or Tab walk name, password, e-mail, the box, then the buttons (Register, Back);
// Space flips the box, Return on a button activates it, Escape goes back to the login page.
#include "FrontEnd/QmMenuPage.h"
#include "FrontEnd/QmTextBox.h"

#include <memory>

class QmRegistrationPage : public QmMenuPage {
public:
    QmRegistrationPage();
    ~QmRegistrationPage() override;
    QmRegistrationPage(const QmRegistrationPage&) = delete;
    QmRegistrationPage& operator=(const QmRegistrationPage&) = delete;

    void Frame() override;
    void Relabel() override;
    // Every text the page shows now, with the room its box or button gives it.
    QmTextBoxes TextBoxes() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl;
};

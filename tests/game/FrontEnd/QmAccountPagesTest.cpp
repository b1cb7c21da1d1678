// The login, registration and update flows against the real service on loopback, driven by keys
// as a player drives them.
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmLoginPage.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "FrontEnd/QmRegistrationPage.h"
#include "Input/VeKey.h"
#include "MenuPageGame.h"
#include "Platform/VeFiles.h"
#include "Support/LoopbackService.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

class AccountPagesTest : public MenuPageGame {
protected:
    void SetUp() override {
        ASSERT_TRUE(service.Reachable());
        setenv("QUILLMAZE_SERVICE", service.Url().c_str(), 1);
        MenuPageGame::SetUp();
        unsetenv("QUILLMAZE_SERVICE");
        ASSERT_NE(app->network, nullptr);
        app->network->SetAutoUpdates(false);
    }

    // Typed into the field with the focus: lower-case letters, digits, '@' and '.'.
    template <typename Page> void Type(Page& page, const std::string& text) {
        for (const char c : text) {
            if (c == '@') {
                Keys(page, {VeKey::LeftShift, VeKey::Num1 + 1});
            } else if (c == '.') {
                Keys(page, {VeKey::Period});
            } else if (c >= '1' && c <= '9') {
                Keys(page, {VeKey::Num1 + (c - '1')});
            } else {
                Keys(page, {VeKey::A + (c - 'a')});
            }
        }
    }

    // The page's frames until no request is out, then one more for the page to read the answer.
    template <typename Page> void Settle(Page& page) {
        EXPECT_TRUE(Settled(page));
        Run(page);
    }

    // Name, password and e-mail typed on a fresh registration page, then Return in the e-mail
    // field: it registers when the agreement box is checked, else moves on to the box.
    void Fill(QmRegistrationPage& page, const std::string& name) {
        Type(page, name);
        Keys(page, {VeKey::Down});
        Type(page, "secret1");
        Keys(page, {VeKey::Tab});
        Type(page, name + "@example.org");
        Keys(page, {VeKey::Return});
    }

    // Logged out, on the login page with the name and password typed over what it holds, "remember
    // me" as asked.
    void LogIn(QmLoginPage& page, const std::string& name, const std::string& password, bool remember) {
        app->network->Logout();
        coordinator->SetMenuPage(QmMenuPages::kLogin);
        page.Open();
        for (const std::string& text : {name, password}) {
            for (int i = 0; i < 12; ++i) {
                Keys(page, {VeKey::Backspace});
            }
            Type(page, text);
            Keys(page, {VeKey::Down});
        }
        if (coordinator->Option(QmOptions::kPassword).empty() == remember) {
            Keys(page, {VeKey::Space});
        }
        Presses(page, {VeKey::Up, VeKey::Return}); // in the password field: log in
        Settle(page);
    }

    LoopbackService service;
};

// (The journey registers through the page with the Register button and goes on to the shared maps.)
TEST_F(AccountPagesTest, RegistrationNeedsTheAgreementAndSaysWhyItFails) {
    coordinator->SetMenuPage(QmMenuPages::kRegistration);
    QmRegistrationPage page;
    app->network->Register("ann", "secret1", "ann@example.org");
    Settle(page);
    app->network->Logout();
    Fill(page, "ann");
    EXPECT_FALSE(app->network->IsWaiting()) << "Register is disabled without the box";
    Presses(page, {VeKey::Space, VeKey::Up, VeKey::Return}); // Return in the e-mail field registers now
    EXPECT_TRUE(Shows(page.TextBoxes(), 155)) << "the waiting line";
    Settle(page);
    EXPECT_TRUE(Shows(page.TextBoxes(), 147)) << "the name is taken";
    EXPECT_FALSE(app->network->IsLoggedIn());
}

TEST_F(AccountPagesTest, LoginSaysWhatWentWrongAndRemembersOnlyWhenAsked) {
    coordinator->SetMenuPage(QmMenuPages::kLogin);
    QmLoginPage page;
    app->network->Register("bea", "secret1", "bea@example.org");
    Settle(page);

    LogIn(page, "bea", "wrong", true);
    EXPECT_TRUE(Shows(page.TextBoxes(), 152)) << "wrong name or password, in red";
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmMenuPages::kLogin);

    LogIn(page, "bea", "secret1", true);
    EXPECT_EQ(coordinator->CurrentMenuPage(), QmMenuPages::kSharedMaps);
    QmOptions stored;
    stored.LoadOptions();
    EXPECT_EQ(stored.Get(QmOptions::kUsername), "bea");
    EXPECT_EQ(stored.Get(QmOptions::kPassword), "secret1");
    struct stat info {};
    ASSERT_EQ(stat(QmOptions::FilePath().c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u) << "a file with a password is the owner's alone";

    LogIn(page, "bea", "secret1", false);
    EXPECT_TRUE(app->network->IsLoggedIn());
    stored.LoadOptions();
    EXPECT_EQ(stored.Get(QmOptions::kPassword), "") << "unchecked: the earlier password is removed";

    app->network->SetService("http://127.0.0.1:" + std::to_string(LoopbackService::FreePort()));
    LogIn(page, "bea", "secret1", false);
    EXPECT_TRUE(Shows(page.TextBoxes(), 165)) << "nobody answers";
    app->network->SetService("http://203.0.113.7:8080");
    LogIn(page, "bea", "secret1", false);
    EXPECT_TRUE(Shows(page.TextBoxes(), 209)) << "no password in clear text to a public address";
    EXPECT_FALSE(app->network->IsLoggedIn());
}

TEST_F(AccountPagesTest, YesOnTheUpdateNoticeFetchesThePackageAndSaysWhereItIs) {
    const std::string package = GetGameFolder() + "/published.tar.gz";
    CreateFolder(GetGameFolder());
    ASSERT_TRUE(WriteFileAtomic(package, std::string("\x1f\x8b", 2) + "our package"));
    ASSERT_TRUE(service.Admin({"publish", package}));
    ASSERT_TRUE(service.Admin({"set-version", "107"}));
    app->network->SetAutoUpdates(true); // before the client's first frame
    QmMenuPages& menu = coordinator->FrontEnd().MenuPages();
    menu.SetPage(QmMenuPages::kMainMenu);
    QmNoticeDialog& dialog = coordinator->FrontEnd().Dialog();
    ASSERT_TRUE(Until(menu, [&] { return dialog.Visible(); })) << "the version check announces the update";
    Keys(menu, {VeKey::Return}); // Yes
    ASSERT_TRUE(Until(menu, [&] { return !menu.UpdateDownloading(); }));
    Run(menu);
    ASSERT_TRUE(dialog.Visible());
    EXPECT_NE(dialog.Body().text.find(GetGameFolder() + "/quillmaze-update.tar.gz"), std::string::npos);
    std::string bytes;
    ASSERT_TRUE(ReadFileBytes(GetGameFolder() + "/quillmaze-update.tar.gz", bytes));
    EXPECT_EQ(bytes, std::string("\x1f\x8b", 2) + "our package");
}

} // namespace

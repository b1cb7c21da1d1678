#include "FrontEnd/QmLoginPage.h"

#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Form/VeCheckbox.h"
#include "Form/VeTextInput.h"
#include "FrontEnd/Options/QmOptions.h"
#include "FrontEnd/QmAccountForm.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmPageLinks.h"
#include "Network/QmNetworkManager.h"
#include "Screen/VeScreen.h"

namespace {
constexpr int kTitleLine = 141;
constexpr int kUserNameLine = 142;
constexpr int kPasswordLine = 143;
constexpr int kRememberLine = 144;
constexpr int kLogInLine = 138;
constexpr int kRegisterLine = 140;
constexpr int kRulesLine = 137;
constexpr int kBackLine = 22;
constexpr int kEmptyFieldLine = 150;
constexpr int kWrongLoginLine = 152;
constexpr int kLoggingInLine = 154;
constexpr int kCannotReachLine = 165;
constexpr int32_t kNameLength = 24;
constexpr int32_t kPasswordLength = 32;
enum Button { kLogInButton, kRegisterButton, kRulesButton, kBackButton };
} // namespace

class QmLoginPage::Impl {
public:
    Impl() {
        form.SetTitle(kTitleLine);
        user = &form.AddInput("ipt_username", kUserNameLine, kNameLength, false);
        password = &form.AddInput("ipt_password", kPasswordLine, kPasswordLength, true);
        remember = &form.AddCheckbox("ipt_setdefault", kRememberLine);
        form.SetButtons({{kLogInLine, kRegisterLine}, {kRulesLine, kBackLine}});
        Open();
    }

    static QmNetworkManager* Network() { return QmMenuPage::C()->app->network; }

    void Open() {
        if (pending) {
            return; // the answer to the login still out is this page's
        }
        VaCoordinator* c = QmMenuPage::C();
        const std::string& name = c->Option(QmOptions::kUsername);
        const std::string& secret = c->Option(QmOptions::kPassword);
        user->SetText(name, static_cast<int32_t>(name.size()));
        password->SetText(secret, static_cast<int32_t>(secret.size()));
        remember->checked = !secret.empty();
        form.SetStatus(0, QmAccountForm::kErrorColour);
        form.FocusFirst();
        if (QmNetworkManager* network = Network()) {
            // What the service said before the page opened is not this page's to show.
            network->TakeNotices();
            network->TakeLoginResult();
        }
    }

    void Submit() {
        QmNetworkManager* network = Network();
        std::string name = user->Content();
        while (!name.empty() && name.back() == ' ') {
            name.pop_back();
        }
        if (network == nullptr) {
            form.SetStatus(kCannotReachLine, QmAccountForm::kErrorColour);
        } else if (name.empty() || password->Content().empty()) {
            form.SetStatus(kEmptyFieldLine, QmAccountForm::kErrorColour);
        } else {
            network->TakeNotices();
            network->TakeLoginResult();
            network->TakeRegisterMessage();
            sentName = name;
            sentPassword = password->Content();
            network->Login(sentName, sentPassword);
            pending = true;
            form.SetStatus(kLoggingInLine, QmAccountForm::kWaitingColour);
        }
    }

    // The name and password kept for the next time, or nothing kept.
    void Remember() {
        QmOptions& options = QmMenuPage::C()->Options();
        const std::string name = remember->checked ? sentName : std::string();
        const std::string secret = remember->checked ? sentPassword : std::string();
        if (options.Get(QmOptions::kUsername) != name || options.Get(QmOptions::kPassword) != secret) {
            options.Set(QmOptions::kUsername, name);
            options.Set(QmOptions::kPassword, secret);
            options.SaveOptions();
        }
    }

    // The answer, once nothing is out any more; false when the page was left for another.
    bool Poll() {
        const QmAccountForm::Answer answer = form.TakeAnswer(Network(), kWrongLoginLine);
        if (answer == QmAccountForm::Answer::Waiting) {
            return true;
        }
        pending = false;
        if (answer == QmAccountForm::Answer::LoggedIn) {
            Remember();
            QmPageLinks::SetPage(QmMenuPages::kSharedMaps);
            return false;
        }
        return true; // a refusal is on the status line; an update is the menu's to ask for
    }

    void Frame() {
        VaCoordinator* c = QmMenuPage::C();
        if (pending && !Poll()) {
            return;
        }
        const int activated = form.Update(c->Controls(), c->app->input);
        if (activated == QmAccountForm::kBack || activated == kBackButton) {
            QmPageLinks::BackToMainMenu();
            return;
        }
        if (activated == kRegisterButton) {
            QmPageLinks::SetPage(QmMenuPages::kRegistration);
            return;
        }
        if (activated == kRulesButton) {
            QmPageLinks::SetPage(QmMenuPages::kRules);
            return;
        }
        if (activated == kLogInButton) {
            Submit();
        }
        form.Buttons().SetEnabled(kLogInButton, !pending);
        if (c->app->screen != nullptr) {
            form.Draw(c->app->screen->overlay);
        }
    }

    QmAccountForm form;
    VeTextInput* user = nullptr;
    VeTextInput* password = nullptr;
    VeCheckbox* remember = nullptr;
    bool pending = false;
    std::string sentName;
    std::string sentPassword;
};

QmLoginPage::QmLoginPage() : impl(std::make_unique<Impl>()) {}
QmLoginPage::~QmLoginPage() = default;
void QmLoginPage::Frame() {
    impl->Frame();
}
void QmLoginPage::Relabel() {
    impl->form.Relabel();
}
void QmLoginPage::Open() {
    impl->Open();
}
QmTextBoxes QmLoginPage::TextBoxes() const {
    return impl->form.TextBoxes();
}

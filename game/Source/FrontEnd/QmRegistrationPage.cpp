#include "FrontEnd/QmRegistrationPage.h"

#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Form/VeCheckbox.h"
#include "Form/VeTextInput.h"
#include "FrontEnd/QmAccountForm.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmPageLinks.h"
#include "Network/QmNetworkManager.h"
#include "Screen/VeScreen.h"

namespace {
constexpr int kTitleLine = 157;
constexpr int kUserNameLine = 142;
constexpr int kPasswordLine = 143;
constexpr int kEmailLine = 145;
constexpr int kAgreeLine = 146;
constexpr int kRegisterLine = 140;
constexpr int kBackLine = 22;
constexpr int kEmptyFieldLine = 150;
constexpr int kSomethingWrongLine = 151;
constexpr int kWaitLine = 155;
constexpr int kCannotReachLine = 165;
constexpr int32_t kNameLength = 24;
constexpr int32_t kPasswordLength = 32;
constexpr int32_t kEmailLength = 38;
enum Button { kRegisterButton, kBackButton };

std::string Trimmed(std::string text) {
    while (!text.empty() && text.back() == ' ') {
        text.pop_back();
    }
    return text;
}
} // namespace

class QmRegistrationPage::Impl {
public:
    Impl() {
        form.SetTitle(kTitleLine);
        user = &form.AddInput("ipt_username", kUserNameLine, kNameLength, false);
        password = &form.AddInput("ipt_password", kPasswordLine, kPasswordLength, true);
        email = &form.AddInput("ipt_email", kEmailLine, kEmailLength, false);
        agree = &form.AddCheckbox("ipt_agree", kAgreeLine);
        form.SetButtons({{kRegisterLine, kBackLine}});
        form.Buttons().SetEnabled(kRegisterButton, false);
    }

    static QmNetworkManager* Network() { return QmMenuPage::C()->app->network; }

    void Submit() {
        QmNetworkManager* network = Network();
        const std::string name = Trimmed(user->Content());
        const std::string address = Trimmed(email->Content());
        if (network == nullptr) {
            form.SetStatus(kCannotReachLine, QmAccountForm::kErrorColour);
        } else if (name.empty() || password->Content().empty() || address.empty()) {
            form.SetStatus(kEmptyFieldLine, QmAccountForm::kErrorColour);
        } else {
            network->TakeNotices();
            network->TakeLoginResult();
            network->TakeRegisterMessage();
            network->Register(name, password->Content(), address);
            pending = true;
            form.SetStatus(kWaitLine, QmAccountForm::kWaitingColour);
        }
    }

    // The answer, once nothing is out any more; false when the page was left for another.
    bool Poll() {
        const QmAccountForm::Answer answer = form.TakeAnswer(Network(), kSomethingWrongLine);
        if (answer == QmAccountForm::Answer::Waiting) {
            return true;
        }
        pending = false;
        if (answer == QmAccountForm::Answer::LoggedIn) {
            // The account exists: the next visit starts with an empty form, the password gone.
            user->Clear();
            password->Clear();
            email->Clear();
            agree->checked = false;
            QmPageLinks::SetPage(QmMenuPages::kSharedMaps);
            return false;
        }
        if (answer == QmAccountForm::Answer::UpdateRequired) {
            // Too old a game for the service: the login page asks to update it.
            QmPageLinks::SetPage(QmMenuPages::kLogin);
            return false;
        }
        return true;
    }

    void Frame() {
        VaCoordinator* c = QmMenuPage::C();
        if (pending && !Poll()) {
            return;
        }
        const int activated = form.Update(c->Controls(), c->app->input);
        if (activated == QmAccountForm::kBack || activated == kBackButton) {
            QmPageLinks::SetPage(QmMenuPages::kLogin);
            return;
        }
        if (activated == kRegisterButton) {
            Submit();
        }
        form.Buttons().SetEnabled(kRegisterButton, agree->checked && !pending);
        if (c->app->screen != nullptr) {
            form.Draw(c->app->screen->overlay);
        }
    }

    QmAccountForm form;
    VeTextInput* user = nullptr;
    VeTextInput* password = nullptr;
    VeTextInput* email = nullptr;
    VeCheckbox* agree = nullptr;
    bool pending = false;
};

QmRegistrationPage::QmRegistrationPage() : impl(std::make_unique<Impl>()) {}
QmRegistrationPage::~QmRegistrationPage() = default;
void QmRegistrationPage::Frame() {
    impl->Frame();
}
void QmRegistrationPage::Relabel() {
    impl->form.Relabel();
}
QmTextBoxes QmRegistrationPage::TextBoxes() const {
    return impl->form.TextBoxes();
}

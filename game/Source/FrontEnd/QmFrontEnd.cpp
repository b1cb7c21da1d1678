#include "FrontEnd/QmFrontEnd.h"

#include "Controls/QmControls.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "FrontEnd/Options/QmLanguage.h"
#include "FrontEnd/QmIntroPage.h"
#include "FrontEnd/QmMenuPages.h"
#include "FrontEnd/QmNoticeDialog.h"
#include "Screen/VeScreen.h"

QmFrontEnd::QmFrontEnd() {
    VaCoordinator* c = VaAppCommander::C();
    VeScreen* screen = c->app->screen;
    dialog = std::make_unique<QmNoticeDialog>(
        screen != nullptr ? &screen->overlay : nullptr, c->app->input, &c->Controls(), c->app->audio,
        [c](int line) { return c->Language().GetLine(line); }, [] { return QmControls::PadState(); });
    intro = std::make_unique<QmIntroPage>();
}

QmFrontEnd::~QmFrontEnd() = default;

QmIntroPage& QmFrontEnd::Intro() {
    return *intro;
}

QmMenuPages& QmFrontEnd::MenuPages() {
    // Made on first use: the pages read the coordinator's front end while they are built.
    if (!menuPages) {
        menuPages = std::make_unique<QmMenuPages>();
    }
    return *menuPages;
}

QmNoticeDialog& QmFrontEnd::Dialog() {
    return *dialog;
}

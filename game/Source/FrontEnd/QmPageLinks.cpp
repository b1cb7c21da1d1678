#include "FrontEnd/QmPageLinks.h"

#include "Coordinator/QmResultsFlow.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "FrontEnd/QmFrontEnd.h"
#include "FrontEnd/QmMenuPages.h"
#include "Platform/VeLog.h"

namespace {
VaCoordinator* C() {
    return VaAppCommander::C();
}
} // namespace

void QmPageLinks::SetPage(int page) {
    if (C()->HasFrontEnd()) {
        C()->FrontEnd().MenuPages().SetPage(page);
    } else {
        C()->SetMenuPage(page);
    }
}

void QmPageLinks::BackToMainMenu() {
    if (C()->HasFrontEnd()) {
        C()->FrontEnd().MenuPages().ReturnToMainMenu();
    } else {
        C()->SetMenuPage(1);
    }
}

bool QmPageLinks::StartPlay(bool retry) {
    return C()->StartPlay(retry);
}

void QmPageLinks::StartRandomRun() {
    if (C()->HasFrontEnd()) {
        C()->FrontEnd().MenuPages().StartRandomRun();
    }
}

void QmPageLinks::OpenEditor(int tour, int map) {
    std::string error;
    if (!C()->OpenEditor(tour, map, error)) {
        Log("The editor cannot open: %s\n", error.c_str());
    }
}

void QmPageLinks::OpenHighscores(int tour, int map) {
    C()->Results().OpenHighscores(tour, map);
}

void QmPageLinks::RelabelAll() {
    if (C()->HasFrontEnd()) {
        C()->FrontEnd().MenuPages().Relabel();
    }
    C()->Results().Relabel();
}

void QmPageLinks::Notice(const std::string& title, const std::string& text) {
    C()->ShowNotice(title, text);
}

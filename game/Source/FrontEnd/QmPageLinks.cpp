#include "FrontEnd/QmPageLinks.h"

#include "Coordinator/QmResultsFlow.h"
#include "Coordinator/VaApp.h"
#include "Coordinator/VaCoordinator.h"
#include "Environment/ArEnvironmentManager.h"
#include "Platform/VeLog.h"

namespace {
VaCoordinator* C() {
    return VaAppCommander::C();
}
} // namespace

void QmPageLinks::SetPage(int page) {
    C()->SetMenuPage(page);
}

void QmPageLinks::BackToMainMenu() {
    C()->SetMenuPage(1);
}

bool QmPageLinks::StartPlay(bool retry) {
    return C()->StartPlay(retry);
}

void QmPageLinks::StartRandomRun() {
    VaCoordinator* c = C();
    c->playMode = VaCoordinator::PlayRandomRun;
    c->randomRunLevels = 0;
    c->randomRunTime = 0;
    c->StartPlay(false);
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
    C()->Results().Relabel();
}

void QmPageLinks::Notice(const std::string& title, const std::string& text) {
    C()->ShowNotice(title, text);
}

#pragma once
// Where the play, management and options pages reach the rest of the front end: the page index,
// the main menu, the race, the editor, the highscores page, the notice dialog and the relabelling
// of every page after a language change. One place, so the pages stay independent of the frame
// that holds them.
#include <string>

class QmPageLinks {
public:
    static void SetPage(int page);
    static void BackToMainMenu();
    static bool StartPlay(bool retry);
    static void StartRandomRun();
    static void OpenEditor(int tour, int map);
    static void OpenHighscores(int tour, int map);
    // Every page shows the current language again.
    static void RelabelAll();
    // A one-button notice, or a two-button question whose answer AnswerFor reports.
    static void Notice(const std::string& title, const std::string& text);
    static void Ask(const std::string& action, const std::string& text);
    // While a dialog is open the page leaves the keys to it.
    static bool DialogOpen();
    // 1 when the question with this action was confirmed in this frame, 0 when it was declined, -1
    // while there is no answer.
    static int AnswerFor(const std::string& action);
};

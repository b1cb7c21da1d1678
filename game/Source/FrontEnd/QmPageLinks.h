#pragma once
// Where the play, management and options pages reach the rest of the front end: the page index,
// the main menu, the race, the editor, the highscores page, notices and the relabelling
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
    // A one-button notice.
    static void Notice(const std::string& title, const std::string& text);
};

#pragma once
// What the world model reaches in the front end: language lines, the one-button notice dialog and
// the sounds of unlocking. The coordinator implements it; without one, notices go to the console
// and language lines are empty.
#include <string>

class QmWorldFrontEndLink {
public:
    virtual ~QmWorldFrontEndLink() = default;

    // Line `number` (1-based) of the current language file.
    virtual std::string GetLine(int number) = 0;
    // Shows the notice dialog with one button.
    virtual void ShowNotice(const std::string& title, const std::string& text) = 0;
    // Plays one of the named sounds at the given volume (0 to 1).
    virtual void PlaySound(const std::string& name, float volume) = 0;
};

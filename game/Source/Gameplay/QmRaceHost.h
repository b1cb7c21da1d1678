#pragma once
// The race's view of the application around it: the play mode and the random-level run's
// carried clock, the music setting and language lines, the in-race menu, and what happens when a
// run ends. The base class is a plain tour race with no menu and no music.
#include <cstdint>
#include <string>

class QmRaceHost {
public:
    virtual ~QmRaceHost() = default;

    // 0 tour play, 1 party play, 3 the random-level run.
    virtual int PlayMode() const { return 0; }
    virtual int64_t RandomRunTime() const { return 0; }
    virtual void SetRandomRunTime(int64_t /*milliseconds*/) {}
    virtual void AddRandomRunLevel() {}
    // The setting "Music" is "1".
    virtual bool MusicEnabled() const { return false; }
    // A 1-based line of the current language file.
    virtual std::string LanguageLine(int /*line*/) const { return std::string(); }
    // The race is drawn inside the map editor (test runs): the racer's eyes stay still.
    virtual bool InEditor() const { return false; }

    // The in-race menu: opened with a language line and the command its button sends.
    virtual bool MenuOpen() const { return false; }
    virtual void OpenMenu(int /*languageLine*/, const std::string& /*command*/) {}
    // Runs the open menu for one frame; returns the command chosen in this frame, or "".
    virtual std::string UpdateMenu() { return std::string(); }

    // A tour or party run reached the finish (not the random-level run): record the completed map,
    // prepare the highscores with the time and rank (HighscoreRank, -1 when it does not qualify)
    // and switch to the after-race scene.
    virtual void RaceFinished(int64_t /*finalTime*/, int /*rank*/) {}
    // The player left through the in-race menu: back to the pages.
    virtual void ReturnToPages() {}
};

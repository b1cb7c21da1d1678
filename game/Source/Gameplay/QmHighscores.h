#pragma once
// A map's score file, "Maps/<tour folder>/<map file less .map>.dat" in the game folder: two
// enciphered lines, the header "u<map uid>@name:time;name:time;..." and the text of the best run's
// recording. A file whose uid is not the current map's is ignored, so a replaced map starts with
// an empty list. A file that cannot be written gives a warning box and leaves the old file as it
// was; the list in memory keeps the new entry until the map is left.
#include "Gameplay/QmHighscoreList.h"
#include "Gameplay/QmRecording.h"

#include <cstdint>
#include <string>
#include <vector>

class QmCoreEnvironmentManager;

class QmHighscores {
public:
    explicit QmHighscores(QmCoreEnvironmentManager& world);

    // The score file of the current map relative to the game folder; empty when the current map is
    // not in its tour's list.
    std::string ScoreFileName() const;
    // Reads the current map's score file (or the given full path).
    void LoadScores();
    void LoadScores(const std::string& path);
    // Writes the current map's score file: clearList empties the list, else insert adds the run
    // (finalTime, name); saveRecording stores the given recording as the best run, else the one
    // read from the file stays. False (after the warning) when the file could not be written.
    bool SaveScores(const QmRecording& recording, bool saveRecording, bool clearList, const std::string& name,
                    bool insert, int64_t finalTime);
    // A file with the header alone (no entries, no recording), read back at once; false (after the
    // warning) when it could not be written.
    bool ResetScoreFile();

    const std::vector<QmHighscoreEntry>& List() const { return list; }
    const std::string& BestTimeText() const { return bestTime; }
    int64_t BestTime() const { return QmHighscoreList::TimeValue(bestTime); }
    const std::string& StoredRecordingText() const { return storedRecordingText; }
    const QmRecording& StoredRecording() const { return storedRecording; }
    const QmHighscoreList::Limits& Limits() const { return limits; }

private:
    std::string ScorePath() const;
    // A name fit for the header: no field or entry separators, no control characters.
    static std::string CleanName(const std::string& name);
    // Writes the score file; on failure tells the player and logs.
    bool WriteScoreFile(const std::string& path, const std::string& bytes) const;

    QmCoreEnvironmentManager& world;
    std::vector<QmHighscoreEntry> list;
    std::string bestTime;
    std::string storedRecordingText;
    QmRecording storedRecording;
    QmHighscoreList::Limits limits;
};

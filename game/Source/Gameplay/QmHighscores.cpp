#include "Gameplay/QmHighscores.h"

#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeMessageBox.h"

QmHighscores::QmHighscores(QmCoreEnvironmentManager& environment) : world(environment) {}

std::string QmHighscores::ScoreFileName() const {
    const std::string file = world.CurrentMapFile();
    if (file.empty() || world.tourIndex < 0 ||
        world.tourIndex >= static_cast<int>(world.tourFolders.size())) {
        return std::string();
    }
    const std::string base = file.size() >= 4 ? file.substr(0, file.size() - 4) : file;
    return "Maps/" + world.tourFolders[static_cast<size_t>(world.tourIndex)] + "/" + base + ".dat";
}

std::string QmHighscores::ScorePath() const {
    const std::string name = ScoreFileName();
    const std::string folder = GetGameFolder();
    if (name.empty() || GetUserDataFolder().empty()) {
        return std::string();
    }
    return folder + "/" + name;
}

void QmHighscores::LoadScores() {
    LoadScores(ScorePath());
}

void QmHighscores::LoadScores(const std::string& path) {
    list.clear();
    bestTime.clear();
    storedRecordingText.clear();
    storedRecording.Clear();
    limits = QmHighscoreList::Limits();
    std::string bytes;
    if (path.empty() || !ReadFileBytes(path, bytes)) {
        return;
    }
    const std::vector<std::string> lines = SplitLines(bytes);
    const std::string header = lines.empty() ? std::string() : DecodeText(QmTextCipher::kFileLevel, lines[0]);
    const size_t at = header.find('@');
    if (!header.empty() && header[0] == 'u') {
        const std::string uid = header.substr(1, at == std::string::npos ? std::string::npos : at - 1);
        if (uid != world.mapUid) {
            return;
        }
    }
    if (at != std::string::npos) {
        size_t begin = at + 1;
        while (begin < header.size() && list.size() < QmHighscoreList::kMaxEntries) {
            size_t end = header.find(';', begin);
            if (end == std::string::npos) {
                end = header.size();
            }
            const std::string entry = header.substr(begin, end - begin);
            const size_t colon = entry.find(':');
            if (colon != std::string::npos) {
                const size_t next = entry.find(':', colon + 1);
                list.push_back({entry.substr(0, colon),
                                entry.substr(colon + 1, next == std::string::npos ? std::string::npos
                                                                                  : next - colon - 1)});
                if (list.size() == 1) {
                    bestTime = list[0].time;
                }
            }
            begin = end + 1;
        }
    }
    storedRecordingText = lines.size() > 1 ? DecodeText(QmTextCipher::kFileLevel, lines[1]) : std::string();
    if (!storedRecordingText.empty()) {
        Log("Highscore Recording loaded: %s\n", storedRecordingText.c_str());
        storedRecording.FromText(storedRecordingText);
    } else {
        Log("No Highscore Recording found.\n");
    }
    limits = QmHighscoreList::BadgeLimits(list);
}

std::string QmHighscores::CleanName(const std::string& name) {
    std::string clean = name;
    for (char& c : clean) {
        if (c == ':' || c == ';' || static_cast<unsigned char>(c) < 32) {
            c = ' ';
        }
    }
    return clean;
}

bool QmHighscores::WriteScoreFile(const std::string& path, const std::string& bytes) const {
    if (WriteFileAtomic(path, bytes)) {
        return true;
    }
    VeMessageBox("Warning: Scores not saved", "Could not save the score file " + ScoreFileName() + ".",
                 VeMessageBox::Warning);
    Log("Could not save scores.\n");
    return false;
}

bool QmHighscores::SaveScores(const QmRecording& recording, bool saveRecording, bool clearList,
                              const std::string& name, bool insert, int64_t finalTime) {
    if (clearList) {
        list.clear();
        Log("New Highscore File\n");
    } else if (insert) {
        list = QmHighscoreList::InsertHighscore(list, finalTime, CleanName(name));
    }
    const std::string path = ScorePath();
    if (path.empty()) {
        return true; // a map outside any tour keeps no scores
    }
    std::string header = "u" + world.mapUid + "@";
    for (const QmHighscoreEntry& entry : list) {
        header += entry.name + ":" + entry.time + ";";
    }
    Log("Encrypt from: %s\n", header.c_str());
    std::string recordingText = storedRecordingText;
    if (saveRecording) {
        recordingText = recording.ToText();
        Log("Saving Highscore Recording: %s\n", recordingText.c_str());
    }
    const std::string bytes = EncodeText(QmTextCipher::kFileLevel, header) + "\r\n" +
                              EncodeText(QmTextCipher::kFileLevel, recordingText);
    return WriteScoreFile(path, bytes);
}

bool QmHighscores::ResetScoreFile() {
    const std::string path = ScorePath();
    bool written = true;
    if (!path.empty()) {
        const std::string header = "u" + world.mapUid + "@";
        written = WriteScoreFile(path, EncodeText(QmTextCipher::kFileLevel, header) + "\r\n" +
                                           EncodeText(QmTextCipher::kFileLevel, std::string()));
    }
    LoadScores();
    return written;
}

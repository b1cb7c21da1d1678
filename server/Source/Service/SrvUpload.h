#pragma once
// The checks an uploaded map and its score file must pass before they are stored. The map is read
// by the game's own parser after the game's own deciphering, so anything stored here loads in the
// game; on top of that the file must be whole: at most 4 KB, a uid line of digits, a tour line,
// exactly 20 columns of 20 block ids from 0 to 255, a Start and a Finish. The score
// file (at most 64 KB, may be empty) must belong to that map: its header names the map's uid.
#include "Environment/CoreEnvironmentManager/QmMapFile.h"

#include <optional>
#include <string>

struct SrvCheckedMap {
    QmMapContents contents;
    std::string fileName; // the stored name (StoredName)
};

class SrvUpload {
public:
    static constexpr size_t kMaxMapBytes = 4096;
    static constexpr size_t kMaxScoreBytes = 65536;

    // The map, or nothing with the reason in error.
    static std::optional<SrvCheckedMap> CheckMap(const std::string& bytes, std::string& error);
    // True when the score file is empty or belongs to the map with this uid.
    static bool CheckScores(const std::string& bytes, const std::string& mapUid, std::string& error);
    // The map's name through the game's file-name rule, then every byte other than letters, digits,
    // '-', '_' and '.' turned into '_', + ".map": the game puts the name into its download URL and
    // its map list answer ("File.map:<slot>,...") as it is, so nothing there may need escaping.
    static std::string StoredName(const std::string& mapName);
    // The game's multipart writer ends each file with an extra CRLF before the boundary.
    static std::string WithoutTrailingCrlf(const std::string& bytes);
};

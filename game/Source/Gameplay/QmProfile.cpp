#include "Gameplay/QmProfile.h"

#include "Gameplay/QmHighscoreList.h"
#include "Platform/VeFiles.h"

#include <string>

int QmProfile::LoadProfile() {
    if (GetUserDataFolder().empty()) {
        return 0;
    }
    std::string bytes;
    if (!ReadFileBytes(GetGameFolder() + "/profile.dat", bytes)) {
        return 0;
    }
    const std::vector<std::string> lines = SplitLines(bytes);
    const int64_t value = lines.empty() ? 0 : QmHighscoreList::TimeValue(lines[0]);
    return value < 0 ? 0 : static_cast<int>(value);
}

bool QmProfile::SaveProfile(int character) {
    if (GetUserDataFolder().empty()) {
        return false;
    }
    CreateFolder(GetGameFolder());
    return WriteFileAtomic(GetGameFolder() + "/profile.dat", std::to_string(character));
}

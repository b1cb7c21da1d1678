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
    return lines.empty() ? 0 : static_cast<int>(QmHighscoreList::TimeValue(lines[0]));
}

void QmProfile::SaveProfile(int character) {
    if (GetUserDataFolder().empty()) {
        return;
    }
    CreateFolder(GetGameFolder());
    WriteFileAtomic(GetGameFolder() + "/profile.dat", std::to_string(character));
}

#include "Network/QmDownloadsTour.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"

int QmDownloadsTour::Find(const QmCoreEnvironmentManager& world) {
    for (size_t t = 0; t < world.tours.size(); ++t) {
        if (!world.tours[t].official && world.tours[t].name == kTourName) {
            return static_cast<int>(t);
        }
    }
    return -1;
}

int QmDownloadsTour::Save(QmCoreEnvironmentManager& world, const std::string& cachePath) {
    std::vector<std::string> lines;
    if (!QmCipherFile::ReadLines(cachePath, lines)) {
        Log("The downloaded map %s cannot be read.\n", cachePath.c_str());
        return -1;
    }
    QmMapContents contents = QmMapFile::Parse(lines);
    int t = Find(world);
    if (t < 0) {
        world.NewTour();
        t = static_cast<int>(world.tours.size()) - 1;
        world.tours[static_cast<size_t>(t)].name = kTourName;
        world.SaveTour(t, true);
    }
    const std::string& folderName = world.tourFolders[static_cast<size_t>(t)];
    if (!QmFileNames::IsSafeName(folderName)) {
        return -1;
    }
    const std::string folder = "Maps/" + folderName + "/";
    std::vector<std::string>& levels = world.tourLevels[static_cast<size_t>(t)];
    world.tourIndex = t;
    int index = -1;
    for (size_t level = 0; level < levels.size() && !contents.uid.empty(); ++level) {
        if (world.GetMapField('u', levels[level]) == contents.uid) {
            index = static_cast<int>(level);
        }
    }
    const bool replacing = index >= 0;
    const std::string name = contents.name.empty() ? world.defaultMapName : contents.name;
    const std::string file = replacing ? levels[static_cast<size_t>(index)]
                                       : world.GenerateFileName(false, name, folder, ".map", std::string());
    contents.tourUid = world.tours[static_cast<size_t>(t)].uid;
    contents.locked = false;
    CreateFolder(GetGameFolder() + "/" + folder);
    if (!QmFileNames::IsSafeName(file) ||
        !QmCipherFile::WriteLines(GetGameFolder() + "/" + folder + file, QmMapFile::Format(contents))) {
        return -1;
    }
    const std::string score = GetGameFolder() + "/" + folder + QmFileNames::ScoreFileOf(file);
    std::string bytes;
    const std::string cacheScore =
        cachePath.substr(0, cachePath.size() - QmFileNames::Extension(cachePath).size()) + ".dat";
    if (!FileExists(score) && ReadFileBytes(cacheScore, bytes) && !bytes.empty()) {
        WriteFileAtomic(score, bytes);
    }
    if (!replacing) {
        levels.push_back(file);
        index = static_cast<int>(levels.size()) - 1;
        world.SaveTour(t, false);
    }
    return index;
}

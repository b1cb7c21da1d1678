#include "Coordinator/QmTourSeed.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Platform/VeFiles.h"

bool QmTourSeed::SeedWhenEmpty(const std::string& shippedMaps, const std::string& gameFolder,
                               std::vector<std::string>& copied, std::string& error) {
    copied.clear();
    const std::string maps = gameFolder + "/Maps";
    if (FileExists(maps + "/tours.dat")) {
        return true;
    }
    std::vector<std::string> lines;
    const std::vector<std::string> shipped = QmCipherFile::ReadLines(shippedMaps + "/tours.dat", lines)
                                                 ? QmTourFile::ParseTourList(lines)
                                                 : ListFolders(shippedMaps);
    std::vector<std::string> listed;
    for (const std::string& folder : shipped) {
        const std::string from = shippedMaps + "/" + folder;
        if (!QmFileNames::IsSafeName(folder) || !FileExists(from + "/tour.dat")) {
            continue;
        }
        const std::string to = maps + "/" + folder;
        listed.push_back(folder);
        if (FileExists(to + "/tour.dat")) {
            continue; // a folder of that name is the player's already
        }
        if (!CreateFolder(to)) {
            error = "cannot create " + to;
            return false;
        }
        for (const std::string& file : ListFiles(from)) {
            if (!FileExists(to + "/" + file) && !CopyFileTo(from + "/" + file, to + "/" + file)) {
                error = "cannot copy " + from + "/" + file + " to " + to;
                return false;
            }
        }
        copied.push_back(folder);
    }
    if (listed.empty()) {
        return true; // nothing shipped: the world's own start-up decides what follows
    }
    if (!QmCipherFile::WriteLines(maps + "/tours.dat", listed, false)) {
        error = "cannot write " + maps + "/tours.dat";
        return false;
    }
    return true;
}

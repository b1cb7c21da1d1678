#include "Environment/CoreEnvironmentManager/QmTourSeeder.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Platform/VeFiles.h"

#include <algorithm>
#include <map>

namespace {
struct TourFiles {
    bool present = false;
    TourRecord record;
    std::vector<std::string> levels;
};

TourFiles ReadTourFile(const std::string& folder) {
    TourFiles tour;
    std::vector<std::string> lines;
    if (QmCipherFile::ReadLines(folder + "/tour.dat", lines)) {
        tour.present = true;
        QmTourFile::ParseTour(lines, tour.record, tour.levels);
    }
    return tour;
}

bool Contains(const std::vector<std::string>& list, const std::string& item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

// Copies a file unless the target exists; true when the target exists afterwards.
bool CopyIfMissing(const std::string& from, const std::string& to, bool& copied) {
    copied = false;
    if (FileExists(to) || IsDirectory(to)) {
        return true;
    }
    if (!FileExists(from)) {
        return false;
    }
    copied = CopyFileTo(from, to);
    return copied;
}

// A map file and its score file.
bool CopyMap(const std::string& from, const std::string& to, const std::string& file, bool& copied) {
    bool scoreCopied = false;
    if (!CopyIfMissing(from + "/" + file, to + "/" + file, copied)) {
        return false;
    }
    if (copied) {
        const std::string score = QmFileNames::ScoreFileOf(file);
        CopyIfMissing(from + "/" + score, to + "/" + score, scoreCopied);
    }
    return true;
}
} // namespace

bool QmTourSeeder::Seed(const std::string& shippedMaps, const std::string& gameFolder, QmSeedReport& report,
                        std::string& error) {
    report = QmSeedReport();
    // The shipped tours, in order.
    std::vector<std::string> shipped;
    std::vector<std::string> lines;
    if (QmCipherFile::ReadLines(shippedMaps + "/tours.dat", lines)) {
        shipped = QmTourFile::ParseTourList(lines);
    } else {
        shipped = ListFolders(shippedMaps);
    }
    std::vector<TourFiles> shippedTours;
    for (const std::string& folder : shipped) {
        shippedTours.push_back(ReadTourFile(shippedMaps + "/" + folder));
        if (!shippedTours.back().present || shippedTours.back().record.uid.empty()) {
            error = "the shipped tour " + folder + " has no tour.dat with an identity";
            return false;
        }
    }
    if (shipped.empty()) {
        error = "no shipped tour in " + shippedMaps;
        return false;
    }

    const std::string maps = gameFolder + "/Maps";
    if (!CreateFolder(maps)) {
        error = "cannot create " + maps;
        return false;
    }
    lines.clear();
    const bool haveList = QmCipherFile::ReadLines(maps + "/tours.dat", lines);
    std::vector<std::string> list = haveList ? QmTourFile::ParseTourList(lines) : std::vector<std::string>();

    // Where the player keeps each tour, by identity: the listed folders first, then any other.
    std::map<std::string, std::string> folderOfUid;
    std::vector<std::string> candidates = list;
    for (const std::string& folder : ListFolders(maps)) {
        if (!Contains(candidates, folder)) {
            candidates.push_back(folder);
        }
    }
    for (const std::string& folder : candidates) {
        if (!QmFileNames::IsSafeName(folder)) {
            continue;
        }
        const TourFiles tour = ReadTourFile(maps + "/" + folder);
        if (tour.present && !tour.record.uid.empty()) {
            folderOfUid.emplace(tour.record.uid, folder);
        }
    }

    std::vector<std::string> official; // the player's folders of the shipped tours, in shipped order
    for (size_t t = 0; t < shipped.size(); ++t) {
        const TourFiles& ship = shippedTours[t];
        const std::string from = shippedMaps + "/" + shipped[t];
        const auto found = folderOfUid.find(ship.record.uid);
        if (found == folderOfUid.end()) {
            // A new tour for this player. A folder of the same name that holds some other tour is
            // never touched: the shipped one is skipped then.
            const std::string to = maps + "/" + shipped[t];
            if (FileExists(to + "/tour.dat")) {
                continue;
            }
            if (!CreateFolder(to)) {
                error = "cannot create " + to;
                return false;
            }
            for (const std::string& file : ListFiles(from)) {
                bool copied = false;
                if (!CopyIfMissing(from + "/" + file, to + "/" + file, copied)) {
                    error = "cannot copy " + from + "/" + file;
                    return false;
                }
            }
            report.copiedTours.push_back(shipped[t]);
            official.push_back(shipped[t]);
            continue;
        }
        // A tour the player has: put back what it lists and lacks, add maps shipped since.
        const std::string folder = found->second;
        const std::string to = maps + "/" + folder;
        TourFiles mine = ReadTourFile(to);
        bool listChanged = false;
        for (const std::string& file : ship.levels) {
            const bool listed = Contains(mine.levels, file);
            bool copied = false;
            if (!CopyMap(from, to, file, copied)) {
                error = "cannot copy " + from + "/" + file;
                return false;
            }
            if (copied) {
                report.copiedFiles.push_back(folder + "/" + file);
            }
            // A file of that name the player already had is theirs: it does not join the tour.
            if (!listed && copied) {
                mine.levels.push_back(file);
                listChanged = true;
            }
        }
        if (listChanged && !QmCipherFile::WriteLines(
                               to + "/tour.dat", QmTourFile::FormatTour(mine.record, mine.levels), false)) {
            error = "cannot write " + to + "/tour.dat";
            return false;
        }
        official.push_back(folder);
    }

    // The tour list: the shipped tours first, in shipped order, then the player's others.
    std::vector<std::string> ordered = official;
    for (const std::string& folder : list) {
        if (!Contains(ordered, folder)) {
            ordered.push_back(folder);
        }
    }
    if (!haveList || ordered != list) {
        if (!QmCipherFile::WriteLines(maps + "/tours.dat", ordered, false)) {
            error = "cannot write " + maps + "/tours.dat";
            return false;
        }
        report.tourListWritten = true;
    }
    return true;
}

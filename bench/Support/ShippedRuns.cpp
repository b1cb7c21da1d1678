#include "ShippedRuns.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Gameplay/QmHighscores.h"
#include "Gameplay/QmRaceSimulator.h"

std::vector<ShippedRun> ShippedRuns() {
    const std::string shipped = std::string(QM_SOURCE_DIR) + "/Maps";
    std::vector<std::string> lines;
    QmCipherFile::ReadLines(shipped + "/tours.dat", lines);
    std::vector<ShippedRun> runs;
    const std::vector<std::string> folders = QmTourFile::ParseTourList(lines);
    for (size_t t = 0; t < folders.size(); ++t) {
        TourRecord record;
        std::vector<std::string> levels;
        lines.clear();
        QmCipherFile::ReadLines(shipped + "/" + folders[t] + "/tour.dat", lines);
        QmTourFile::ParseTour(lines, record, levels);
        for (size_t m = 0; m < levels.size(); ++m) {
            const std::string path = shipped + "/" + folders[t] + "/" + levels[m];
            QmCoreEnvironmentManager world;
            std::string error;
            if (!QmRaceSimulator::LoadMap(world, path, error)) {
                continue;
            }
            QmHighscores scores(world);
            scores.LoadScores(QmFileNames::ScoreFileOf(path));
            if (!scores.StoredRecording().Empty()) {
                runs.push_back({static_cast<int>(t), static_cast<int>(m), folders[t] + "/" + levels[m],
                                scores.StoredRecording()});
            }
        }
    }
    return runs;
}

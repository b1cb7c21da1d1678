#pragma once
// Test support for the world model: a manager over a temporary game folder, fakes of the gameplay
// and front-end links, and helpers to lay out tours and maps on disk.
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmWorldFrontEndLink.h"
#include "Environment/CoreEnvironmentManager/QmWorldGameplayLink.h"
#include "Platform/VeFiles.h"
#include "Support/TempUserData.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

using Lines = std::vector<std::string>;

// Keeps what a fake was told, in one line, until the test looks.
class TellingFake {
public:
    std::string Told() { return std::exchange(told, ""); }

protected:
    void Tell(const std::string& what) { told += (told.empty() ? "" : ", ") + what; }

private:
    std::string told;
};

// Tells "racer x,y" for each Start met, "ready, size s, cows x,y ..." and "renamed". (Streams
// rather than "text" + std::string: GCC 12 warns falsely about those at -O3.)
class FakeGameplay : public QmWorldGameplayLink, public TellingFake {
public:
    void PlaceRacerAtCell(float column, float row) override {
        std::ostringstream out;
        out << "racer " << column << "," << row;
        Tell(out.str());
    }
    void MapReady(const std::vector<std::pair<float, float>>& enemySpawns, int size) override {
        std::ostringstream out;
        out << "ready, size " << size << ", cows";
        for (const auto& [x, y] : enemySpawns) {
            out << " " << x << "," << y;
        }
        Tell(out.str());
    }
    void MapFileRenamed() override { Tell("renamed"); }
};

// Lines are "L<number>"; tells notices as "title|text" and sounds as "name@volume in tenths".
class FakeFrontEnd : public QmWorldFrontEndLink, public TellingFake {
public:
    std::string GetLine(int number) override {
        std::string line = "L";
        return line += std::to_string(number);
    }
    void ShowNotice(const std::string& title, const std::string& text) override { Tell(title + "|" + text); }
    void PlaySound(const std::string& name, float volume) override {
        Tell(name + "@" + std::to_string(static_cast<int>(volume * 10 + 0.5f)));
    }
};

// The game's own SaveMap: store the map in its tour, as the client manager does.
class SavingWorld : public QmCoreEnvironmentManager {
public:
    void SaveMap(bool asNew) override { SaveMapToTour(asNew); }
};

class WorldTest : public ::testing::Test {
protected:
    void SetUp() override {
        world.programMapsFolder = data.path + "/ProgramMaps";
        world.defaultMapName = "Level";
        world.defaultTourName = "My Tour";
        world.SetFrontEndLink(&frontEnd);
    }

    std::string Game(const std::string& relative) const { return data.GameFolder() + "/" + relative; }

    // Writes a file in plain text (as a map maker would) under the game folder.
    void WritePlain(const std::string& relative, const Lines& lines) {
        const std::string path = Game(relative);
        CreateFolder(path.substr(0, path.rfind('/')));
        ASSERT_TRUE(WriteTextLinesAtomic(path, lines));
    }

    Lines ReadLines(const std::string& relative) const {
        Lines lines;
        QmCipherFile::ReadLines(Game(relative), lines);
        return lines;
    }

    // A map's lines: 64-pixel blocks, uid 1, open, editable, its tour's uid line only when given.
    static Lines MapLines(const std::string& name, const std::string& tourUid = "",
                          std::vector<std::pair<int, BlockId>> cells = {}) {
        QmMapContents map;
        map.name = name;
        map.uid = std::to_string(1); // a literal here trips a false GCC 12 warning at -O3
        map.tourUid = tourUid;
        for (const auto& [index, id] : cells) {
            map.blocks[index] = id;
        }
        Lines lines = QmMapFile::Format(map);
        if (tourUid.empty()) {
            lines.erase(lines.begin() + 5);
        }
        return lines;
    }

    // The loaded map's record in one line.
    static std::string MapState(const QmCoreEnvironmentManager& w) {
        std::ostringstream out;
        out << w.mapName << ": " << w.mapSize << " x " << w.mapSize << " of " << w.blockSize
            << (w.locked ? ", locked" : "") << (w.editable ? ", editable" : "") << ", tour " << w.mapTourUid
            << ", start " << w.startX << "," << w.startY << (w.gatesOpen ? ", gates open" : "");
        return out.str();
    }

    // The tour folders as listed, then as tours.dat lists them when the two differ.
    std::string Tours(const QmCoreEnvironmentManager& w) const {
        return Both(Join(w.tourFolders), Join(ReadLines("Maps/tours.dat")));
    }

    // A tour's maps as listed, then as its tour.dat lists them when the two differ.
    std::string Maps(const QmCoreEnvironmentManager& w, int t) const {
        const Lines file = ReadLines("Maps/" + w.tourFolders[t] + "/tour.dat");
        return Both(Join(w.tourLevels[t]), file.empty() ? "" : file.back());
    }

    static std::string Both(const std::string& listed, const std::string& written) {
        return written == listed ? listed : listed + " (on disk " + written + ")";
    }

    // The files of a folder under the game folder, sorted.
    std::string Files(const std::string& folder) const { return Join(ListFiles(Game(folder))); }

    static std::string Join(const Lines& lines) {
        std::string joined;
        for (const std::string& line : lines) {
            joined += (joined.empty() ? "" : ",") + line;
        }
        return joined;
    }

    // A tour on disk and in the lists, as the scan would leave it.
    int AddTour(const std::string& folder, const std::string& name, const Lines& mapFiles,
                bool official = false, bool collectsFiles = true) {
        TourRecord record;
        record.official = official;
        record.name = name;
        record.collectsFiles = collectsFiles;
        record.uid = "uid" + folder;
        world.tours.push_back(record);
        world.tourFolders.push_back(folder);
        world.tourLevels.push_back(mapFiles);
        CreateFolder(Game("Maps/" + folder));
        for (const std::string& file : mapFiles) {
            WritePlain("Maps/" + folder + "/" + file, MapLines(file.substr(0, file.size() - 4), record.uid));
        }
        const int t = static_cast<int>(world.tours.size()) - 1;
        world.SaveTour(t, false);
        return t;
    }

    TempUserData data;
    SavingWorld world;
    FakeFrontEnd frontEnd;
    FakeGameplay gameplay;
};

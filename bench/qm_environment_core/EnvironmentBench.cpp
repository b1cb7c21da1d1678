// Benchmarks of the world model: one map loaded and saved, a scan of 50 tours of 50 maps, one
// generated level, and the line cipher. Everything runs in a temporary data folder.
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeRandom.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {
// A data folder of its own for the whole run, removed at exit; the log is silenced.
class BenchFolder {
public:
    BenchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillmaze-bench-XXXXXX").string();
        path = mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
        setenv("QUILLMAZE_USER_DATA", path.c_str(), 1);
        SetLogSink([](const std::string&) {});
    }
    ~BenchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    std::string path;
};

BenchFolder& Folder() {
    static BenchFolder folder;
    return folder;
}

class GameWorld : public QmCoreEnvironmentManager {
public:
    GameWorld() { programMapsFolder = Folder().path + "/NoProgramMaps"; }
    BlockId RandomColourBlock() override { return Rand() % 5 + 1; }
    void SaveMap(bool asNew) override { SaveMapToTour(asNew); }
};

// A full 20 x 20 map of blocks, pickups and cows.
QmMapContents BusyMap(const std::string& name, const std::string& tourUid) {
    QmMapContents map;
    map.blockSize = 32;
    map.name = name;
    map.uid = "1234567890987654321";
    map.tourUid = tourUid;
    for (int i = 0; i < QmCoreEnvironmentManager::kCellCount; ++i) {
        map.blocks[i] = (i * 37) % 256;
    }
    return map;
}

void WriteRaw(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

void BM_LoadMap(benchmark::State& state) {
    Folder();
    GameWorld world;
    world.NewTour();
    world.SaveMap(true);
    world.SetBlockSize(32);
    world.blocks = BusyMap("", "").blocks;
    world.SaveMap(false);
    for (auto _ : state) {
        world.LoadLevel(0, false);
        benchmark::DoNotOptimize(world.blocks.data());
    }
}
BENCHMARK(BM_LoadMap)->Unit(benchmark::kMicrosecond);

// A save as the editor does it: a new uid, the file written to a temporary file, flushed to the
// disk and renamed over the old one.
void BM_SaveMap(benchmark::State& state) {
    Folder();
    GameWorld world;
    world.NewTour();
    world.SaveMap(true);
    world.SetBlockSize(32);
    world.blocks = BusyMap("", "").blocks;
    for (auto _ : state) {
        world.SaveMap(false);
    }
}
BENCHMARK(BM_SaveMap)->Unit(benchmark::kMicrosecond);

// The part of a save that is the program's own: the lines of the map, enciphered.
void BM_EncodeMap(benchmark::State& state) {
    const QmMapContents map = BusyMap("Busy Map", "42");
    for (auto _ : state) {
        benchmark::DoNotOptimize(QmCipherFile::EncodeLines(QmMapFile::Format(map)));
    }
}
BENCHMARK(BM_EncodeMap)->Unit(benchmark::kMicrosecond);

// 50 tours of 50 maps, as a scan at start finds them after the first one has tidied them.
void BM_ScanWorld(benchmark::State& state) {
    Folder();
    const std::string maps = GetGameFolder() + "/Maps/";
    std::filesystem::remove_all(GetGameFolder());
    std::vector<std::string> folders;
    for (int t = 0; t < 50; ++t) {
        const std::string folder = "Tour" + std::to_string(t);
        TourRecord record;
        record.name = "Tour " + std::to_string(t);
        record.uid = "77" + std::to_string(t);
        std::vector<std::string> levels;
        CreateFolder(maps + folder);
        for (int m = 0; m < 50; ++m) {
            levels.push_back("Map" + std::to_string(m) + ".map");
            WriteRaw(maps + folder + "/" + levels.back(), QmCipherFile::EncodeLines(QmMapFile::Format(BusyMap(
                                                              "map " + std::to_string(m), record.uid))));
        }
        WriteRaw(maps + folder + "/tour.dat",
                 QmCipherFile::EncodeLines(QmTourFile::FormatTour(record, levels), false));
        folders.push_back(folder);
    }
    WriteRaw(maps + "tours.dat", QmCipherFile::EncodeLines(folders, false));

    GameWorld world;
    size_t found = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(world.ScanWorld());
        found = 0;
        for (const auto& levels : world.tourLevels) {
            found += levels.size();
        }
    }
    state.counters["maps"] = static_cast<double>(found);
}
BENCHMARK(BM_ScanWorld)->Unit(benchmark::kMillisecond);

void BM_GenerateLevel(benchmark::State& state) {
    Folder();
    GameWorld world;
    world.SetBlockSize(static_cast<int>(state.range(0)));
    SeedRand(1);
    for (auto _ : state) {
        world.GenerateLevel();
        benchmark::DoNotOptimize(world.blocks.data());
    }
}
BENCHMARK(BM_GenerateLevel)->Arg(64)->Arg(32)->Unit(benchmark::kMicrosecond);

std::string CipherLine(size_t length) {
    std::string text;
    for (size_t i = 0; i < length; ++i) {
        text.push_back(static_cast<char>(32 + (i * 7) % 90));
    }
    return text;
}

void BM_EncodeText(benchmark::State& state) {
    const std::string text = CipherLine(static_cast<size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(QmTextCipher::EncodeText(4, text));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_EncodeText)->Arg(80)->Arg(4096);

void BM_DecodeText(benchmark::State& state) {
    const std::string cipher = QmTextCipher::EncodeText(4, CipherLine(static_cast<size_t>(state.range(0))));
    for (auto _ : state) {
        benchmark::DoNotOptimize(QmTextCipher::DecodeText(4, cipher));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}
BENCHMARK(BM_DecodeText)->Arg(80)->Arg(4096);
} // namespace

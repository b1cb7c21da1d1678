// quillmaze-seed SHIPPED_MAPS [GAME_FOLDER]
// Copies the shipped tours (the "Maps" folder beside the program) that the player's game folder
// lacks into it and lists them in its tours.dat, never replacing a file. GAME_FOLDER defaults to
// the game's own folder ($QUILLMAZE_USER_DATA, else $XDG_DATA_HOME, else ~/.local/share, then
// "/Quillmaze"). Exit status 0 when done, 1 on failure, 2 for wrong usage.
#include "Environment/CoreEnvironmentManager/QmTourSeeder.h"
#include "Platform/VeFiles.h"

#include <cstdio>
#include <string>

namespace {
constexpr const char* kUsage = "usage: quillmaze-seed SHIPPED_MAPS [GAME_FOLDER]\n";
} // namespace

int main(int argc, char** argv) {
    if (argc == 2 && (std::string(argv[1]) == "--help" || std::string(argv[1]) == "-h")) {
        std::printf("%sCopies the shipped tours that the player's game folder lacks into it and lists them\n"
                    "in its tour list, never replacing a file. GAME_FOLDER defaults to the game's own\n"
                    "folder in the user's data folder.\n",
                    kUsage);
        return 0;
    }
    if (argc < 2 || argc > 3) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const std::string gameFolder = argc == 3 ? std::string(argv[2]) : GetGameFolder();
    if (gameFolder.empty() || gameFolder == "/Quillmaze") {
        std::fprintf(stderr, "quillmaze-seed: no user data folder (set HOME, XDG_DATA_HOME or "
                             "QUILLMAZE_USER_DATA)\n");
        return 1;
    }
    QmSeedReport report;
    std::string error;
    if (!QmTourSeeder::Seed(argv[1], gameFolder, report, error)) {
        std::fprintf(stderr, "quillmaze-seed: %s\n", error.c_str());
        return 1;
    }
    for (const std::string& tour : report.copiedTours) {
        std::printf("quillmaze-seed: added the tour %s to %s/Maps\n", tour.c_str(), gameFolder.c_str());
    }
    for (const std::string& file : report.copiedFiles) {
        std::printf("quillmaze-seed: added %s\n", file.c_str());
    }
    return 0;
}

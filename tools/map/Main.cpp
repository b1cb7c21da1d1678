// quillmaze-map: the map maker's and the tests' view of the game's files.
//   decode [--all] FILE   prints the plain lines of a marker-headed or plain file, one per line;
//                         --all deciphers every line (score files have no marker line)
//   encode PLAIN OUT      writes the marker and the enciphered lines of a plain text file (CRLF)
//   info FILE             name, uid, tour uid, block size, flags, Start and Finish, block counts
//   generate --seed N --size 10|20 OUT
//                         seeds the generator with N and saves a random map of that size
// Exit status: 0 done, 1 a file could not be read or written, 2 wrong usage.
#include "Environment/CoreEnvironmentManager/QmBlocks.h"
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmCoreEnvironmentManager.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Platform/VeFiles.h"
#include "Platform/VeLog.h"
#include "Platform/VeRandom.h"
#include "Platform/VeTime.h"

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

namespace {
constexpr int kFileError = 1;
constexpr int kUsageError = 2;

constexpr const char* kUsage = "usage: quillmaze-map decode [--all] FILE\n"
                               "       quillmaze-map encode PLAIN OUT\n"
                               "       quillmaze-map info FILE\n"
                               "       quillmaze-map generate --seed N --size 10|20 OUT\n";

int Usage() {
    std::fputs(kUsage, stderr);
    return kUsageError;
}

int Help() {
    std::printf("%sReads and writes the game's map files: decode shows a map (or any enciphered file with\n"
                "--all) as plain text, encode enciphers a plain map, info sums a map up, and generate\n"
                "makes a random level of 10 or 20 cells a side from a seed.\n",
                kUsage);
    return 0;
}

bool ReadRawLines(const std::string& path, std::vector<std::string>& lines) {
    if (IsDirectory(path) || !ReadTextLines(path, lines)) {
        std::fprintf(stderr, "quillmaze-map: cannot read %s\n", path.c_str());
        return false;
    }
    return true;
}

int Decode(const std::vector<std::string>& args) {
    bool all = false;
    std::string path;
    for (const std::string& arg : args) {
        if (arg == "--all") {
            all = true;
        } else if (path.empty()) {
            path = arg;
        } else {
            return Usage();
        }
    }
    if (path.empty()) {
        return Usage();
    }
    std::vector<std::string> raw;
    if (!ReadRawLines(path, raw)) {
        return kFileError;
    }
    std::vector<std::string> lines;
    if (all) {
        for (const std::string& line : raw) {
            lines.push_back(QmTextCipher::DecodeText(QmTextCipher::kFileLevel, line));
        }
    } else {
        lines = QmCipherFile::DecodeLines(raw);
    }
    for (const std::string& line : lines) {
        std::fwrite(line.data(), 1, line.size(), stdout);
        std::fputc('\n', stdout);
    }
    return 0;
}

int Encode(const std::vector<std::string>& args) {
    if (args.size() != 2) {
        return Usage();
    }
    std::vector<std::string> lines;
    if (!ReadRawLines(args[0], lines)) {
        return kFileError;
    }
    SeedRand(static_cast<uint32_t>(GetTimeMs()));
    if (!QmCipherFile::WriteLines(args[1], lines)) {
        std::fprintf(stderr, "quillmaze-map: cannot write %s\n", args[1].c_str());
        return kFileError;
    }
    return 0;
}

std::string Cells(const QmMapContents& map, BlockId id, int size) {
    std::string text;
    for (int x = 0; x < size; ++x) {
        for (int y = 0; y < size; ++y) {
            if (map.blocks[x * 20 + y] == id) {
                if (!text.empty()) {
                    text += ' ';
                }
                text += std::to_string(x);
                text += ',';
                text += std::to_string(y);
            }
        }
    }
    return text.empty() ? "none" : text;
}

int Info(const std::vector<std::string>& args) {
    if (args.size() != 1) {
        return Usage();
    }
    std::vector<std::string> raw;
    if (!ReadRawLines(args[0], raw)) {
        return kFileError;
    }
    const QmMapContents map = QmMapFile::Parse(QmCipherFile::DecodeLines(raw));
    const int size = map.blockSize == 32 ? 20 : 10;
    std::printf("name: %s\n", map.name.c_str());
    std::printf("uid: %s\n", map.uid.c_str());
    std::printf("tour uid: %s\n", map.tourUid.c_str());
    std::printf("block size: %d (%d x %d blocks)\n", map.blockSize, size, size);
    std::printf("locked: %d\n", map.locked ? 1 : 0);
    std::printf("editable: %d\n", map.editable ? 1 : 0);
    std::printf("start: %s\n", Cells(map, Block::Start, size).c_str());
    std::printf("finish: %s\n", Cells(map, Block::Finish, size).c_str());
    std::map<BlockId, int> counts;
    int outside = 0;
    for (int x = 0; x < 20; ++x) {
        for (int y = 0; y < 20; ++y) {
            const BlockId id = map.blocks[x * 20 + y];
            if (x < size && y < size) {
                ++counts[id];
            } else if (id != Block::Blank) {
                ++outside;
            }
        }
    }
    std::printf("blocks in the playing area:\n");
    for (const auto& [id, count] : counts) {
        std::printf("  %d %s: %d\n", id, QmBlocks::Name(id).c_str(), count);
    }
    std::printf("non-blank cells outside the playing area: %d\n", outside);
    return 0;
}

// The generator with the game's colours: Orange, Blue, Green, Yellow and Red.
class ToolWorld : public QmCoreEnvironmentManager {
public:
    BlockId RandomColourBlock() override { return Rand() % Block::LastColoured + 1; }
};

bool ParseNumber(const std::string& text, unsigned long& value) {
    if (text.empty() || text.size() > 10 || text.find_first_not_of("0123456789") != std::string::npos) {
        return false;
    }
    value = std::strtoul(text.c_str(), nullptr, 10);
    return value <= 0xFFFFFFFFul;
}

int Generate(const std::vector<std::string>& args) {
    unsigned long seed = 0;
    unsigned long size = 0;
    bool haveSeed = false;
    std::string out;
    for (size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--seed" && i + 1 < args.size()) {
            haveSeed = ParseNumber(args[++i], seed);
            if (!haveSeed) {
                std::fprintf(stderr, "quillmaze-map: the seed must be a number from 0 to 4294967295\n");
                return kUsageError;
            }
        } else if (args[i] == "--size" && i + 1 < args.size()) {
            if (!ParseNumber(args[++i], size) || (size != 10 && size != 20)) {
                std::fprintf(stderr, "quillmaze-map: the size must be 10 or 20\n");
                return kUsageError;
            }
        } else if (out.empty() && args[i].rfind("--", 0) != 0) {
            out = args[i];
        } else {
            return Usage();
        }
    }
    if (!haveSeed || size == 0 || out.empty()) {
        return Usage();
    }
    ToolWorld world;
    SeedRand(static_cast<uint32_t>(seed));
    world.SetBlockSize(size == 10 ? QmCoreEnvironmentManager::kLargeBlockSize
                                  : QmCoreEnvironmentManager::kSmallBlockSize);
    world.GenerateLevel();

    QmMapContents map;
    map.blockSize = world.blockSize;
    map.name = "Seed ";
    map.name += std::to_string(seed);
    const int first = Rand();
    map.uid = std::to_string(first) + std::to_string(Rand());
    map.blocks = world.blocks;
    if (!QmCipherFile::WriteLines(out, QmMapFile::Format(map))) {
        std::fprintf(stderr, "quillmaze-map: cannot write %s\n", out.c_str());
        return kFileError;
    }
    return 0;
}
} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        return Usage();
    }
    const std::string command = argv[1];
    if (command == "--help" || command == "-h") {
        return Help();
    }
    const std::vector<std::string> args(argv + 2, argv + argc);
    if (command == "decode") {
        return Decode(args);
    }
    if (command == "encode") {
        return Encode(args);
    }
    if (command == "info") {
        return Info(args);
    }
    if (command == "generate") {
        return Generate(args);
    }
    return Usage();
}

// fuzz-links: qm_environment_core
// Feeds arbitrary bytes to the readers of the world's files (map, tour, tour list) and to the line
// cipher. Nothing may crash, hang or read out of bounds; bytes the cipher can carry must come back
// whole, and a map read from any bytes must read back the same after it is written.
#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmMapFile.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Environment/CoreEnvironmentManager/QmTourFile.h"
#include "Platform/VeFiles.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace {
void Check(bool condition) {
    if (!condition) {
        __builtin_trap();
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> lines = QmCipherFile::DecodeLines(SplitLines(bytes));

    const QmMapContents map = QmMapFile::Parse(lines);
    Check(map.blockSize == 32 || map.blockSize == 64);
    Check(map.name.size() <= 15);
    const QmMapContents again = QmMapFile::Parse(
        QmCipherFile::DecodeLines(SplitLines(QmCipherFile::EncodeLines(QmMapFile::Format(map)))));
    Check(again.blocks == map.blocks);
    Check(again.blockSize == map.blockSize && again.locked == map.locked && again.editable == map.editable);

    TourRecord record;
    std::vector<std::string> levels;
    QmTourFile::ParseTour(lines, record, levels);
    for (const std::string& level : levels) {
        Check(!level.empty() && level.find('/') == std::string::npos && level != "..");
    }
    for (const std::string& folder : QmTourFile::ParseTourList(lines)) {
        Check(!folder.empty() && folder.find('/') == std::string::npos && folder != "..");
    }

    for (int level = 2; level <= 4; ++level) {
        Check(QmTextCipher::DecodeText(level, bytes).size() <= bytes.size());
    }
    std::string carried;
    for (char c : bytes) {
        if (static_cast<unsigned char>(c) >= 32) {
            carried.push_back(c);
        }
    }
    const std::string cipher = QmTextCipher::EncodeText(4, carried);
    for (char c : cipher) {
        Check(static_cast<unsigned char>(c) >= 32);
    }
    Check(QmTextCipher::DecodeText(4, cipher) == carried);
    return 0;
}

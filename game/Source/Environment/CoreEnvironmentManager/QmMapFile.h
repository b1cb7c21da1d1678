#pragma once
// The lines of a map file (after the marker, deciphered):
//   "i" block size ("64" or "32"), "n" name, "u" uid, "l" locked, "e" editable ("1"/"0"),
//   "t" the uid of the map's tour, then one line per column x = 0..19 holding the 20 cells
//   (x, 0)..(x, 19) as decimal ids each followed by "," (no blanks).
// Reading is forgiving: the last tagged line of a kind counts, any other line is the next column,
// only values followed by a comma are taken (at most 20), a value that is not a number (or does
// not fit 32 bits) reads as Blank, and lines past the 20th column are ignored.
#include "Environment/CoreEnvironmentManager/QmBlocks.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

struct QmMapContents {
    int blockSize = 64; // 32 only when an "i" line reads exactly "32"
    bool nameRead = false;
    std::string name; // cut to 15 bytes on reading
    std::string uid;
    bool locked = false;
    bool editable = true;
    bool tourUidRead = false;
    std::string tourUid;
    std::array<BlockId, 400> blocks{};           // x-major, as the map record
    std::vector<std::pair<int, int>> startCells; // (column, row) of each Start, in reading order
};

class QmMapFile {
public:
    static constexpr int kColumns = 20;

    static QmMapContents Parse(const std::vector<std::string>& lines);
    static std::vector<std::string> Format(const QmMapContents& contents);

    // Reads up to 20 comma-terminated values of a column line into column[0..].
    static void ReadColumn(const std::string& line, BlockId* column);
    // A decimal value: leading blanks and a sign allowed, stops at the first non-digit; Blank when
    // there is no digit or the value does not fit 32 bits.
    static BlockId ReadValue(const char* begin, const char* end);
    static std::string FormatColumn(const BlockId* column);
};

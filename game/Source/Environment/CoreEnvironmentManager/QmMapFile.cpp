#include "Environment/CoreEnvironmentManager/QmMapFile.h"

#include "Environment/CoreEnvironmentManager/QmFileNames.h"

#include <cstdint>
#include <limits>

namespace {
constexpr size_t kMaxNameLength = 15;
}

QmMapContents QmMapFile::Parse(const std::vector<std::string>& lines) {
    QmMapContents contents;
    int column = 0;
    for (const std::string& line : lines) {
        const char tag = line.empty() ? '\0' : line[0];
        const std::string rest = line.empty() ? std::string() : line.substr(1);
        switch (tag) {
        case 'i':
            if (rest == "32") {
                contents.blockSize = 32;
            }
            break;
        case 'n':
            contents.name = QmFileNames::CutUtf8(rest, kMaxNameLength);
            contents.nameRead = true;
            break;
        case 'u':
            contents.uid = rest;
            break;
        case 'l':
            contents.locked = rest == "1";
            break;
        case 'e':
            contents.editable = rest == "1";
            break;
        case 't':
            contents.tourUid = rest;
            contents.tourUidRead = true;
            break;
        default:
            if (column < kColumns) {
                BlockId* cells = &contents.blocks[static_cast<size_t>(column) * kColumns];
                ReadColumn(line, cells);
                for (int row = 0; row < kColumns; ++row) {
                    if (cells[row] == Block::Start) {
                        contents.startCells.emplace_back(column, row);
                    }
                }
            }
            ++column;
            break;
        }
    }
    return contents;
}

std::vector<std::string> QmMapFile::Format(const QmMapContents& contents) {
    std::vector<std::string> lines;
    lines.reserve(6 + kColumns);
    lines.push_back(QmFileNames::Tagged('i', std::to_string(contents.blockSize)));
    lines.push_back(QmFileNames::Tagged('n', contents.name));
    lines.push_back(QmFileNames::Tagged('u', contents.uid));
    lines.push_back(contents.locked ? "l1" : "l0");
    lines.push_back(contents.editable ? "e1" : "e0");
    lines.push_back(QmFileNames::Tagged('t', contents.tourUid));
    for (int x = 0; x < kColumns; ++x) {
        lines.push_back(FormatColumn(&contents.blocks[static_cast<size_t>(x) * kColumns]));
    }
    return lines;
}

void QmMapFile::ReadColumn(const std::string& line, BlockId* column) {
    const char* piece = line.data();
    const char* end = line.data() + line.size();
    int row = 0;
    for (const char* c = piece; c != end && row < kColumns; ++c) {
        if (*c == ',') {
            column[row++] = ReadValue(piece, c);
            piece = c + 1;
        }
    }
}

BlockId QmMapFile::ReadValue(const char* begin, const char* end) {
    const char* c = begin;
    while (c != end && (*c == ' ' || (*c >= '\t' && *c <= '\r'))) {
        ++c;
    }
    bool negative = false;
    if (c != end && (*c == '+' || *c == '-')) {
        negative = *c == '-';
        ++c;
    }
    if (c == end || *c < '0' || *c > '9') {
        return Block::Blank;
    }
    int64_t value = 0;
    for (; c != end && *c >= '0' && *c <= '9'; ++c) {
        value = value * 10 + (*c - '0');
        if (value > static_cast<int64_t>(std::numeric_limits<int32_t>::max()) + 1) {
            return Block::Blank;
        }
    }
    value = negative ? -value : value;
    if (value > std::numeric_limits<int32_t>::max() || value < std::numeric_limits<int32_t>::min()) {
        return Block::Blank;
    }
    return static_cast<BlockId>(value);
}

std::string QmMapFile::FormatColumn(const BlockId* column) {
    std::string line;
    line.reserve(kColumns * 4);
    for (int y = 0; y < kColumns; ++y) {
        line += std::to_string(column[y]);
        line.push_back(',');
    }
    return line;
}

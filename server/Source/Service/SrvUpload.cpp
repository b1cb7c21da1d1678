#include "SrvUpload.h"

#include "Environment/CoreEnvironmentManager/QmCipherFile.h"
#include "Environment/CoreEnvironmentManager/QmFileNames.h"
#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Platform/VeFiles.h"

namespace {
bool AllDigits(const std::string& text, size_t maxLength) {
    if (text.empty() || text.size() > maxLength) {
        return false;
    }
    for (char c : text) {
        if (c < '0' || c > '9') {
            return false;
        }
    }
    return true;
}

bool IsTagLine(const std::string& line) {
    return !line.empty() && std::string("inulet").find(line[0]) != std::string::npos;
}

// A column line: exactly 20 values, each 1 to 3 digits, each followed by a comma, nothing else.
bool IsWholeColumn(const std::string& line) {
    int values = 0;
    size_t i = 0;
    while (i < line.size()) {
        size_t comma = line.find(',', i);
        if (comma == std::string::npos || comma == i || comma - i > 3) {
            return false;
        }
        std::string value = line.substr(i, comma - i);
        if (!AllDigits(value, 3) || std::stoi(value) > 255) {
            return false;
        }
        ++values;
        i = comma + 1;
    }
    return values == QmMapFile::kColumns;
}
} // namespace

std::string SrvUpload::StoredName(const std::string& mapName) {
    std::string base = QmFileNames::CamelCase(mapName);
    for (char& c : base) {
        bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                     c == '_' || c == '.';
        c = plain ? c : '_';
    }
    return base + ".map";
}

std::string SrvUpload::WithoutTrailingCrlf(const std::string& bytes) {
    if (bytes.size() >= 2 && bytes.compare(bytes.size() - 2, 2, "\r\n") == 0) {
        return bytes.substr(0, bytes.size() - 2);
    }
    return bytes;
}

std::optional<SrvCheckedMap> SrvUpload::CheckMap(const std::string& bytes, std::string& error) {
    if (bytes.empty() || bytes.size() > kMaxMapBytes) {
        error = "map file empty or over 4 KB";
        return std::nullopt;
    }
    if (bytes.find('\0') != std::string::npos) {
        error = "map file holds a NUL byte";
        return std::nullopt;
    }
    std::vector<std::string> lines = QmCipherFile::DecodeLines(SplitLines(bytes));
    int columns = 0;
    bool uidLine = false;
    for (const std::string& line : lines) {
        if (line.empty()) {
            continue;
        }
        if (IsTagLine(line)) {
            uidLine = uidLine || line[0] == 'u';
            continue;
        }
        if (!IsWholeColumn(line)) {
            error = "map column is not 20 block ids";
            return std::nullopt;
        }
        ++columns;
    }
    if (columns != QmMapFile::kColumns) {
        error = "map does not have 20 columns";
        return std::nullopt;
    }
    SrvCheckedMap checked;
    checked.contents = QmMapFile::Parse(lines);
    const QmMapContents& map = checked.contents;
    if (!uidLine || !AllDigits(map.uid, 40)) {
        error = "map uid missing or not a number";
        return std::nullopt;
    }
    if (!map.tourUidRead || map.tourUid.size() > 64) {
        error = "map tour line missing";
        return std::nullopt;
    }
    int finishes = 0;
    for (BlockId id : map.blocks) {
        finishes += id == Block::Finish ? 1 : 0;
    }
    if (map.startCells.empty() || finishes == 0) {
        error = "map needs a Start and a Finish";
        return std::nullopt;
    }
    std::string name = QmFileNames::OneLine(map.name);
    if (name.empty()) {
        error = "map has no name";
        return std::nullopt;
    }
    checked.fileName = StoredName(name);
    return checked;
}

bool SrvUpload::CheckScores(const std::string& bytes, const std::string& mapUid, std::string& error) {
    if (bytes.empty()) {
        return true;
    }
    if (bytes.size() > kMaxScoreBytes || bytes.find('\0') != std::string::npos) {
        error = "score file over 64 KB";
        return false;
    }
    std::vector<std::string> lines = SplitLines(bytes);
    if (lines.size() > 2) {
        error = "score file has more than two lines";
        return false;
    }
    std::string header = QmTextCipher::DecodeText(QmTextCipher::kFileLevel, lines[0]);
    if (header.rfind("u" + mapUid + "@", 0) != 0) {
        error = "score file belongs to another map";
        return false;
    }
    return true;
}

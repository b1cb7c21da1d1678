#include "Environment/CoreEnvironmentManager/QmCipherFile.h"

#include "Environment/CoreEnvironmentManager/QmTextCipher.h"
#include "Platform/VeFiles.h"

std::vector<std::string> QmCipherFile::DecodeLines(const std::vector<std::string>& rawLines) {
    std::vector<std::string> lines;
    lines.reserve(rawLines.size());
    bool deciphering = false;
    for (const std::string& raw : rawLines) {
        std::string line = deciphering ? QmTextCipher::DecodeText(QmTextCipher::kFileLevel, raw) : raw;
        if (line == kMarker) {
            deciphering = true;
            continue;
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

bool QmCipherFile::ReadLines(const std::string& path, std::vector<std::string>& lines) {
    std::vector<std::string> raw;
    if (!ReadTextLines(path, raw)) {
        lines.clear();
        return false;
    }
    lines = DecodeLines(raw);
    return true;
}

std::string QmCipherFile::EncodeLines(const std::vector<std::string>& lines, bool lastLineEnded) {
    std::string bytes = kMarker;
    bytes += "\r\n";
    for (size_t i = 0; i < lines.size(); ++i) {
        bytes += QmTextCipher::EncodeText(QmTextCipher::kFileLevel, lines[i]);
        if (lastLineEnded || i + 1 < lines.size()) {
            bytes += "\r\n";
        }
    }
    return bytes;
}

bool QmCipherFile::UpdateLines(const std::string& path, const std::vector<std::string>& lines,
                               bool lastLineEnded) {
    std::vector<std::string> raw;
    if (ReadTextLines(path, raw) && !raw.empty() && raw[0] == kMarker && DecodeLines(raw) == lines) {
        return true;
    }
    return WriteLines(path, lines, lastLineEnded);
}

bool QmCipherFile::WriteLines(const std::string& path, const std::vector<std::string>& lines,
                              bool lastLineEnded) {
    return WriteFileAtomic(path, EncodeLines(lines, lastLineEnded));
}

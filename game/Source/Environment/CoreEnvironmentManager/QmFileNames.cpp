#include "Environment/CoreEnvironmentManager/QmFileNames.h"

namespace {
bool IsForbidden(unsigned char c) {
    return c < 32 || c == 127 || c == '/' || c == '\\';
}

char AsciiLower(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

char AsciiUpper(char c) {
    return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}
} // namespace

std::string QmFileNames::CamelCase(const std::string& name) {
    std::string result;
    result.reserve(name.size());
    bool pieceStart = true;
    for (char c : name) {
        // A comma would split the name in a tour's map list.
        if (c == ' ' || c == ',' || IsForbidden(static_cast<unsigned char>(c))) {
            pieceStart = true;
            continue;
        }
        result.push_back(pieceStart ? AsciiUpper(c) : AsciiLower(c));
        pieceStart = false;
    }
    result = CutUtf8(result, kMaxBaseLength);
    if (result.empty()) {
        return "_";
    }
    if (result == "." || result == "..") {
        return std::string(result.size(), '_');
    }
    return result;
}

bool QmFileNames::IsSafeName(const std::string& name) {
    if (name.empty() || name == "." || name == "..") {
        return false;
    }
    for (char c : name) {
        if (IsForbidden(static_cast<unsigned char>(c))) {
            return false;
        }
    }
    return true;
}

bool QmFileNames::IsSafeCacheEntry(const std::string& entry) {
    const size_t slash = entry.find('/');
    return slash != std::string::npos && IsSafeName(entry.substr(0, slash)) &&
           IsSafeName(entry.substr(slash + 1));
}

std::string QmFileNames::ScoreFileOf(const std::string& mapFile) {
    const size_t keep = mapFile.size() >= 4 ? mapFile.size() - 4 : 0;
    return mapFile.substr(0, keep) + ".dat";
}

std::string QmFileNames::Extension(const std::string& name) {
    const size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : name.substr(dot);
}

std::string QmFileNames::CutUtf8(const std::string& text, size_t maxBytes) {
    if (text.size() <= maxBytes) {
        return text;
    }
    size_t end = maxBytes;
    // Step back over the continuation bytes (at most three) of a sequence that does not fit.
    for (int back = 0; back < 3 && end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80;
         ++back) {
        --end;
    }
    return text.substr(0, end);
}

std::string QmFileNames::Tagged(char tag, const std::string& text) {
    std::string line(1, tag);
    line += OneLine(text);
    return line;
}

std::string QmFileNames::OneLine(const std::string& text) {
    std::string result;
    result.reserve(text.size());
    for (char c : text) {
        if (c != '\r' && c != '\n') {
            result.push_back(c);
        }
    }
    return result;
}

#pragma once
// Names of the world's files and folders. A tour folder or map file name always stays inside its
// folder: names read from files that could reach elsewhere are refused, and names made from what
// the player typed have the characters no file name may hold turned into blanks.
#include <string>

class QmFileNames {
public:
    // Longest base name made from a typed name, in bytes; leaves room for "_<number>.map".
    static constexpr size_t kMaxBaseLength = 200;

    // "my cool map" -> "MyCoolMap": lower-cased, each blank-separated piece capitalised, blanks
    // removed. '/', '\', ',', NUL and control characters count as blanks. Never empty, "." or "..".
    static std::string CamelCase(const std::string& name);
    // A single path component: not empty, not "." or "..", no '/', '\', NUL or control character.
    static bool IsSafeName(const std::string& name);
    // "<user id>/<file>" with two safe components (the download cache's entries).
    static bool IsSafeCacheEntry(const std::string& entry);
    // The score file beside a map file: the map file name less its last four characters + ".dat".
    static std::string ScoreFileOf(const std::string& mapFile);
    // The extension from the last '.', including it; empty when there is no '.'.
    static std::string Extension(const std::string& name);
    // The first maxBytes bytes of text, shortened further so a UTF-8 sequence is not split.
    static std::string CutUtf8(const std::string& text, size_t maxBytes);
    // The text without CR and LF, so it stays on its line of a file.
    static std::string OneLine(const std::string& text);
    // A tagged line of a map or tour file: the tag, then the text on one line.
    static std::string Tagged(char tag, const std::string& text);
};

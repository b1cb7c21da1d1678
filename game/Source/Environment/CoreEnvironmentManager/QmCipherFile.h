#pragma once
// Marker-headed line files: the map, tour and tour-list files start with a plain marker line and
// every later line is enciphered on its own (QmTextCipher, level 4). Lines met before the marker
// are plain, so a file written by hand without marker or cipher reads as well. Lines are written
// with CRLF and read split at LF, with or without CR. Writing replaces the file atomically (a
// temporary file renamed over it) and logs a failure.
#include <string>
#include <vector>

class QmCipherFile {
public:
    static constexpr const char* kMarker = "k3071958264410385729164053";

    // The plain lines of a file's raw lines: markers are dropped, every line after the first
    // marker is deciphered (and compared with the marker after deciphering).
    static std::vector<std::string> DecodeLines(const std::vector<std::string>& rawLines);
    // Reads a file (full path) into its plain lines; false when it cannot be read.
    static bool ReadLines(const std::string& path, std::vector<std::string>& lines);

    // The bytes of a file: the marker, then each line enciphered. Every line ends with CRLF, except
    // the last one when lastLineEnded is false.
    static std::string EncodeLines(const std::vector<std::string>& lines, bool lastLineEnded = true);
    static bool WriteLines(const std::string& path, const std::vector<std::string>& lines,
                           bool lastLineEnded = true);
    // Writes the file only when it does not already hold these lines enciphered after a marker, so
    // that rewriting an unchanged list touches no disk.
    static bool UpdateLines(const std::string& path, const std::vector<std::string>& lines,
                            bool lastLineEnded = true);
};

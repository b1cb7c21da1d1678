#pragma once
// Finds the folder the game's read-only data lies in (the folder holding "Assets", "Audio",
// "Shaders", "Lang" and "Maps"). The working folder is used when it has "Assets"; otherwise the
// executable's folder, then its parent, so that both "./build/quillmaze" from the source folder
// and "./quillmaze" from inside the build folder find the data; then "share/quillmaze" beside the
// executable's folder, where an installed game ("<prefix>/bin/quillmaze") keeps it.
#include <string>

class QmDataFolder {
public:
    // The folder to change to, or empty when the working folder will do (or nothing better is
    // found).
    static std::string Locate(const std::string& workingFolder, const std::string& executablePath);
    // Changes the working folder to the located one; true when the data is there afterwards.
    static bool Enter(const std::string& argumentZero);
    // The running program's own path (argumentZero when the system cannot tell).
    static std::string ExecutablePath(const std::string& argumentZero);
};

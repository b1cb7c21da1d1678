#pragma once
// Files and folders. Paths use '/' only. Everything the game writes goes through WriteFileAtomic
// (a temporary file beside the target, flushed, then renamed over it), so a crash or a full disk
// leaves the old file whole. Text files are written with CRLF line ends and read accepting LF or
// CRLF.
#include <string>
#include <vector>

// The roaming data folder without trailing separator: $<APP>_USER_DATA when set (the application's
// variable prefix, see VeAppIdentity.h), else $XDG_DATA_HOME, else $HOME/.local/share; empty when
// none can be found. Not created.
std::string GetUserDataFolder();
// The application's own folder inside it: GetUserDataFolder() + "/" + its name.
std::string GetGameFolder();

bool IsDirectory(const std::string& path);
bool FileExists(const std::string& path);
// Creates the folder and its parents; true when it exists afterwards.
bool CreateFolder(const std::string& path);
// Deletes the folder and everything in it; the result is not reported.
void DeleteFolder(const std::string& path);
bool RemoveFile(const std::string& path);
// Moves a file or folder; fails when the target exists (and is not the same path).
bool RenamePath(const std::string& from, const std::string& to);
bool CopyFileTo(const std::string& from, const std::string& to);

// Names (not paths) of the entries of a folder, sorted; folders or files only.
std::vector<std::string> ListFolders(const std::string& path);
std::vector<std::string> ListFiles(const std::string& path);

bool ReadFileBytes(const std::string& path, std::string& bytes);
// Writes the bytes to path + ".tmp", flushes it and renames it over path. On failure the old
// file is untouched, the temporary file removed and a line logged.
bool WriteFileAtomic(const std::string& path, const std::string& bytes);

// Splits text into lines at LF, dropping a CR before it; a last line without LF counts, an empty
// text has no lines.
std::vector<std::string> SplitLines(const std::string& text);
bool ReadTextLines(const std::string& path, std::vector<std::string>& lines);
// Each line followed by CRLF.
std::string JoinLinesCrlf(const std::vector<std::string>& lines);
bool WriteTextLinesAtomic(const std::string& path, const std::vector<std::string>& lines);

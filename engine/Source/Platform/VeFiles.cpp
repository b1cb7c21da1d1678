#include "Platform/VeFiles.h"
#include "Platform/VeAppIdentity.h"

#include "Platform/VeLog.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {
std::string WithoutTrailingSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/') {
        path.pop_back();
    }
    return path;
}

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::string(value) : std::string();
}

std::vector<std::string> ListEntries(const std::string& path, bool folders) {
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator it(path, error);
    if (error) {
        return names;
    }
    for (const fs::directory_entry& entry : it) {
        std::error_code typeError;
        const bool isFolder = entry.is_directory(typeError);
        if (!typeError && isFolder == folders) {
            names.push_back(entry.path().filename().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}
} // namespace

std::string GetUserDataFolder() {
    std::string folder = Environment(VE_APP_ENV "_USER_DATA");
    if (folder.empty()) {
        folder = Environment("XDG_DATA_HOME");
    }
    if (folder.empty()) {
        const std::string home = Environment("HOME");
        if (home.empty()) {
            return std::string();
        }
        folder = home + "/.local/share";
    }
    return WithoutTrailingSlash(folder);
}

std::string GetGameFolder() {
    return GetUserDataFolder() + "/" VE_APP_NAME;
}

bool IsDirectory(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

bool FileExists(const std::string& path) {
    std::error_code error;
    return fs::is_regular_file(path, error);
}

bool CreateFolder(const std::string& path) {
    std::error_code error;
    fs::create_directories(path, error);
    return IsDirectory(path);
}

void DeleteFolder(const std::string& path) {
    if (path.empty()) {
        return;
    }
    std::error_code error;
    fs::remove_all(path, error);
}

bool RemoveFile(const std::string& path) {
    std::error_code error;
    return fs::remove(path, error) && !error;
}

bool RenamePath(const std::string& from, const std::string& to) {
    std::error_code error;
    if (from == to) {
        return fs::exists(from, error);
    }
    if (fs::exists(to, error)) {
        // The same file under another case or through another path is a rename, anything else a clash.
        if (!fs::equivalent(from, to, error)) {
            return false;
        }
    }
    fs::rename(from, to, error);
    return !error;
}

bool CopyFileTo(const std::string& from, const std::string& to) {
    std::string bytes;
    return ReadFileBytes(from, bytes) && WriteFileAtomic(to, bytes);
}

std::vector<std::string> ListFolders(const std::string& path) {
    return ListEntries(path, true);
}

std::vector<std::string> ListFiles(const std::string& path) {
    return ListEntries(path, false);
}

bool ReadFileBytes(const std::string& path, std::string& bytes) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        return false;
    }
    bytes.clear();
    char chunk[65536];
    size_t count = 0;
    while ((count = std::fread(chunk, 1, sizeof(chunk), file)) > 0) {
        bytes.append(chunk, count);
    }
    const bool ok = std::ferror(file) == 0;
    std::fclose(file);
    return ok;
}

bool WriteFileAtomic(const std::string& path, const std::string& bytes) {
    const std::string temporary = path + ".tmp";
    std::FILE* file = std::fopen(temporary.c_str(), "wb");
    if (file == nullptr) {
        Log("Could not write %s\n", path.c_str());
        return false;
    }
    bool ok = bytes.empty() || std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    ok = std::fflush(file) == 0 && ok;
    ok = fsync(fileno(file)) == 0 && ok;
    ok = std::fclose(file) == 0 && ok;
    if (ok) {
        std::error_code error;
        fs::rename(temporary, path, error);
        ok = !error;
    }
    if (!ok) {
        std::error_code ignored;
        fs::remove(temporary, ignored);
        Log("Could not write %s\n", path.c_str());
    }
    return ok;
}

std::vector<std::string> SplitLines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        const bool last = end == std::string::npos;
        if (last) {
            end = text.size();
        }
        size_t stop = end;
        if (stop > start && text[stop - 1] == '\r') {
            --stop;
        }
        lines.push_back(text.substr(start, stop - start));
        start = end + 1;
    }
    return lines;
}

bool ReadTextLines(const std::string& path, std::vector<std::string>& lines) {
    std::string bytes;
    if (!ReadFileBytes(path, bytes)) {
        return false;
    }
    lines = SplitLines(bytes);
    return true;
}

std::string JoinLinesCrlf(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line;
        text += "\r\n";
    }
    return text;
}

bool WriteTextLinesAtomic(const std::string& path, const std::vector<std::string>& lines) {
    return WriteFileAtomic(path, JoinLinesCrlf(lines));
}

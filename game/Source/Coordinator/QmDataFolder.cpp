#include "Coordinator/QmDataFolder.h"

#include "Platform/VeFiles.h"

#include <filesystem>
#include <system_error>

namespace {
bool HasAssets(const std::filesystem::path& folder) {
    return IsDirectory((folder / "Assets").string());
}
} // namespace

std::string QmDataFolder::Locate(const std::string& workingFolder, const std::string& executablePath) {
    namespace fs = std::filesystem;
    if (HasAssets(workingFolder)) {
        return {};
    }
    std::error_code error;
    fs::path executable = fs::absolute(fs::path(executablePath), error);
    if (error || executablePath.empty()) {
        return {};
    }
    const fs::path folder = executable.parent_path();
    for (const fs::path& candidate :
         {folder, folder.parent_path(), folder.parent_path() / "share" / "quillmaze"}) {
        if (!candidate.empty() && HasAssets(candidate)) {
            return candidate.lexically_normal().string();
        }
    }
    return {};
}

std::string QmDataFolder::ExecutablePath(const std::string& argumentZero) {
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? argumentZero : self.string();
}

bool QmDataFolder::Enter(const std::string& argumentZero) {
    std::error_code error;
    const std::string working = std::filesystem::current_path(error).string();
    if (error) {
        return false;
    }
    const std::string folder = Locate(working, ExecutablePath(argumentZero));
    if (!folder.empty()) {
        std::filesystem::current_path(folder, error);
        if (error) {
            return false;
        }
    }
    return HasAssets(".");
}
